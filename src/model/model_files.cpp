// Model files, on the toolkit's listing.

#include "model/model_files.h"

#include <ProUtil.h>

#include "base/host_handle.h"
#include "base/status.h"
#include "base/text.h"

namespace kv {

ProError ModelFilesGet(const wchar_t* filter, std::vector<std::wstring>& names) {
    HostArray<ProPath> files;
    HostArray<ProPath> folders;
    ProError status = ArrayAlloc(files);
    if (!Failed(status)) status = ArrayAlloc(folders);
    if (!Failed(status))
        status =
            ProFilesList(nullptr, HostText(filter), PRO_FILE_LIST_LATEST, files.InOut(), folders.InOut());
    if (Failed(status)) return status;

    for (ProPath& file : Items(files)) {
        ProMdlName name = {};
        // What has no model's name is no model.
        if (!Failed(ProFileMdlnameParse(file, nullptr, name, nullptr, nullptr))) names.emplace_back(name);
    }
    return names.empty() ? PRO_TK_E_NOT_FOUND : PRO_TK_NO_ERROR;
}

}  // namespace kv
