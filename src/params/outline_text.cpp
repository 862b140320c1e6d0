// Outline dimensions as text.

#include "params/outline_text.h"

#include <algorithm>
#include <charconv>
#include <iterator>
#include <limits>

namespace kv {

static constexpr wchar_t kTimes[] = L"×";
static constexpr int kMostDecimals = 15;
static constexpr int kSignificantDigits = 6;
// The longest fixed-point text: sign, all digits before the point, the point, the decimals.
static constexpr std::size_t kNumberSize = std::numeric_limits<double>::max_exponent10 + kMostDecimals + 8;

using AxisOrder = std::array<std::size_t, 3>;

// The first order that runs from the largest to the smallest extent decides; none of them leaves the last
// one.
static constexpr AxisOrder kOrders[] = {{0, 1, 2}, {0, 2, 1}, {1, 0, 2}, {2, 0, 1}, {1, 2, 0}};
static constexpr AxisOrder kLastOrder = {2, 1, 0};

static AxisOrder LargestFirst(const std::array<double, 3>& extents);
static std::wstring ExtentText(double extent, int decimals);

std::wstring OutlineText(const std::array<double, 3>& extents, int decimals, bool largestFirst) {
    const AxisOrder order = largestFirst ? LargestFirst(extents) : AxisOrder{0, 1, 2};
    std::wstring text = ExtentText(extents[order[0]], decimals);
    text += kTimes + ExtentText(extents[order[1]], decimals);
    text += kTimes + ExtentText(extents[order[2]], decimals);
    return text;
}

static AxisOrder LargestFirst(const std::array<double, 3>& extents) {
    const auto falls = [&extents](const AxisOrder& order) {
        return extents[order[0]] >= extents[order[1]] && extents[order[1]] >= extents[order[2]];
    };
    const AxisOrder* order = std::ranges::find_if(kOrders, falls);
    return order == std::end(kOrders) ? kLastOrder : *order;
}

// Prints with the decimals, reads the number back and prints that with six digits, as "%.Nf" and "%g" would.
// The conversions used know no locale: the point is "." on every machine.
static std::wstring ExtentText(double extent, int decimals) {
    char text[kNumberSize];
    const auto fixed = std::to_chars(text, std::end(text), extent, std::chars_format::fixed,
                                     std::clamp(decimals, 0, kMostDecimals));
    double rounded = 0;
    std::from_chars(text, fixed.ptr, rounded);
    const auto general =
        std::to_chars(text, std::end(text), rounded, std::chars_format::general, kSignificantDigits);
    return {text, general.ptr};
}

}  // namespace kv
