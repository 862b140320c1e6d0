// Sheets of drawings, on the toolkit's drawing calls.

#include "model/drawing_sheets.h"

#include "base/status.h"

namespace kv {

ProError SheetSizeGet(ProDrawing drawing, int sheet, std::wstring& size) {
    ProName text = {};
    ProMatrix unused = {};
    const ProError status = ProDrawingSheetTrfGet(drawing, sheet, text, unused);
    if (!Failed(status)) size = text;
    return status;
}

ProError SheetSizesGet(ProDrawing drawing, std::vector<std::wstring>& sizes) {
    int count = 0;
    ProError status = ProDrawingSheetsCount(drawing, &count);
    for (int sheet = 1; sheet <= count && !Failed(status); ++sheet)
        status = SheetSizeGet(drawing, sheet, sizes.emplace_back());
    return status;
}

std::wstring SheetSizesText(const std::vector<std::wstring>& sizes) {
    std::wstring text;
    for (const std::wstring& size : sizes) {
        if (!text.empty()) text += L',';
        text += size;
    }
    return text;
}

ProError SheetTurn::To(int sheet) {
    ProError status = PRO_TK_NO_ERROR;
    if (before_ == 0) {
        int before = 0;
        status = ProDrawingCurrentSheetGet(drawing_, &before);
        if (Failed(status)) return status;
        before_ = current_ = before;
    }
    if (sheet == current_) return PRO_TK_NO_ERROR;
    status = ProDrawingCurrentSheetSet(drawing_, sheet);
    if (!Failed(status)) current_ = sheet;
    return status;
}

SheetTurn::~SheetTurn() {
    if (current_ != before_) ProDrawingCurrentSheetSet(drawing_, before_);
}

}  // namespace kv
