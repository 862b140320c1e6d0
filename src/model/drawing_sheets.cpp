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

}  // namespace kv
