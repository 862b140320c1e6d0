#include <ProDrawing.h>

#include <cstdint>
#include <vector>

#include "simulator/memory/host_memory.h"
#include "simulator/report/utf8.h"
#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

namespace {

bool HasSheet(const SimModel& drawing, int sheet) {
    return sheet >= 1 && static_cast<std::size_t>(sheet) <= drawing.Sheets().size();
}

// A view's handle is its place in the drawing; null, with a violation, for anything else.
DrawingView* FindView(Session& host, SimModel& drawing, ProView view) {
    if (view == nullptr) return nullptr;
    std::vector<DrawingView>& views = drawing.Views();
    const auto offset =
        reinterpret_cast<std::uintptr_t>(view) - reinterpret_cast<std::uintptr_t>(views.data());
    const std::size_t position = offset / sizeof(DrawingView);
    if (position < views.size() && offset % sizeof(DrawingView) == 0) return &views[position];
    host.report.Violation("is given a view that " + Utf8(drawing.Name()) + " does not have");
    return nullptr;
}

}  // namespace

ProError ProDrawingSheetsCount(ProDrawing drawing, int* n_sheets) {
    static const CallSite kSite("ProDrawingSheetsCount", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {drawing, Out(n_sheets)}, [&](Session& host) -> ProError {
        const SimModel* model = FindModelOf(host, drawing, ModelKind::kDrawing);
        if (model == nullptr || n_sheets == nullptr) return PRO_TK_BAD_INPUTS;
        *n_sheets = static_cast<int>(model->Sheets().size());
        return PRO_TK_NO_ERROR;
    });
}

ProError ProDrawingSheetTrfGet(ProDrawing drawing, int sheet, ProName sheet_size, ProMatrix transform) {
    static const CallSite kSite("ProDrawingSheetTrfGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {drawing, sheet, Out(sheet_size, PRO_NAME_SIZE), Out(transform, 4)},
                  [&](Session& host) -> ProError {
                      SimModel* model = FindModelOf(host, drawing, ModelKind::kDrawing);
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

ProError ProDrawingViewsCollect(ProDrawing drawing, ProView** views) {
    static const CallSite kSite("ProDrawingViewsCollect", {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {drawing, Out(views)}, [&](Session& host) -> ProError {
        SimModel* model = FindModelOf(host, drawing, ModelKind::kDrawing);
        if (model == nullptr || views == nullptr) return PRO_TK_BAD_INPUTS;
        if (model->Views().empty()) return PRO_TK_E_NOT_FOUND;
        std::vector<ProView> found;
        for (DrawingView& view : model->Views()) found.push_back(reinterpret_cast<ProView>(&view));
        *views = NewHostArray(host.memory, found);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProDrawingViewSolidGet(ProDrawing drawing, ProView view, ProSolid* solid) {
    static const CallSite kSite("ProDrawingViewSolidGet", {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {drawing, view, Out(solid)}, [&](Session& host) -> ProError {
        SimModel* model = FindModelOf(host, drawing, ModelKind::kDrawing);
        const DrawingView* found = model == nullptr ? nullptr : FindView(host, *model, view);
        if (found == nullptr || solid == nullptr) return PRO_TK_BAD_INPUTS;
        if (found->model == nullptr) return PRO_TK_E_NOT_FOUND;
        *solid = reinterpret_cast<ProSolid>(found->model);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProDrawingViewSheetGet(ProDrawing drawing, ProView view, int* sheet) {
    static const CallSite kSite("ProDrawingViewSheetGet", {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {drawing, view, Out(sheet)}, [&](Session& host) -> ProError {
        SimModel* model = FindModelOf(host, drawing, ModelKind::kDrawing);
        const DrawingView* found = model == nullptr ? nullptr : FindView(host, *model, view);
        if (found == nullptr || sheet == nullptr) return PRO_TK_BAD_INPUTS;
        *sheet = found->sheet;
        return PRO_TK_NO_ERROR;
    });
}
