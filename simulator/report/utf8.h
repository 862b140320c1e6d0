// UTF-8 and UTF-16 texts: the one place in the simulator that converts.

#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace sim {

// Text of the host as UTF-8; a lone surrogate becomes U+FFFD.
std::string Utf8(std::wstring_view text);

// UTF-8 as text of the host; an invalid byte becomes U+FFFD.
std::wstring Wide(std::string_view text);

// True when `text` is well-formed UTF-8.
bool IsUtf8(std::string_view text);

// Bytes of a code page by its number in Windows; nothing for bytes that are no text in it.
std::optional<std::wstring> FromCodePage(std::string_view bytes, unsigned page);
inline constexpr unsigned kGbkPage = 936;

// Upper case by the invariant rules, as the host compares names.
std::wstring UpperName(std::wstring_view name);

}  // namespace sim
