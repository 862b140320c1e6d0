// KvOpenDrw: the drawing of the selected model, from the right-click menu.

#include "folders/kv_open_drw.h"

#include <algorithm>
#include <string>
#include <vector>

#include <ProMdl.h>
#include <ProSelbuffer.h>
#include <ProWindows.h>

#include "base/host_handle.h"
#include "base/status.h"
#include "base/text.h"
#include "model/drawing_window.h"
#include "model/model_data.h"
#include "model/selected_model.h"
#include "ui/message_box.h"

namespace kv {

static constexpr wchar_t kNoDrawing[] = L"\t同名工程图打开失败，请确认该模型工程图在当前工作目录是否存在。\t";

static ProError ShowDrawing(const std::wstring& name, ProMdl drawing);

ProError KvOpenDrw() {
    SelectionArray selections;
    ProError status = selections.Received(ProSelbufferSelectionsGet(selections.Receive()));
    if (Failed(status)) return status;
    int count = 0;
    status = ProArraySizeGet(selections.Get(), &count);
    if (Failed(status) || count != 1) return status;

    ProMdl model = nullptr;
    std::wstring name;
    status = SelectedModelGet(*selections.Get(), ComponentMeans::Owner, model);
    if (!Failed(status)) status = ModelNameGet(model, name);
    if (Failed(status)) return status;

    ProMdl drawing = nullptr;
    status = ModelRetrieveByType(name, PRO_MDLFILE_DRAWING, drawing);
    return Failed(status) ? ShowFailure(kNoDrawing, status) : ShowDrawing(name, drawing);
}

static ProError ShowDrawing(const std::wstring& name, ProMdl drawing) {
    const std::vector<ProMdl> shown = ShownModels();
    const bool wasShown = std::ranges::find(shown, drawing) != shown.end();
    ProMdlName windowName;
    int window = PRO_VALUE_UNUSED;
    ProError status = CopyText(name, windowName);
    if (!Failed(status)) status = ProObjectwindowMdlnameCreate(windowName, PRO_DRAWING, &window);
    if (Failed(status)) return status;
    status = ProMdlDisplay(drawing);
    if (!Failed(status)) status = ProWindowActivate(window);
    // A window that the user does not get to see is not left behind; the host hands out one that the user
    // has, too.
    if (Failed(status) && !wasShown) ProWindowDelete(window);
    return status;
}

}  // namespace kv
