// The choice of a file to write.
#pragma once

#include <string>

namespace kv {

// Lets the user choose where to save, from the desktop folder on; a file in the way is asked about.
//
// filter     pairs of a name and a mask, each with '|' behind it, and one more '|' at the end
// extension  what a name without one gets, with its dot
// Empty when the user cancels, and for a path longer than Windows takes.
std::wstring SaveFileChoose(std::wstring filter, const wchar_t* extension);

}  // namespace kv
