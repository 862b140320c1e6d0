// The choice of a file to read.
#pragma once

#include <string>

namespace kv {

// Lets the user choose a file that is there.
//
// filter  pairs of a name and a mask, each with '|' behind it, and one more '|' at the end
// Empty when the user cancels.
std::wstring OpenFileChoose(const wchar_t* title, std::wstring filter);

}  // namespace kv
