// The name of an exported file, composed from what the user lists. Plain rules, without a host call.
#pragma once

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace kv {

// Tokens with a meaning of their own; any other one names a parameter of the drawing.
inline constexpr wchar_t kSheetSizeToken[] = L"sheetsize";
inline constexpr wchar_t kDrawingNameToken[] = L"图纸名称";

struct NameRule {
    std::vector<std::wstring> tokens;
    std::wstring separator;
};

// The rule of the dialog's two texts; tokens stand between commas of either width, blanks do not count. An
// empty separator stands for a blank, "NULL" for none.
NameRule NameRuleFromTexts(std::wstring_view tokens, std::wstring_view separator);

// What tokens stand for. A token that is missing stands for nothing.
using NamePieces = std::unordered_map<std::wstring, std::wstring>;

// The file name without extension. Pieces that are empty leave no separator behind; characters that no file
// name can hold become "_". `fallback` is used when nothing but blanks would be left.
std::wstring NameCompose(const NameRule& rule, const NamePieces& pieces, const std::wstring& fallback);

}  // namespace kv
