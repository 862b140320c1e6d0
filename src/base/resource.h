// Files that are built into the plug-in.
#pragma once

#include <string>

namespace kv {

// Content of a resource of this name in the plug-in's module, lines ended by line feeds alone; empty when
// there is none.
std::string ResourceText(const wchar_t* name);

}  // namespace kv
