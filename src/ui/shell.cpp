// Programs and folders of the Windows shell.

#include "ui/shell.h"

#include <windows.h>

#include <shellapi.h>

// The C form of the next header: helpers of its C++ form need a language extension.
#define CINTERFACE
#include <shlobj.h>

#include "base/status.h"
#include "base/text.h"
#include "ui/message_box.h"

namespace kv {

static constexpr wchar_t kNotOpened[] = L"\t无法打开，请检查系统中对应的程序或文件关联\t\n";
// Windows answers with a number up to this when nothing was started.
static constexpr INT_PTR kLastFailure = 32;

static void TellIfFailed(INT_PTR answer, const std::wstring& what);

void ShowFolder(const std::wstring& folder) {
    const HINSTANCE answer = ShellExecuteW(nullptr, nullptr, L"explorer", folder.c_str(), nullptr, SW_SHOW);
    TellIfFailed(reinterpret_cast<INT_PTR>(answer), folder);
}

void ShowFile(const std::wstring& file) {
    const HINSTANCE answer = ShellExecuteW(nullptr, L"open", file.c_str(), nullptr, nullptr, SW_SHOWNORMAL);
    TellIfFailed(reinterpret_cast<INT_PTR>(answer), file);
}

void EditTextFile(const std::wstring& file) {
    std::string path;
    // A command line is 8-bit text: a path with other characters goes the other way.
    if (Failed(EncodeText(file, CodePage::ThreadAnsi, path))) {
        const HINSTANCE answer =
            ShellExecuteW(nullptr, L"open", L"notepad.exe", file.c_str(), nullptr, SW_SHOW);
        TellIfFailed(reinterpret_cast<INT_PTR>(answer), file);
        return;
    }
    TellIfFailed(static_cast<INT_PTR>(WinExec(("notepad.exe " + path).c_str(), SW_SHOW)), file);
}

ProError DesktopFolderGet(std::wstring& folder) {
    wchar_t path[MAX_PATH] = {};
    if (!SHGetSpecialFolderPathW(nullptr, path, CSIDL_DESKTOPDIRECTORY, FALSE)) return PRO_TK_INVALID_DIR;
    folder = path;
    return PRO_TK_NO_ERROR;
}

static void TellIfFailed(INT_PTR answer, const std::wstring& what) {
    if (answer <= kLastFailure) ShowMessage((kNotOpened + what).c_str());
}

}  // namespace kv
