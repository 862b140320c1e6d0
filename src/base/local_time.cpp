// The time of day, as texts.

#include "base/local_time.h"

#include <array>
#include <cwchar>

#include <windows.h>

namespace kv {

std::wstring LocalTimeText() {
    SYSTEMTIME now = {};
    GetLocalTime(&now);
    std::array<wchar_t, 32> text = {};
    std::swprintf(text.data(), text.size(), L"%04u-%02u-%02u %02u:%02u:%02u.%03u", now.wYear, now.wMonth,
                  now.wDay, now.wHour, now.wMinute, now.wSecond, now.wMilliseconds);
    return text.data();
}

}  // namespace kv
