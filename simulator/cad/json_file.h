// JSON files.

#pragma once

#include <filesystem>
#include <string>

#include "simulator/cad/json_node.h"

namespace sim {

// The content of a file that errors call `label`. Throws ModelFileError for a text that is no JSON,
// std::system_error for a file that cannot be read.
Json ReadJsonFile(const std::filesystem::path& file, const std::string& label);

}  // namespace sim
