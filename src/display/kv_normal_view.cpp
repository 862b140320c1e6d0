// KvNormalView: the view along the axes that is nearest to the one on the screen.

#include "display/kv_normal_view.h"

#include <optional>

#include <ProMdl.h>
#include <ProWindows.h>

#include "base/status.h"
#include "model/current_model.h"
#include "model/view_snap.h"

namespace kv {

static ProError ViewSet(const ViewMatrix& present, const ViewMatrix& snapped);
static bool IsInDrawing();

ProError KvNormalView() {
    ViewMatrix present = {};
    ProError status = CurrentViewGet(present);
    if (Failed(status)) return status;
    const std::optional<ViewMatrix> snapped = SnappedView(present);
    if (!snapped) return PRO_TK_GENERAL_ERROR;
    status = ViewSet(present, *snapped);
    return Failed(status) ? status : ProWindowRepaint(PRO_VALUE_UNUSED);
}

// The view keeps its scale and shift, so that the picture only turns. A host that takes no such matrix fits
// the turned model in by itself; where nothing turns that would only move the picture.
static ProError ViewSet(const ViewMatrix& present, const ViewMatrix& snapped) {
    const ProError status = CurrentViewSet(snapped);
    if (!Failed(status) || IsSameView(present, snapped) || IsInDrawing()) return status;
    return CurrentViewSet(NormalisedView(snapped));
}

static bool IsInDrawing() {
    ProMdl model = nullptr;
    ProMdlType type = PRO_MDL_UNUSED;
    return Failed(CurrentModelGet(model, type)) || type == PRO_MDL_DRAWING;
}

}  // namespace kv
