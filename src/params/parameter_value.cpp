// Parameter values from what the user typed.

#include "params/parameter_value.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>

#include "base/number.h"
#include "base/text.h"

namespace kv {

static constexpr wchar_t kYes[] = L"YES";
static constexpr wchar_t kNo[] = L"NO";

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

ProParamvalueType ParameterTypeFromLabel(std::wstring_view label) {
    const TypeLabel* found = std::ranges::find(kTypeLabels, label, &TypeLabel::label);
    return found == std::end(kTypeLabels) ? PRO_PARAM_NOT_SET : found->type;
}

bool IsBooleanText(std::wstring_view text) {
    return text.empty() || text == kNo || IsYes(text);
}

ProError StringValue(std::wstring_view text, ProParamvalue& value) {
    value.type = PRO_PARAM_STRING;
    return CopyText(text, value.value.s_val);
}

ProError ParameterValueFromText(ProParamvalueType type, const std::wstring& text, ProParamvalue& value) {
    value.type = type;
    switch (type) {
        case PRO_PARAM_INTEGER:
            return IntegerFromText(text, value.value.i_val);
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

std::wstring ParameterValueText(const ProParamvalue& value) {
    if (value.type == PRO_PARAM_BOOLEAN) return value.value.l_val == 1 ? kYes : kNo;
    if (value.type == PRO_PARAM_INTEGER) return std::to_wstring(value.value.i_val);
    if (value.type == PRO_PARAM_STRING) return value.value.s_val;
    std::array<char, 64> text = {};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value.value.d_val).ptr;
    return {text.data(), end};
}

}  // namespace kv
