// The choice of a file to write, on the common dialog of Windows.

#include "ui/save_file.h"

#include <algorithm>

#include <windows.h>

#include <commdlg.h>

#include "base/file.h"
#include "base/text.h"
#include "ui/message_box.h"
#include "ui/shell.h"

namespace kv {

static constexpr wchar_t kReplaceStart[] = L"文件已存在，是否替换？\n";

std::wstring SaveFileChoose(const std::wstring& name, std::wstring filter, const wchar_t* extension) {
    std::replace(filter.begin(), filter.end(), L'|', L'\0');
    std::wstring folder;
    // Without one Windows chooses where to begin.
    (void)DesktopFolderGet(folder);
    wchar_t path[MAX_PATH] = {};
    // A name that does not fit is not proposed.
    (void)CopyText(name, path);

    OPENFILENAMEW request = {};
    request.lStructSize = sizeof(request);
    request.hwndOwner = GetActiveWindow();
    request.lpstrFilter = filter.c_str();
    request.lpstrFile = path;
    request.nMaxFile = MAX_PATH;
    request.lpstrInitialDir = folder.c_str();
    request.lpstrDefExt = extension + 1;
    // The working directory is the host's: the user's way to another folder must not move it.
    request.Flags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT | OFN_NOCHANGEDIR;
    if (!GetSaveFileNameW(&request)) return {};

    return WithExtension(path, extension);
}

std::wstring WithExtension(std::wstring path, const wchar_t* extension) {
    if (UpperCase(path).ends_with(UpperCase(extension))) return path;
    path += extension;
    if (path.size() >= MAX_PATH) return {};
    if (FileExists(path) && !AskUser((kReplaceStart + path).c_str())) return {};
    return path;
}

}  // namespace kv
