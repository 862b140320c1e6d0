// Programs started for the user, and the user's own folders. A program that does not start is told in a box
// with the file or folder that it was for.
#pragma once

#include <string>

#include <ProToolkit.h>

namespace kv {

// Shows a folder in the Windows explorer.
void ShowFolder(const std::wstring& folder);

// Opens a file with the program that Windows has for it.
void ShowFile(const std::wstring& file);

// Opens a text file in the editor of Windows.
void EditTextFile(const std::wstring& file);

// The folder of the user's desktop. PRO_TK_INVALID_DIR.
[[nodiscard]] ProError DesktopFolderGet(std::wstring& folder);

}  // namespace kv
