// Outline dimensions as text. Plain rules, without a host call.
#pragma once

#include <array>
#include <string>

namespace kv {

// Extents along X, Y and Z in the model's length unit, such as {100, 50.5, 20}, joined by multiplication
// signs: "100×50.5×20".
//
// decimals      digits after the point that each extent is rounded to, taken as 0 to 15. Trailing zeros are
//               dropped and six significant digits are kept: 1234567.8 gives 1.23457e+06.
// largestFirst  order by size instead of by axis
std::wstring OutlineText(const std::array<double, 3>& extents, int decimals, bool largestFirst);

}  // namespace kv
