// A table exported the slow way, one cell after the other: the measure for what the blocks must give.

#pragma once

#include <string>

#include "office/spreadsheet.h"

namespace test {

// Does each step for each cell, in order. False: a call failed.
bool WriteCellByCell(const kv::SheetTable& table, const std::wstring& path);

}  // namespace test
