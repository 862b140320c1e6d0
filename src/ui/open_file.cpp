// The choice of a model file, on the toolkit's file calls.

#include "ui/open_file.h"

#include <ProUtil.h>

#include "base/config_option.h"
#include "base/status.h"
#include "base/text.h"

namespace kv {

static constexpr wchar_t kFormatFolderOption[] = L"pro_format_dir";

ProError ModelFileChoose(const wchar_t* title, const wchar_t* filter, std::wstring& path) {
    std::wstring folder;
    const bool known = !Failed(ConfigOptionGet(kFormatFolderOption, folder)) && !folder.empty();
    ProPath file = {};
    const ProError status = ProFileMdlnameOpen(HostText(title), HostText(filter), nullptr, nullptr,
                                               known ? HostText(folder.c_str()) : nullptr, nullptr, file);
    if (!Failed(status)) path = file;
    return status;
}

}  // namespace kv
