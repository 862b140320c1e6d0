// Texts of dimensions: what a change makes of them.

#include "drawing/dimension_text.h"

#include <algorithm>
#include <array>
#include <cstddef>

namespace kv {

static constexpr std::wstring_view kValueSign = L"@D";
static constexpr std::wstring_view kShownValue = L"{尺寸}";
// Each of them would show or replace the value; the host may not mind their letter case.
static constexpr std::array<std::wstring_view, 6> kHostSigns = {L"@D", L"@d", L"@O", L"@o", L"@S", L"@s"};

static bool HasHostSign(std::wstring_view text);
static void ReplaceAll(std::wstring& text, std::wstring_view from, std::wstring_view to);
static std::size_t ValueCount(const DimensionLines& lines);
static void KeepFirstValue(DimensionLines& lines);
static ProError LengthCheck(const DimensionLines& lines);

ProError DimensionTextMake(const DimensionLines& old, const DimensionTextChange& change,
                           DimensionLines& made) {
    if (HasHostSign(change.prefix) || HasHostSign(change.suffix) ||
        std::ranges::any_of(change.below, HasHostSign))
        return PRO_TK_NOT_VALID;
    made = change.replaces ? PlainDimensionText() : old;
    KeepFirstValue(made);
    const auto value = std::ranges::find_if(
        made, [](const std::wstring& line) { return line.find(kValueSign) != std::wstring::npos; });
    if (value == made.end()) return PRO_TK_NOT_VALID;
    *value = change.prefix + *value + change.suffix;
    made.insert(made.end(), change.below.begin(), change.below.end());
    return LengthCheck(made);
}

DimensionLines PlainDimensionText() {
    return {std::wstring(kValueSign)};
}

std::wstring DimensionTextShown(const DimensionLines& lines, std::wstring_view separator) {
    std::wstring text;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        if (i > 0) text += separator;
        text += lines[i];
    }
    ReplaceAll(text, kValueSign, kShownValue);
    return text;
}

DimensionLines TypedLines(std::wstring_view text) {
    DimensionLines lines;
    while (!text.empty()) {
        const std::size_t end = std::min(text.find(L'\n'), text.size());
        std::wstring line(text.substr(0, end));
        std::erase(line, L'\r');
        lines.push_back(std::move(line));
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    while (!lines.empty() && lines.back().empty()) lines.pop_back();
    return lines;
}

ProError DimensionTextTyped(std::wstring_view text, bool isHidden, DimensionLines& made) {
    made = TypedLines(text);
    if (ValueCount(made) > 0) return PRO_TK_NOT_VALID;
    for (std::wstring& line : made) ReplaceAll(line, kShownValue, kValueSign);
    std::size_t values = ValueCount(made);
    if (values == 0 && isHidden) {
        if (made.empty()) made.emplace_back();
        made.front().insert(0, kValueSign);
        values = 1;
    }
    return values == 1 ? LengthCheck(made) : PRO_TK_NOT_VALID;
}

static bool HasHostSign(std::wstring_view text) {
    return std::ranges::any_of(
        kHostSigns, [text](std::wstring_view sign) { return text.find(sign) != std::wstring_view::npos; });
}

static void ReplaceAll(std::wstring& text, std::wstring_view from, std::wstring_view to) {
    for (std::size_t at = text.find(from); at != std::wstring::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
}

static std::size_t ValueCount(const DimensionLines& lines) {
    std::size_t count = 0;
    for (const std::wstring& line : lines)
        for (std::size_t at = line.find(kValueSign); at != std::wstring::npos;
             at = line.find(kValueSign, at + kValueSign.size()))
            ++count;
    return count;
}

static void KeepFirstValue(DimensionLines& lines) {
    bool isFirst = true;
    for (std::wstring& line : lines) {
        std::size_t at = line.find(kValueSign);
        if (at != std::wstring::npos && isFirst) {
            isFirst = false;
            at = line.find(kValueSign, at + kValueSign.size());
        }
        for (; at != std::wstring::npos; at = line.find(kValueSign, at)) line.erase(at, kValueSign.size());
    }
}

static ProError LengthCheck(const DimensionLines& lines) {
    const bool fits = std::ranges::all_of(
        lines, [](const std::wstring& line) { return line.size() <= kLongestDimensionLine; });
    return fits ? PRO_TK_NO_ERROR : PRO_TK_LINE_TOO_LONG;
}

}  // namespace kv
