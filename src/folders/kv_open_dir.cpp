// KvOpenDir: the working directory in the Windows explorer.

#include "folders/kv_open_dir.h"

#include <ProUtil.h>

#include "base/status.h"
#include "ui/shell.h"

namespace kv {

ProError KvOpenDir() {
    ProPath directory = {};
    const ProError status = ProDirectoryCurrentGet(directory);
    if (Failed(status)) return status;
    ShowFolder(directory);
    return PRO_TK_NO_ERROR;
}

}  // namespace kv
