// Texts: comparing, splitting, fitting into the host's buffers, 8-bit conversion.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include <ProToolkit.h>

namespace kv {

// Code pages of 8-bit text, by the numbers of the Windows API.
enum class CodePage : unsigned {
    ThreadAnsi = 3,  // CP_THREAD_ACP
    Chinese = 936,
    Utf8 = 65001,
};

// The toolkit takes its inputs without const and leaves them alone; only these two drop it.
inline char* HostName(const char* name) {
    return const_cast<char*>(name);
}
inline wchar_t* HostText(const wchar_t* text) {
    return const_cast<wchar_t*>(text);
}

// Copies `text` into a buffer of the host, end mark included. PRO_TK_LINE_TOO_LONG for a text that does
// not fit: it is refused, never cut, and the buffer stays as it was.
template <std::size_t Size>
[[nodiscard]] ProError CopyText(std::wstring_view text, wchar_t (&buffer)[Size]) {
    if (text.size() >= Size) return PRO_TK_LINE_TOO_LONG;
    buffer[text.copy(buffer, Size - 1)] = L'\0';
    return PRO_TK_NO_ERROR;
}

// The text without any blank (U+0020); tabs and line ends stay.
std::wstring WithoutBlanks(std::wstring_view text);

// The pieces between commas of either width, in order; empty pieces are dropped.
std::vector<std::wstring> SplitAtCommas(std::wstring_view text);

// Upper case by one rule for every user language, accented Latin, Greek and Cyrillic letters included;
// the length never changes.
std::wstring UpperCase(std::wstring_view text);

// A component or section name, which is ASCII, as wide text.
std::wstring WideName(std::string_view name);

// Text in the bytes of a code page. PRO_TK_NOT_VALID when a character has no exact place in it: no
// substitute is ever written.
[[nodiscard]] ProError EncodeText(std::wstring_view text, CodePage page, std::string& bytes);

// Text as UTF-8; half a surrogate pair, which has no place in it, becomes the replacement character.
std::string Utf8Text(std::wstring_view text);

// The text that bytes of a code page stand for. PRO_TK_NOT_VALID for bytes that are no text in it.
[[nodiscard]] ProError DecodeText(std::string_view bytes, CodePage page, std::wstring& text);

// The text of a file: UTF-16 with its byte-order mark, UTF-8 with or without one. PRO_TK_NOT_VALID for
// anything else.
[[nodiscard]] ProError DecodeFile(std::string_view bytes, std::wstring& text);

}  // namespace kv
