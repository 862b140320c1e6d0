#include "simulator/report/utf8.h"

#include <windows.h>

namespace sim {

std::string Utf8(std::wstring_view text) {
    if (text.empty()) return {};
    const int length = static_cast<int>(text.size());
    const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(), size, nullptr, nullptr);
    return bytes;
}

std::wstring Wide(std::string_view text) {
    if (text.empty()) return {};
    const int length = static_cast<int>(text.size());
    const int size = MultiByteToWideChar(CP_UTF8, 0, text.data(), length, nullptr, 0);
    std::wstring wide(static_cast<std::size_t>(size), L'\0');
    MultiByteToWideChar(CP_UTF8, 0, text.data(), length, wide.data(), size);
    return wide;
}

bool IsUtf8(std::string_view text) {
    return FromCodePage(text, CP_UTF8).has_value();
}

std::optional<std::wstring> FromCodePage(std::string_view bytes, unsigned page) {
    if (bytes.empty()) return std::wstring();
    const int length = static_cast<int>(bytes.size());
    const int size = MultiByteToWideChar(page, MB_ERR_INVALID_CHARS, bytes.data(), length, nullptr, 0);
    if (size <= 0) return std::nullopt;
    std::wstring wide(static_cast<std::size_t>(size), L'\0');
    MultiByteToWideChar(page, MB_ERR_INVALID_CHARS, bytes.data(), length, wide.data(), size);
    return wide;
}

std::wstring UpperName(std::wstring_view name) {
    std::wstring upper(name);
    if (!upper.empty())
        LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_UPPERCASE, name.data(), static_cast<int>(name.size()),
                      upper.data(), static_cast<int>(upper.size()), nullptr, nullptr, 0);
    return upper;
}

}  // namespace sim
