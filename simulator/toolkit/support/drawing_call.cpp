#include "simulator/toolkit/support/drawing_call.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <string>
#include <vector>

#include "simulator/report/utf8.h"
#include "simulator/toolkit/support/arguments.h"

namespace sim {

const SimModel* FindSheets(Session& host, ProDrawing drawing) {
    const SimModel* model = FindModel(host, drawing);
    if (model == nullptr || model->Kind() != ModelKind::kFormat)
        return model == nullptr ? nullptr : FindModelOf(host, drawing, ModelKind::kDrawing);
    return host.strict.formatIsNoDrawing ? nullptr : model;
}

bool HasSheet(const SimModel& drawing, int sheet) {
    return sheet >= 1 && static_cast<std::size_t>(sheet) <= drawing.Sheets().size();
}

int SheetOrCurrent(const SimModel& drawing, int sheet) {
    return sheet < 1 ? drawing.CurrentSheet() : sheet;
}

bool IsOutOfSight(Session& host, const SimModel& drawing, int sheet) {
    return host.strict.hiddenSheetRefused && drawing.CurrentSheet() != sheet;
}

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

SimModel* FindShown(Session& host, const SimModel& drawing, ProSolid solid) {
    const std::vector<SimModel*>& shown = drawing.ShownModels();
    if (solid == nullptr) return shown.empty() ? nullptr : shown.front();
    SimModel* model = FindSolid(host, solid);
    if (model == nullptr || std::ranges::find(shown, model) != shown.end()) return model;
    host.report.Violation("is given the model " + Utf8(model->Name()) + ", which " + Utf8(drawing.Name()) +
                          " does not have");
    return nullptr;
}

bool IsScale(Session& host, double scale) {
    if (scale > 0 && std::isfinite(scale)) return true;
    host.report.Violation("is given the scale " + std::to_string(scale));
    return false;
}

}  // namespace sim
