// One scale for the views of a drawing and for the drawing itself.
#pragma once

#include <ProDrawing.h>

#include "base/host_handle.h"

namespace kv {

// The current drawing. PRO_TK_INVALID_TYPE for a model that is none, else the errors of CurrentModelGet.
[[nodiscard]] ProError CurrentDrawingGet(ProDrawing& drawing);

// The views of all sheets. PRO_TK_E_NOT_FOUND for a drawing without any, else those of
// ProDrawingViewsCollect.
[[nodiscard]] ProError ViewsGet(ProDrawing drawing, HostArray<ProView>& views);

// Gives the scale to every view that has one of its own, and to the drawing, for the model of every view;
// what the host refuses is recorded and counted in the message area. Then the sheet is regenerated.
//
// command  ASCII name of the run
// sheet    what is regenerated, counted from 1
// Errors   those of ProDwgSheetRegenerate
[[nodiscard]] ProError ScalePush(const char* command, ProDrawing drawing, const HostArray<ProView>& views,
                                 double scale, int sheet);

}  // namespace kv
