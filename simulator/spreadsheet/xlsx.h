// Workbook files (.xlsx) with one sheet.

#pragma once

#include <filesystem>
#include <optional>

#include "simulator/spreadsheet/sheet.h"

namespace sim {

// Writes the file as a whole or not at all; one in its place is replaced. False: the folder is missing, or
// the file is open elsewhere or protected.
[[nodiscard]] bool WriteXlsx(const Sheet& sheet, const std::filesystem::path& file);

// The first sheet of a file. Nothing: it cannot be read, or it is no workbook.
std::optional<Sheet> ReadXlsx(const std::filesystem::path& file);

}  // namespace sim
