// The choice of a model file, on the toolkit's file calls.

#include "ui/open_file.h"

#include <ProUtil.h>

#include "base/host_handle.h"
#include "base/status.h"
#include "base/text.h"

namespace kv {

static constexpr wchar_t kFormatFolderOption[] = L"pro_format_dir";

ProError ModelFileChoose(const wchar_t* title, const wchar_t* filter, std::wstring& path) {
    HostArray<ProPath> folders;
    const ProError read =
        folders.Received(ProConfigoptArrayGet(HostText(kFormatFolderOption), folders.Receive()));
    const bool known = !Failed(read) && !Items(folders).empty();
    ProPath file = {};
    const ProError status = ProFileMdlnameOpen(HostText(title), HostText(filter), nullptr, nullptr,
                                               known ? *folders.Get() : nullptr, nullptr, file);
    if (!Failed(status)) path = file;
    return status;
}

}  // namespace kv
