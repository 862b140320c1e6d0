// One scale for the views of a drawing, on the toolkit's scale calls.

#include "drawing/scale_push.h"

#include <span>
#include <string>

#include "base/status.h"
#include "model/batch_run.h"
#include "model/current_model.h"
#include "model/drawing_sheets.h"
#include "model/model_data.h"

namespace kv {

static constexpr wchar_t kViewItems[] = L"视图";
static constexpr wchar_t kStepViewScale[] = L"设置视图比例";
static constexpr wchar_t kStepDrawingScale[] = L"设置页面比例";
// The drawing scale is always set on the first sheet, whichever is current.
static constexpr int kScaledSheet = 1;

struct Push {
    ProDrawing drawing;
    double scale;
    SheetTurn sheet;
};

static void PushToView(Push& push, const std::wstring& item, ProView view, BatchRun& run);
static ProError ViewScaleSet(Push& push, ProView view);
static ProError SheetRegenerate(ProDrawing drawing, int sheet);

ProError CurrentDrawingGet(ProDrawing& drawing) {
    ProMdl model = nullptr;
    ProMdlType type = PRO_MDL_UNUSED;
    const ProError status = CurrentModelGet(model, type);
    if (Failed(status)) return status;
    if (type != PRO_MDL_DRAWING) return PRO_TK_INVALID_TYPE;
    drawing = static_cast<ProDrawing>(model);
    return PRO_TK_NO_ERROR;
}

ProError ViewsGet(ProDrawing drawing, HostArray<ProView>& views) {
    return views.Received(ProDrawingViewsCollect(drawing, views.Receive()));
}

ProError ScalePush(const char* command, ProDrawing drawing, const HostArray<ProView>& views, double scale,
                   int sheet) {
    std::wstring name;
    (void)ModelNameGet(drawing, name);
    const std::span<ProView> all = Items(views);
    BatchRun run(command, all.size());
    {
        Push push = {drawing, scale, SheetTurn(drawing)};
        std::size_t number = 0;
        for (ProView view : all) {
            const std::wstring item = name + L" " + kViewItems + std::to_wstring(++number);
            if (run.Begin(item)) PushToView(push, item, view, run);
        }
    }
    const ProError status = SheetRegenerate(drawing, sheet);
    TellCount(run, kViewItems);
    ShowCancelled(run);
    return status;
}

// A view without a scale of its own follows the drawing.
static void PushToView(Push& push, const std::wstring& item, ProView view, BatchRun& run) {
    ProBoolean isOwn = PRO_B_FALSE;
    ProError status = ProDrawingViewScaleIsUserdefined(push.drawing, view, &isOwn);
    if (!Failed(status) && isOwn == PRO_B_TRUE) status = ViewScaleSet(push, view);
    if (Failed(status) || isOwn == PRO_B_TRUE) run.Add({item, kStepViewScale, status});

    ProSolid solid = nullptr;
    status = ProDrawingViewSolidGet(push.drawing, view, &solid);
    if (!Failed(status)) status = ProDrawingScaleSet(push.drawing, solid, kScaledSheet, push.scale);
    run.Add({item, kStepDrawingScale, status});
}

// There are hosts that scale only what they show: they get the view's sheet to show, and the scale again.
static ProError ViewScaleSet(Push& push, ProView view) {
    const ProError refusal = ProDrawingViewScaleSet(push.drawing, view, push.scale);
    if (!Failed(refusal) || refusal == PRO_TK_CANT_MODIFY) return refusal;
    int sheet = 0;
    if (Failed(ProDrawingViewSheetGet(push.drawing, view, &sheet))) return refusal;
    if (Failed(push.sheet.To(sheet))) return refusal;
    return ProDrawingViewScaleSet(push.drawing, view, push.scale);
}

// The same for a sheet that is to be regenerated.
static ProError SheetRegenerate(ProDrawing drawing, int sheet) {
    const ProError refusal = ProDwgSheetRegenerate(drawing, sheet);
    if (!Failed(refusal)) return refusal;
    SheetTurn turn(drawing);
    return Failed(turn.To(sheet)) ? refusal : ProDwgSheetRegenerate(drawing, sheet);
}

}  // namespace kv
