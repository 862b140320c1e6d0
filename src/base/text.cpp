// Text helpers on the Windows conversion calls.

#include "base/text.h"

#include <algorithm>

#include <windows.h>

#include "base/status.h"

namespace kv {

std::wstring WithoutBlanks(std::wstring_view text) {
    std::wstring result(text);
    std::erase(result, L' ');
    return result;
}

std::vector<std::wstring> SplitAtCommas(std::wstring_view text) {
    std::vector<std::wstring> pieces;
    while (!text.empty()) {
        const std::size_t length = std::min(text.find_first_of(L",，"), text.size());
        if (length > 0) pieces.emplace_back(text.substr(0, length));
        text.remove_prefix(std::min(length + 1, text.size()));
    }
    return pieces;
}

std::wstring UpperCase(std::wstring_view text) {
    std::wstring result(text);
    const int length = static_cast<int>(text.size());
    // The invariant rule: with a Turkish user language "i" must still become "I".
    LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_UPPERCASE, text.data(), length, result.data(), length, nullptr,
                  nullptr, 0);
    return result;
}

std::wstring WideName(std::string_view name) {
    return {name.begin(), name.end()};
}

ProError EncodeText(std::wstring_view text, CodePage page, std::string& bytes) {
    bytes.clear();
    if (text.empty()) return PRO_TK_NO_ERROR;
    const UINT codePage = static_cast<UINT>(page);
    const int length = static_cast<int>(text.size());
    const int size = WideCharToMultiByte(codePage, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    bytes.resize(static_cast<std::size_t>(std::max(size, 0)));
    WideCharToMultiByte(codePage, 0, text.data(), length, bytes.data(), size, nullptr, nullptr);

    // Windows writes "?" or a look-alike for what the page lacks; reading back finds both.
    std::wstring back;
    const ProError status = DecodeText(bytes, page, back);
    return Failed(status) || back != text ? PRO_TK_NOT_VALID : PRO_TK_NO_ERROR;
}

ProError DecodeText(std::string_view bytes, CodePage page, std::wstring& text) {
    text.clear();
    if (bytes.empty()) return PRO_TK_NO_ERROR;
    const UINT codePage = static_cast<UINT>(page);
    const int size = static_cast<int>(bytes.size());
    const int length = MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, bytes.data(), size, nullptr, 0);
    if (length <= 0) return PRO_TK_NOT_VALID;
    text.resize(static_cast<std::size_t>(length));
    MultiByteToWideChar(codePage, MB_ERR_INVALID_CHARS, bytes.data(), size, text.data(), length);
    return PRO_TK_NO_ERROR;
}

ProError DecodeFile(std::string_view bytes, std::wstring& text) {
    const bool isLittle = bytes.starts_with("\xFF\xFE");
    const bool isBig = bytes.starts_with("\xFE\xFF");
    if (!isLittle && !isBig) {
        if (bytes.starts_with("\xEF\xBB\xBF")) bytes.remove_prefix(3);
        text.clear();
        return bytes.empty() ? PRO_TK_NO_ERROR : DecodeText(bytes, CodePage::Utf8, text);
    }
    bytes.remove_prefix(2);
    if (bytes.size() % 2 != 0) return PRO_TK_NOT_VALID;
    text.clear();
    for (std::size_t i = 0; i < bytes.size(); i += 2) {
        const auto first = static_cast<unsigned char>(bytes[i]);
        const auto second = static_cast<unsigned char>(bytes[i + 1]);
        text += static_cast<wchar_t>(isLittle ? first | second << 8 : first << 8 | second);
    }
    return PRO_TK_NO_ERROR;
}

std::string Utf8Text(std::wstring_view text) {
    if (text.empty()) return {};
    const int length = static_cast<int>(text.size());
    const int size = WideCharToMultiByte(CP_UTF8, 0, text.data(), length, nullptr, 0, nullptr, nullptr);
    std::string bytes(static_cast<std::size_t>(std::max(size, 0)), '\0');
    WideCharToMultiByte(CP_UTF8, 0, text.data(), length, bytes.data(), size, nullptr, nullptr);
    return bytes;
}

}  // namespace kv
