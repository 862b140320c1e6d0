// Sheets of drawings.
#pragma once

#include <string>
#include <vector>

#include <ProDrawing.h>

namespace kv {

inline constexpr int kFirstSheet = 1;

// Size name of a sheet, such as "A3"; sheets count from 1. Errors: those of ProDrawingSheetTrfGet.
[[nodiscard]] ProError SheetSizeGet(ProDrawing drawing, int sheet, std::wstring& size);

// Size names of all sheets in order. Errors: those of ProDrawingSheetsCount and ProDrawingSheetTrfGet.
[[nodiscard]] ProError SheetSizesGet(ProDrawing drawing, std::vector<std::wstring>& sizes);

// The sizes in one text, "A3,A4".
std::wstring SheetSizesText(const std::vector<std::wstring>& sizes);

// Makes sheets of a drawing current, and at its end the one that was current before.
class SheetTurn {
public:
    explicit SheetTurn(ProDrawing drawing) : drawing_(drawing) {}
    SheetTurn(const SheetTurn&) = delete;
    SheetTurn& operator=(const SheetTurn&) = delete;
    ~SheetTurn();

    // Costs a call only for another sheet than the current one. Errors: those of ProDrawingCurrentSheetGet
    // and ProDrawingCurrentSheetSet.
    [[nodiscard]] ProError To(int sheet);

private:
    ProDrawing drawing_;
    int before_ = 0;  // 0: not known yet
    int current_ = 0;
};

}  // namespace kv
