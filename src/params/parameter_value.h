// Parameter values from what the user typed. Plain rules, without a host call.
#pragma once

#include <string>
#include <string_view>

#include <ProParamval.h>

namespace kv {

// The type that a label of the type menu stands for; PRO_PARAM_NOT_SET for any other text.
ProParamvalueType ParameterTypeFromLabel(std::wstring_view label);

// Whether a text may stand for a Boolean: "YES" in any letter case, "NO" in capitals, or nothing.
bool IsBooleanText(std::wstring_view text);

// PRO_TK_LINE_TOO_LONG for a text of more than the host's 80 characters.
[[nodiscard]] ProError StringValue(std::wstring_view text, ProParamvalue& value);

// The value of a type that a text stands for. Errors: those of the type's conversion; PRO_TK_BAD_INPUTS for
// a type that the type menu does not have and for a text that is no Boolean.
[[nodiscard]] ProError ParameterValueFromText(ProParamvalueType type, const std::wstring& text,
                                              ProParamvalue& value);

// What a value came out as, for people: a real number with all its digits and a point, "YES" or "NO" for a
// Boolean.
std::wstring ParameterValueText(const ProParamvalue& value);

}  // namespace kv
