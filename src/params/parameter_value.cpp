// Parameter values from what the user typed.

#include "params/parameter_value.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cwchar>
#include <limits>

#include "base/status.h"
#include "base/text.h"

namespace kv {

static constexpr wchar_t kYes[] = L"YES";
static constexpr wchar_t kNo[] = L"NO";
// What the standard conversions skip in front of a number.
static constexpr wchar_t kSpaces[] = L" \t\n\v\f\r";
static constexpr wchar_t kLastAscii = 0x7F;

struct TypeLabel {
    std::wstring_view label;
    ProParamvalueType type;
};

static constexpr TypeLabel kTypeLabels[] = {
    {L"整数", PRO_PARAM_INTEGER},
    {L"实数", PRO_PARAM_DOUBLE},
    {L"字符串", PRO_PARAM_STRING},
    {L"是/否", PRO_PARAM_BOOLEAN},
};

static bool IsYes(std::wstring_view text);
static std::string NumberStart(std::wstring_view text);

ProParamvalueType ParameterTypeFromLabel(std::wstring_view label) {
    const TypeLabel* found = std::ranges::find(kTypeLabels, label, &TypeLabel::label);
    return found == std::end(kTypeLabels) ? PRO_PARAM_NOT_SET : found->type;
}

bool IsBooleanText(std::wstring_view text) {
    return text.empty() || text == kNo || IsYes(text);
}

int IntegerFromText(const std::wstring& text) {
    constexpr long long kLowest = std::numeric_limits<int>::min();
    constexpr long long kHighest = std::numeric_limits<int>::max();
    return static_cast<int>(std::clamp(std::wcstoll(text.c_str(), nullptr, 10), kLowest, kHighest));
}

ProError RealFromText(std::wstring_view text, double& number) {
    number = 0;
    const std::string digits = NumberStart(text);
    if (digits.empty()) return PRO_TK_NO_ERROR;
    // Unlike the standard conversion this one knows no locale.
    const auto [end, error] = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    if (error == std::errc() && std::isfinite(number)) return PRO_TK_NO_ERROR;
    number = 0;
    return error == std::errc::invalid_argument ? PRO_TK_NO_ERROR : PRO_TK_NOT_VALID;
}

ProError StringValue(std::wstring_view text, ProParamvalue& value) {
    value.type = PRO_PARAM_STRING;
    return CopyText(text, value.value.s_val);
}

ProError ParameterValueFromText(ProParamvalueType type, const std::wstring& text, ProParamvalue& value) {
    value.type = type;
    switch (type) {
        case PRO_PARAM_INTEGER:
            value.value.i_val = IntegerFromText(text);
            return PRO_TK_NO_ERROR;
        case PRO_PARAM_DOUBLE:
            return RealFromText(text, value.value.d_val);
        case PRO_PARAM_STRING:
            return StringValue(text, value);
        case PRO_PARAM_BOOLEAN:
            value.value.l_val = IsYes(text) ? 1 : 0;
            return IsBooleanText(text) ? PRO_TK_NO_ERROR : PRO_TK_BAD_INPUTS;
        default:
            return PRO_TK_BAD_INPUTS;
    }
}

static bool IsYes(std::wstring_view text) {
    return UpperCase(text) == kYes;
}

// The part of a text that a real number can be read from, without blanks and "+"; empty when the text begins
// with anything but a number. Words like "inf" count as no number.
static std::string NumberStart(std::wstring_view text) {
    text.remove_prefix(std::min(text.find_first_not_of(kSpaces), text.size()));
    std::string number;
    for (const wchar_t character : text) {
        if (character > kLastAscii) break;
        number.push_back(static_cast<char>(character));
    }
    if (number.starts_with('+')) number.erase(0, 1);
    const bool negative = number.starts_with('-') && text.front() == L'-';
    const std::size_t first = negative ? 1 : 0;
    const bool isNumber = number.find_first_of("0123456789.", first) == first;
    return isNumber ? number : std::string();
}

}  // namespace kv
