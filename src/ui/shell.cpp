// Programs and folders of the Windows shell.

#include "ui/shell.h"

#include <windows.h>

#include <shellapi.h>

// The C form of the next header: helpers of its C++ form need a language extension.
#define CINTERFACE
#include <shlobj.h>

#include "base/status.h"
#include "base/text.h"

namespace kv {

void ShowFolder(const wchar_t* folder) {
    ShellExecuteW(nullptr, nullptr, L"explorer", folder, nullptr, SW_SHOW);
}

void ShowFile(const std::wstring& file) {
    ShellExecuteW(nullptr, L"open", file.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
}

void EditTextFile(const std::wstring& file) {
    std::string path;
    // A command line is 8-bit text: a path with other characters goes the other way.
    if (Failed(EncodeText(file, CodePage::ThreadAnsi, path))) {
        ShellExecuteW(nullptr, L"open", L"notepad.exe", file.c_str(), nullptr, SW_SHOW);
        return;
    }
    WinExec(("notepad.exe " + path).c_str(), SW_SHOW);
}

ProError DesktopFolderGet(std::wstring& folder) {
    wchar_t path[MAX_PATH] = {};
    if (!SHGetSpecialFolderPathW(nullptr, path, CSIDL_DESKTOPDIRECTORY, FALSE)) return PRO_TK_INVALID_DIR;
    folder = path;
    return PRO_TK_NO_ERROR;
}

}  // namespace kv
