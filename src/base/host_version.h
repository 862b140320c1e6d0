// The host's version, as it told it at start-up.
#pragma once

#include <string>

namespace kv {

// Keeps the version text, 8-bit in the thread's ANSI code page, until the plug-in is unloaded.
void HostVersionKeep(const char* version);

// The kept text; empty before start-up.
const std::wstring& HostVersion();

}  // namespace kv
