// The choice of a model file to open.
#pragma once

#include <string>

#include <ProToolkit.h>

namespace kv {

// Lets the user choose a file in the host's own dialog.
//
// title   at most 31 characters
// filter  masks separated by commas
// Starts in the first folder of the option "pro_format_dir", else in the working directory.
// Errors  those of ProFileMdlnameOpen: PRO_TK_USER_ABORT when the user cancels
[[nodiscard]] ProError ModelFileChoose(const wchar_t* title, const wchar_t* filter, std::wstring& path);

}  // namespace kv
