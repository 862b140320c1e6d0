// The model that a new drawing is made of.

#include "drawing/drawing_target.h"

#include "base/host_handle.h"
#include "base/status.h"
#include "model/current_model.h"
#include "model/model_data.h"
#include "model/selection.h"
#include "ui/message_box.h"
#include "ui/prompt.h"

namespace kv {

static constexpr wchar_t kOneOnly[] = L"\t当前模式只能选择1个元件\t";
static constexpr char kOpenedFrom[] = "Existing drawing opened from:%0w";

// A buffer that cannot be read, or that is empty, leaves the current model.
static ProError TargetModelGet(ProMdl& model) {
    SelectionArray selections;
    if (Failed(SelectionRead(selections))) return ProMdlCurrentGet(&model);
    return Items(selections).size() == 1 ? SelectedModelGet(*selections.Get(), ComponentMeans::Owner, model)
                                         : ShowFailure(kOneOnly, PRO_TK_BAD_CONTEXT);
}

ProError DrawingTargetGet(DrawingTarget& target) {
    ProError status = TargetModelGet(target.model);
    if (!Failed(status)) status = SolidOf(target.model, target.type);
    return Failed(status) ? status : ModelNameGet(target.model, target.name);
}

bool OpenExistingDrawing(const DrawingTarget& target, DrawingDisplay display, ProError& status) {
    ProMdl drawing = nullptr;
    if (Failed(ModelRetrieveByType(target.name, PRO_MDLFILE_DRAWING, drawing))) return false;
    status = ShowDrawing(target.name, drawing, display);
    // A part and an assembly of one name share it: the folder tells whose it is.
    ModelData data;
    if (!Failed(status) && !Failed(ModelDataGet(drawing, data)))
        DisplayMessage(kOpenedFrom, data.folder.c_str());
    return true;
}

}  // namespace kv
