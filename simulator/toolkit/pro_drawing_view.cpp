#include <ProDrawing.h>
#include <ProDrawingView.h>

#include <vector>

#include "simulator/memory/host_memory.h"
#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/drawing_call.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

namespace {

// Handles of these views of a drawing.
template <typename Belongs>
std::vector<ProView> HandlesOf(SimModel& drawing, Belongs belongs) {
    std::vector<ProView> handles;
    for (DrawingView& view : drawing.Views())
        if (belongs(view)) handles.push_back(reinterpret_cast<ProView>(&view));
    return handles;
}

}  // namespace

ProError ProDrawingViewsCollect(ProDrawing drawing, ProView** views) {
    static const CallSite kSite("ProDrawingViewsCollect", {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {drawing, Out(views)}, [&](Session& host) -> ProError {
        SimModel* model = FindModelOf(host, drawing, ModelKind::kDrawing);
        if (model == nullptr || views == nullptr) return PRO_TK_BAD_INPUTS;
        if (model->Views().empty()) return PRO_TK_E_NOT_FOUND;
        *views = NewHostArray(host.memory, HandlesOf(*model, [](const DrawingView&) { return true; }));
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

ProError ProDrawingViewTypeGet(ProDrawing drawing, ProView view, ProViewType* type) {
    static const CallSite kSite("ProDrawingViewTypeGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {drawing, view, Out(type)}, [&](Session& host) -> ProError {
        SimModel* model = FindModelOf(host, drawing, ModelKind::kDrawing);
        const DrawingView* found = model == nullptr ? nullptr : FindView(host, *model, view);
        if (found == nullptr || type == nullptr) return PRO_TK_BAD_INPUTS;
        *type = static_cast<ProViewType>(found->type);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProDrawingViewChildrenGet(ProDrawing drawing, ProView view, ProView** view_children,
                                   int* no_children) {
    static const CallSite kSite("ProDrawingViewChildrenGet", {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {drawing, view, Out(view_children), Out(no_children)},
                  [&](Session& host) -> ProError {
                      SimModel* model = FindModelOf(host, drawing, ModelKind::kDrawing);
                      const DrawingView* found = model == nullptr ? nullptr : FindView(host, *model, view);
                      if (found == nullptr || view_children == nullptr || no_children == nullptr)
                          return PRO_TK_BAD_INPUTS;
                      const int id = found->id;
                      const std::vector<ProView> children =
                          HandlesOf(*model, [id](const DrawingView& child) { return child.parent == id; });
                      if (children.empty()) return PRO_TK_E_NOT_FOUND;
                      *view_children = NewHostArray(host.memory, children);
                      *no_children = static_cast<int>(children.size());
                      return PRO_TK_NO_ERROR;
                  });
}

ProError ProDrawingViewScaleGet(ProDrawing drawing, ProView view, double* scale) {
    static const CallSite kSite("ProDrawingViewScaleGet", {});
    return Traced(kSite, {drawing, view, Out(scale)}, [&](Session& host) -> ProError {
        SimModel* model = FindModelOf(host, drawing, ModelKind::kDrawing);
        const DrawingView* found = model == nullptr ? nullptr : FindView(host, *model, view);
        if (found == nullptr || scale == nullptr) return PRO_TK_GENERAL_ERROR;
        *scale = model->ScaleOf(*found);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProDrawingViewScaleSet(ProDrawing drawing, ProView view, double scale) {
    static const CallSite kSite("ProDrawingViewScaleSet", {PRO_TK_CANT_MODIFY});
    return Traced(kSite, {drawing, view, scale}, [&](Session& host) -> ProError {
        SimModel* model = FindModelOf(host, drawing, ModelKind::kDrawing);
        DrawingView* found = model == nullptr ? nullptr : FindView(host, *model, view);
        if (found == nullptr || !IsScale(host, scale)) return PRO_TK_GENERAL_ERROR;
        const bool isCurrent = host.desk.ModelIn(host.desk.CurrentWindow()) == model;
        if (!isCurrent || IsOutOfSight(host, *model, found->sheet)) return PRO_TK_GENERAL_ERROR;
        if (model->IsReadOnly()) return PRO_TK_CANT_MODIFY;
        if (SimModel::FollowsParent(*found)) return PRO_TK_GENERAL_ERROR;
        found->scale = scale;
        model->SetModified(true);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProDrawingViewScaleIsUserdefined(ProDrawing drawing, ProView view, ProBoolean* p_is_userdefined) {
    static const CallSite kSite("ProDrawingViewScaleIsUserdefined", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {drawing, view, Out(p_is_userdefined)}, [&](Session& host) -> ProError {
        SimModel* model = FindModelOf(host, drawing, ModelKind::kDrawing);
        const DrawingView* found = model == nullptr ? nullptr : FindView(host, *model, view);
        if (found == nullptr || p_is_userdefined == nullptr) return PRO_TK_BAD_INPUTS;
        *p_is_userdefined = found->scale ? PRO_B_TRUE : PRO_B_FALSE;
        return PRO_TK_NO_ERROR;
    });
}
