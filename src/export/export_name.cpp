// The name of an exported file.

#include "export/export_name.h"

#include <algorithm>

#include "base/file_name.h"
#include "base/text.h"

namespace kv {

static constexpr wchar_t kNoSeparator[] = L"NULL";

NameRule NameRuleFromTexts(std::wstring_view tokens, std::wstring_view separator) {
    NameRule rule = {SplitAtCommas(WithoutBlanks(tokens)), std::wstring(separator)};
    if (separator.empty()) rule.separator = L" ";
    if (separator == kNoSeparator) rule.separator.clear();
    return rule;
}

std::wstring NameCompose(const NameRule& rule, const NamePieces& pieces, const std::wstring& fallback) {
    std::wstring name;
    for (const std::wstring& token : rule.tokens) {
        const auto found = pieces.find(token);
        if (found == pieces.end() || found->second.empty()) continue;
        if (!name.empty()) name += rule.separator;
        name += found->second;
    }
    const bool blank = name.find_first_not_of(L' ') == std::wstring::npos;
    return FileNameText(blank ? fallback : name);
}

}  // namespace kv
