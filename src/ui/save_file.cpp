// The choice of a file to write, on the common dialog of Windows.

#include "ui/save_file.h"

#include <algorithm>

#include <windows.h>

#include <commdlg.h>

#include "base/status.h"
#include "ui/shell.h"

namespace kv {

static bool HasExtension(const std::wstring& path);

std::wstring SaveFileChoose(std::wstring filter, const wchar_t* extension) {
    std::replace(filter.begin(), filter.end(), L'|', L'\0');
    std::wstring folder;
    // Without one Windows chooses where to begin.
    (void)DesktopFolderGet(folder);
    wchar_t path[MAX_PATH] = {};

    OPENFILENAMEW request = {};
    request.lStructSize = sizeof(request);
    request.lpstrFilter = filter.c_str();
    request.lpstrFile = path;
    request.nMaxFile = MAX_PATH;
    request.lpstrInitialDir = folder.c_str();
    request.lpstrDefExt = extension + 1;
    // The working directory is the host's: the user's way to another folder must not move it.
    request.Flags = OFN_HIDEREADONLY | OFN_OVERWRITEPROMPT | OFN_NOCHANGEDIR;
    if (!GetSaveFileNameW(&request)) return {};

    std::wstring chosen = path;
    if (!HasExtension(chosen)) chosen += extension;
    return chosen.size() < MAX_PATH ? chosen : std::wstring();
}

static bool HasExtension(const std::wstring& path) {
    const std::size_t name = path.find_last_of(L"\\/") + 1;
    return path.find(L'.', name) != std::wstring::npos;
}

}  // namespace kv
