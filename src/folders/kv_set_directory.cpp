// KvSetDirectory: the current model's folder becomes the working directory.

#include "folders/kv_set_directory.h"

#include <ProMdl.h>
#include <ProUtil.h>

#include "base/status.h"
#include "base/text.h"
#include "model/model_data.h"
#include "ui/prompt.h"

namespace kv {

static constexpr char kChanged[] = "Directory has changed to:%0w";

ProError KvSetDirectory() {
    ProMdl model = nullptr;
    ProError status = ProMdlCurrentGet(&model);
    if (Failed(status)) return status;
    ModelData data;
    status = ModelDataGet(model, data);
    if (Failed(status)) return status;

    // The message would be untrue if the host refused the folder.
    status = ProDirectoryChange(HostText(data.folder.c_str()));
    return Failed(status) ? status : DisplayMessage(kChanged, data.folder.c_str());
}

}  // namespace kv
