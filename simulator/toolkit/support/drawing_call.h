// What the drawing functions share: finding the sheet, model or view that a call names.

#pragma once

#include <ProDrawing.h>

#include "simulator/session/session.h"

namespace sim {

// A drawing, or a format where the host takes it for one. Null, with a violation for another kind.
const SimModel* FindSheets(Session& host, ProDrawing drawing);

bool HasSheet(const SimModel& drawing, int sheet);

// A sheet's number, where one below 1 means the current sheet.
int SheetOrCurrent(const SimModel& drawing, int sheet);

// A sheet that the user does not see now, for a host that wants it displayed.
bool IsOutOfSight(Session& host, const SimModel& drawing, int sheet);

// A view's handle is its place in the drawing; null, with a violation, for anything else.
DrawingView* FindView(Session& host, SimModel& drawing, ProView view);

// A model of the drawing, NULL the first one. Null without one, and, with a violation, for a model that the
// drawing does not have.
SimModel* FindShown(Session& host, const SimModel& drawing, ProSolid solid);

// A scale is above zero and finite: anything else is a violation.
bool IsScale(Session& host, double scale);

}  // namespace sim
