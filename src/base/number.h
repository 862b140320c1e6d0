// Numbers from what a user typed. Plain rules, without a host call.
//
// A number is read from the beginning of a text, after blanks and a sign, with "." as the decimal point
// whatever the locale of host and machine: a text typed on one machine means the same on every other.
#pragma once

#include <string_view>

#include <ProToolkit.h>

namespace kv {

// A decimal integer; 0 when the text begins with none. PRO_TK_NOT_VALID for one that is out of range.
[[nodiscard]] ProError IntegerFromText(std::wstring_view text, int& number);

// A real number with fraction and exponent. The same answers; also PRO_TK_NOT_VALID for an infinite value.
[[nodiscard]] ProError RealFromText(std::wstring_view text, double& number);

}  // namespace kv
