#include <ProDrawing.h>

#include <vector>

#include "simulator/memory/host_memory.h"
#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/drawing_call.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

ProError ProDrawingSheetsCount(ProDrawing drawing, int* n_sheets) {
    static const CallSite kSite("ProDrawingSheetsCount", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {drawing, Out(n_sheets)}, [&](Session& host) -> ProError {
        const SimModel* model = FindSheets(host, drawing);
        if (model == nullptr || n_sheets == nullptr) return PRO_TK_BAD_INPUTS;
        *n_sheets = static_cast<int>(model->Sheets().size());
        return PRO_TK_NO_ERROR;
    });
}

ProError ProDrawingSheetTrfGet(ProDrawing drawing, int sheet, ProName sheet_size, ProMatrix transform) {
    static const CallSite kSite("ProDrawingSheetTrfGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {drawing, sheet, Out(sheet_size, PRO_NAME_SIZE), Out(transform, 4)},
                  [&](Session& host) -> ProError {
                      const SimModel* model = FindSheets(host, drawing);
                      if (model == nullptr || sheet_size == nullptr || transform == nullptr)
                          return PRO_TK_BAD_INPUTS;
                      if (!HasSheet(*model, sheet)) return PRO_TK_BAD_INPUTS;
                      const DrawingSheet& found = model->Sheets()[static_cast<std::size_t>(sheet) - 1];
                      if (!FillBuffer<wchar_t>(found.size, sheet_size, PRO_NAME_SIZE))
                          return PRO_TK_GENERAL_ERROR;
                      // The simulator's screen is the sheet itself.
                      CopyMatrix(IdentityMatrix(), transform);
                      return PRO_TK_NO_ERROR;
                  });
}

ProError ProDrawingCurrentSheetGet(ProDrawing drawing, int* current_sheet) {
    static const CallSite kSite("ProDrawingCurrentSheetGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {drawing, current_sheet}, [&](Session& host) -> ProError {
        if (current_sheet == nullptr) return PRO_TK_BAD_INPUTS;
        const SimModel* model = FindModelOf(host, drawing, ModelKind::kDrawing);
        *current_sheet = model == nullptr ? 0 : model->CurrentSheet();
        return *current_sheet == 0 ? PRO_TK_BAD_INPUTS : PRO_TK_NO_ERROR;
    });
}

ProError ProDrawingCurrentSheetSet(ProDrawing drawing, int current_sheet) {
    static const CallSite kSite("ProDrawingCurrentSheetSet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {drawing, current_sheet}, [&](Session& host) -> ProError {
        SimModel* model = FindModelOf(host, drawing, ModelKind::kDrawing);
        if (model == nullptr || !HasSheet(*model, current_sheet)) return PRO_TK_BAD_INPUTS;
        host.desk.TurnToSheet(*model, current_sheet);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProDrawingSolidsCollect(ProDrawing drawing, ProSolid** solids) {
    static const CallSite kSite("ProDrawingSolidsCollect", {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {drawing, Out(solids)}, [&](Session& host) -> ProError {
        const SimModel* model = FindModelOf(host, drawing, ModelKind::kDrawing);
        if (model == nullptr || solids == nullptr) return PRO_TK_BAD_INPUTS;
        if (model->ShownModels().empty()) return PRO_TK_E_NOT_FOUND;
        std::vector<ProSolid> found;
        for (SimModel* shown : model->ShownModels()) found.push_back(reinterpret_cast<ProSolid>(shown));
        *solids = NewHostArray(host.memory, found);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProDrawingScaleGet(ProDrawing drawing, ProSolid solid, int sheet, double* scale) {
    static const CallSite kSite("ProDrawingScaleGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {drawing, solid, sheet, Out(scale)}, [&](Session& host) -> ProError {
        const SimModel* model = FindModelOf(host, drawing, ModelKind::kDrawing);
        if (model == nullptr || scale == nullptr) return PRO_TK_BAD_INPUTS;
        const int number = SheetOrCurrent(*model, sheet);
        if (!HasSheet(*model, number)) return PRO_TK_BAD_INPUTS;
        const bool hasNone = solid == nullptr && model->ShownModels().empty();
        const SimModel* shown = hasNone ? nullptr : FindShown(host, *model, solid);
        if (!hasNone && shown == nullptr) return PRO_TK_BAD_INPUTS;
        *scale = hasNone ? 1.0 : model->ScaleOn(number, *shown);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProDrawingScaleSet(ProDrawing drawing, ProSolid solid, int sheet, double scale) {
    static const CallSite kSite("ProDrawingScaleSet", {PRO_TK_BAD_INPUTS, PRO_TK_CANT_MODIFY});
    return Traced(kSite, {drawing, solid, sheet, scale}, [&](Session& host) -> ProError {
        SimModel* model = FindModelOf(host, drawing, ModelKind::kDrawing);
        if (model == nullptr || !IsScale(host, scale)) return PRO_TK_BAD_INPUTS;
        const int number = SheetOrCurrent(*model, sheet);
        if (!HasSheet(*model, number)) return PRO_TK_BAD_INPUTS;
        SimModel* shown = FindShown(host, *model, solid);
        if (shown == nullptr) return PRO_TK_BAD_INPUTS;
        if (model->IsReadOnly()) return PRO_TK_CANT_MODIFY;
        model->SetScaleOn(number, *shown, scale);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProDwgSheetRegenerate(ProDrawing p_draw, int sheet_id) {
    static const CallSite kSite("ProDwgSheetRegenerate", {});
    return Traced(kSite, {p_draw, sheet_id}, [&](Session& host) -> ProError {
        SimModel* model = FindModelOf(host, p_draw, ModelKind::kDrawing);
        if (model == nullptr || !HasSheet(*model, sheet_id)) return PRO_TK_GENERAL_ERROR;
        if (!host.desk.IsShown(*model) || IsOutOfSight(host, *model, sheet_id)) return PRO_TK_GENERAL_ERROR;
        ++model->Sheets()[static_cast<std::size_t>(sheet_id) - 1].regenerations;
        return PRO_TK_NO_ERROR;
    });
}
