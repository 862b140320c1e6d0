// A drawing that is exported.

#include "export/drawing_task.h"

#include "base/status.h"
#include "model/model_data.h"

namespace kv {

ProError DrawingTaskGet(ProMdl model, DrawingTask& task) {
    ProMdlType type = PRO_MDL_UNUSED;
    ProError status = ProMdlTypeGet(model, &type);
    if (!Failed(status) && type != PRO_MDL_DRAWING) return PRO_TK_INVALID_TYPE;
    if (!Failed(status)) status = ModelNameGet(model, task.name);
    if (Failed(status)) return status;

    task.drawing = static_cast<ProDrawing>(model);
    status = ProDrawingSheetsCount(task.drawing, &task.sheets);
    if (!Failed(status)) status = ProDrawingCurrentSheetGet(task.drawing, &task.currentSheet);
    if (Failed(status)) return status;
    const bool hasCurrent = task.currentSheet >= 1 && task.currentSheet <= task.sheets;
    return hasCurrent ? PRO_TK_NO_ERROR : PRO_TK_BAD_CONTEXT;
}

void SheetRestore(const DrawingTask& task) noexcept {
    int sheet = 0;
    if (task.sheets < 2) return;
    const bool isBack =
        !Failed(ProDrawingCurrentSheetGet(task.drawing, &sheet)) && sheet == task.currentSheet;
    if (!isBack) ProDrawingCurrentSheetSet(task.drawing, task.currentSheet);
}

}  // namespace kv
