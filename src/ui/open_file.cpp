// The choice of a file to open: of models on the toolkit's file calls, else on the common dialog of Windows.

#include "ui/open_file.h"

#include <algorithm>

#include <ProUtil.h>

#include <windows.h>

#include <commdlg.h>

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

std::wstring OpenFileChoose(const wchar_t* title, std::wstring filter) {
    std::replace(filter.begin(), filter.end(), L'|', L'\0');
    wchar_t path[MAX_PATH] = {};
    OPENFILENAMEW request = {};
    request.lStructSize = sizeof(request);
    request.hwndOwner = GetActiveWindow();
    request.lpstrTitle = title;
    request.lpstrFilter = filter.c_str();
    request.lpstrFile = path;
    request.nMaxFile = MAX_PATH;
    // The working directory is the host's: the user's way to another folder must not move it.
    request.Flags = OFN_HIDEREADONLY | OFN_FILEMUSTEXIST | OFN_PATHMUSTEXIST | OFN_NOCHANGEDIR;
    return GetOpenFileNameW(&request) ? std::wstring(path) : std::wstring();
}

}  // namespace kv
