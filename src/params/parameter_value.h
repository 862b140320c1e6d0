// Parameter values from what the user typed. Plain rules, without a host call.
//
// Numbers are read with "." as the decimal point whatever the locale of host and machine: a value typed on
// one machine means the same on every other.
#pragma once

#include <string>
#include <string_view>

#include <ProParamval.h>

namespace kv {

// The type that a label of the type menu stands for; PRO_PARAM_NOT_SET for any other text.
ProParamvalueType ParameterTypeFromLabel(std::wstring_view label);

// Whether a text may stand for a Boolean: "YES" in any letter case, "NO" in capitals, or nothing.
bool IsBooleanText(std::wstring_view text);

// The decimal number at the beginning of a text, after blanks and a sign; 0 when there is none. A number out
// of range gives the nearest end of the range.
int IntegerFromText(const std::wstring& text);

// The same for a real number with fraction and exponent. PRO_TK_NOT_VALID for one that is out of range: an
// infinite value has no place in a model.
[[nodiscard]] ProError RealFromText(std::wstring_view text, double& number);

// PRO_TK_LINE_TOO_LONG for a text of more than the host's 80 characters.
[[nodiscard]] ProError StringValue(std::wstring_view text, ProParamvalue& value);

// The value of a type that a text stands for. Errors: those of the type's conversion; PRO_TK_BAD_INPUTS for
// a type that the type menu does not have and for a text that is no Boolean.
[[nodiscard]] ProError ParameterValueFromText(ProParamvalueType type, const std::wstring& text,
                                              ProParamvalue& value);

}  // namespace kv
