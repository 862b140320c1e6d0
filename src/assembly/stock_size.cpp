#include "assembly/stock_size.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <functional>
#include <iterator>
#include <limits>
#include <string_view>

#include "base/text.h"

namespace kv {

static constexpr double kStepRounding = 1e-6;
// Sums of steps are exact to this part of a millimetre.
static constexpr double kPartsOfMillimetre = 1e6;
static constexpr int kDecimals = 3;
static constexpr std::size_t kLongestNumber = std::numeric_limits<double>::max_exponent10 + kDecimals + 4;

StockExtents LargestFirst(StockExtents extents) {
    std::ranges::sort(extents, std::greater<>());
    return extents;
}

StockExtents StockSize(const StockExtents& size, const StockRule& rule) {
    StockExtents stock = {};
    for (std::size_t i = 0; i < stock.size(); ++i) {
        const double wanted = size[i] + rule.allowance[i];
        const double rounded =
            rule.step > 0 ? std::ceil(wanted / rule.step - kStepRounding) * rule.step : wanted;
        stock[i] = std::round(rounded * kPartsOfMillimetre) / kPartsOfMillimetre;
    }
    return stock;
}

std::wstring MillimetreText(double millimetres) {
    char text[kLongestNumber];
    const auto written =
        std::to_chars(text, std::end(text), millimetres, std::chars_format::fixed, kDecimals);
    std::string_view number(text, static_cast<std::size_t>(written.ptr - text));
    number = number.substr(0, number.find_last_not_of('0') + 1);
    if (number.ends_with('.')) number.remove_suffix(1);
    return WideName(number);
}

std::wstring StockText(const StockExtents& stock) {
    return MillimetreText(stock[0]) + L"×" + MillimetreText(stock[1]) + L"×" + MillimetreText(stock[2]);
}

}  // namespace kv
