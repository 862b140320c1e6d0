// SameScale, KvUpdateSheetScale, KvUpdateMainViewScale: one flow for a scale from three places.

#include "drawing/sheet_scale.h"

#include <cmath>
#include <span>

#include <ProDrawing.h>
#include <ProDrawingView.h>

#include "base/host_handle.h"
#include "base/status.h"
#include "drawing/scale_push.h"
#include "model/drawing_sheets.h"
#include "ui/message_box.h"
#include "ui/prompt.h"

namespace kv {

static constexpr char kPrompt[] = "USER Enter any double scale: ";
static constexpr wchar_t kNoScale[] = L"\t比例必须大于0\t";

static ProError ScaleRead(double& scale);
static ProError MainScaleGet(ProDrawing drawing, std::span<ProView> views, double& scale);
static bool IsMainView(ProDrawing drawing, ProView view);
static bool HasChildren(ProDrawing drawing, ProView view);

ProError SameScale() {
    ProDrawing drawing = nullptr;
    double scale = 0;
    ProError status = CurrentDrawingGet(drawing);
    if (!Failed(status)) status = ScaleRead(scale);
    if (Failed(status)) return status;

    HostArray<ProView> views;
    status = ViewsGet(drawing, views);
    // Without a view the sheet alone is left to bring up to date.
    if (Failed(status) && status != PRO_TK_E_NOT_FOUND) return status;
    return ScalePush("SameScale", drawing, views, scale, kFirstSheet);
}

ProError KvUpdateSheetScale() {
    ProDrawing drawing = nullptr;
    int sheet = 0;
    double scale = 0;
    HostArray<ProView> views;
    ProError status = CurrentDrawingGet(drawing);
    if (!Failed(status)) status = ProDrawingCurrentSheetGet(drawing, &sheet);
    if (!Failed(status)) status = ProDrawingScaleGet(drawing, nullptr, sheet, &scale);
    if (!Failed(status)) status = ViewsGet(drawing, views);
    return Failed(status) ? status : ScalePush("KvUpdateSheetScale", drawing, views, scale, sheet);
}

ProError KvUpdateMainViewScale() {
    ProDrawing drawing = nullptr;
    int sheet = 0;
    double scale = 0;
    HostArray<ProView> views;
    ProError status = CurrentDrawingGet(drawing);
    if (!Failed(status)) status = ProDrawingCurrentSheetGet(drawing, &sheet);
    if (!Failed(status)) status = ViewsGet(drawing, views);
    if (!Failed(status)) status = MainScaleGet(drawing, Items(views), scale);
    return Failed(status) ? status : ScalePush("KvUpdateMainViewScale", drawing, views, scale, sheet);
}

static ProError ScaleRead(double& scale) {
    ProError status = DisplayMessage(kPrompt);
    if (!Failed(status)) status = ReadMessageDouble(scale);
    if (Failed(status)) return status;
    const bool isScale = std::isfinite(scale) && scale > 0;
    return isScale ? PRO_TK_NO_ERROR : ShowFailure(kNoScale, PRO_TK_BAD_INPUTS);
}

// Of the first view that is a main view; without one, or without its scale, of the first view.
static ProError MainScaleGet(ProDrawing drawing, std::span<ProView> views, double& scale) {
    if (views.empty()) return PRO_TK_E_NOT_FOUND;
    for (ProView view : views) {
        if (!IsMainView(drawing, view)) continue;
        if (!Failed(ProDrawingViewScaleGet(drawing, view, &scale))) return PRO_TK_NO_ERROR;
        break;
    }
    return ProDrawingViewScaleGet(drawing, views.front(), &scale);
}

// A general view that others were made from.
static bool IsMainView(ProDrawing drawing, ProView view) {
    ProViewType type = PRO_VIEW_PROJECTION;
    const ProError status = ProDrawingViewTypeGet(drawing, view, &type);
    return !Failed(status) && type == PRO_VIEW_GENERAL && HasChildren(drawing, view);
}

static bool HasChildren(ProDrawing drawing, ProView view) {
    HostArray<ProView> children;
    int count = 0;
    return !Failed(children.Received(ProDrawingViewChildrenGet(drawing, view, children.Receive(), &count)));
}

}  // namespace kv
