#include <ProDrawing.h>

#include "session/traced.h"
#include "toolkit/arguments.h"
#include "toolkit/host_memory.h"

using namespace sim;

ProError ProDrawingSheetsCount(ProDrawing drawing, int* n_sheets) {
    static const CallSite kSite("ProDrawingSheetsCount", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {drawing, n_sheets}, [&](Session& host) -> ProError {
        const SimModel* model = FindModelOf(host, drawing, ModelKind::kDrawing);
        if (model == nullptr || n_sheets == nullptr) return PRO_TK_BAD_INPUTS;
        *n_sheets = static_cast<int>(model->Sheets().size());
        return PRO_TK_NO_ERROR;
    });
}

ProError ProDrawingSheetTrfGet(ProDrawing drawing, int sheet, ProName sheet_size, ProMatrix transform) {
    static const CallSite kSite("ProDrawingSheetTrfGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {drawing, sheet, Output(sheet_size), transform}, [&](Session& host) -> ProError {
        SimModel* model = FindModelOf(host, drawing, ModelKind::kDrawing);
        if (model == nullptr || sheet_size == nullptr || transform == nullptr) return PRO_TK_BAD_INPUTS;
        if (sheet < 1 || static_cast<std::size_t>(sheet) > model->Sheets().size()) return PRO_TK_BAD_INPUTS;
        const DrawingSheet& found = model->Sheets()[static_cast<std::size_t>(sheet) - 1];
        if (!FillBuffer<wchar_t>(found.size, sheet_size, PRO_NAME_SIZE)) return PRO_TK_GENERAL_ERROR;
        // The simulator's screen is the sheet itself.
        CopyMatrix(IdentityMatrix(), transform);
        return PRO_TK_NO_ERROR;
    });
}
