// KvOpenDrw: the drawing of the selected model, from the right-click menu.

#include "folders/kv_open_drw.h"

#include <string>

#include <ProMdl.h>

#include "base/host_handle.h"
#include "base/status.h"
#include "model/drawing_window.h"
#include "model/model_data.h"
#include "model/selection.h"
#include "ui/message_box.h"

namespace kv {

static constexpr wchar_t kNoDrawing[] = L"\t同名工程图打开失败，请确认该模型工程图在当前工作目录是否存在。\t";

ProError KvOpenDrw() {
    SelectionArray selections;
    ProError status = SelectionRead(selections);
    if (Failed(status) || Items(selections).size() != 1) return status;

    ProMdl model = nullptr;
    std::wstring name;
    status = SelectedModelGet(*selections.Get(), ComponentMeans::Owner, model);
    if (!Failed(status)) status = ModelNameGet(model, name);
    if (Failed(status)) return status;

    ProMdl drawing = nullptr;
    status = ModelRetrieveByType(name, PRO_MDLFILE_DRAWING, drawing);
    return Failed(status) ? ShowFailure(kNoDrawing, status)
                          : ShowDrawing(name, drawing, DrawingDisplay::Repainted);
}

}  // namespace kv
