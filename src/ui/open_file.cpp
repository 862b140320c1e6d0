// The choice of a file to read, on the common dialog of Windows.

#include "ui/open_file.h"

#include <algorithm>

#include <windows.h>

#include <commdlg.h>

namespace kv {

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
