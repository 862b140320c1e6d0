// The rename table as a file: a workbook or comma-separated text.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "rename/rename_table.h"

namespace kv {

// Ask for a file and write the rows to it; `rows` holds their new names as they are typed now. What went
// wrong is told.
void TableToWorkbook(const std::wstring& top, std::span<const ShownRow> shown,
                     std::span<const RenameRow> rows);
void TableToCsv(const std::wstring& top, std::span<const ShownRow> shown, std::span<const RenameRow> rows);

// Ask for a file and read its rows. False when there are none: the user has cancelled, or was told why not.
[[nodiscard]] bool TableFromWorkbook(std::vector<LoadedRow>& rows);
[[nodiscard]] bool TableFromCsv(std::vector<LoadedRow>& rows);

}  // namespace kv
