// The time of day, as texts.
#pragma once

#include <string>

namespace kv {

// The local time to the millisecond: "2026-01-02 03:04:05.678".
std::wstring LocalTimeText();

}  // namespace kv
