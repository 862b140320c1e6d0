// Names of files. Plain rules, without a host call.
#pragma once

#include <string>

namespace kv {

// A text as a file name can hold it: what is forbidden becomes "_", and the name of a device (CON, COM1 ...)
// gets one in front.
std::wstring FileNameText(std::wstring text);

}  // namespace kv
