// The name of an exported file.

#include "drawing/export_name.h"

#include <algorithm>
#include <charconv>

#include "base/text.h"

namespace kv {

static constexpr wchar_t kWideComma = L'，';
static constexpr wchar_t kNoSeparator[] = L"NULL";
static constexpr wchar_t kForbidden[] = L"<>:\"/\\|?*";
static constexpr wchar_t kFirstPrintable = L' ';
static constexpr wchar_t kYes[] = L"是";
static constexpr wchar_t kNo[] = L"否";

static std::wstring ThreeDecimals(double number);

std::vector<std::wstring> NameList(std::wstring_view text) {
    std::wstring list = WithoutBlanks(text);
    std::replace(list.begin(), list.end(), kWideComma, L',');
    return SplitText(list, L',');
}

NameRule NameRuleFromTexts(std::wstring_view tokens, std::wstring_view separator) {
    NameRule rule = {NameList(tokens), std::wstring(separator)};
    if (separator.empty()) rule.separator = L" ";
    if (separator == kNoSeparator) rule.separator.clear();
    return rule;
}

std::wstring ComposeName(const NameRule& rule, const PieceLookup& pieceOf, const std::wstring& fallback) {
    std::wstring name;
    for (const std::wstring& token : rule.tokens) {
        const std::wstring piece = pieceOf(token);
        if (piece.empty()) continue;
        if (!name.empty()) name += rule.separator;
        name += piece;
    }
    const bool blank = name.find_first_not_of(L' ') == std::wstring::npos;
    return FileNameText(blank ? fallback : name);
}

std::wstring FileNameText(std::wstring text) {
    const auto isForbidden = [](wchar_t character) {
        return character < kFirstPrintable ||
               std::wstring_view(kForbidden).find(character) != std::wstring_view::npos;
    };
    std::replace_if(text.begin(), text.end(), isForbidden, L'_');
    return text;
}

std::wstring PieceFromValue(const ProParamvalue& value) {
    switch (value.type) {
        case PRO_PARAM_STRING:
            return value.value.s_val;
        case PRO_PARAM_INTEGER:
            return std::to_wstring(value.value.i_val);
        case PRO_PARAM_DOUBLE:
            return ThreeDecimals(value.value.d_val);
        case PRO_PARAM_BOOLEAN:
            return value.value.l_val != 0 ? kYes : kNo;
        default:
            return {};
    }
}

// Unlike the printf family this conversion knows no locale. The longest double has 309 digits before the
// point.
static std::wstring ThreeDecimals(double number) {
    char digits[320] = {};
    const auto [end, error] =
        std::to_chars(std::begin(digits), std::end(digits), number, std::chars_format::fixed, 3);
    return error == std::errc() ? std::wstring(std::begin(digits), end) : std::wstring();
}

}  // namespace kv
