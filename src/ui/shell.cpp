// Programs started through the Windows shell.

#include "ui/shell.h"

#include <windows.h>

#include <shellapi.h>

namespace kv {

void ShowFolder(const wchar_t* folder) {
    ShellExecuteW(nullptr, nullptr, L"explorer", folder, nullptr, SW_SHOW);
}

}  // namespace kv
