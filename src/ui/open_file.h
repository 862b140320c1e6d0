// The choice of a file to open.
#pragma once

#include <string>

#include <ProToolkit.h>

namespace kv {

// Lets the user choose a model file in the host's own dialog.
//
// title   at most 31 characters
// filter  masks separated by commas
// Starts in the first folder of the option "pro_format_dir", else in the working directory.
// Errors  those of ProFileMdlnameOpen: PRO_TK_USER_ABORT when the user cancels
[[nodiscard]] ProError ModelFileChoose(const wchar_t* title, const wchar_t* filter, std::wstring& path);

// Lets the user choose any other file that is there, in the dialog of Windows.
//
// filter  pairs of a name and a mask, each with '|' behind it, and one more '|' at the end
// Empty when the user cancels.
std::wstring OpenFileChoose(const wchar_t* title, std::wstring filter);

}  // namespace kv
