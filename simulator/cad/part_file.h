// Material files and bend tables: JSON in UTF-8, like models, but under a name without version.

#pragma once

#include <filesystem>
#include <string_view>

#include "simulator/cad/model_data.h"

namespace sim {

// Reads {"format": "hostsim material", "version": 1, "bendTable": "STEEL_2"}, the table if wanted; the
// material is named after the file. Throws ModelFileError, std::system_error for a file that cannot be read.
Material ReadMaterialFile(const std::filesystem::path& file, std::wstring_view name);

// Reads {"format": "hostsim bend table", "version": 1}, which says no more than that it is one. Throws as
// above.
void ReadBendTableFile(const std::filesystem::path& file);

}  // namespace sim
