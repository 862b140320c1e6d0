// Sheets of drawings.
#pragma once

#include <string>
#include <vector>

#include <ProDrawing.h>

namespace kv {

// Size name of a sheet, such as "A3"; sheets count from 1. Errors: those of ProDrawingSheetTrfGet.
[[nodiscard]] ProError SheetSizeGet(ProDrawing drawing, int sheet, std::wstring& size);

// Size names of all sheets in order. Errors: those of ProDrawingSheetsCount and ProDrawingSheetTrfGet.
[[nodiscard]] ProError SheetSizesGet(ProDrawing drawing, std::vector<std::wstring>& sizes);

// The sizes in one text, "A3,A4".
std::wstring SheetSizesText(const std::vector<std::wstring>& sizes);

}  // namespace kv
