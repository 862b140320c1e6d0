// The size of the stock that a part is cut from. Plain rules, without a host call.
#pragma once

#include <array>
#include <string>

namespace kv {

// Length, width and height in millimetres, the largest first.
using StockExtents = std::array<double, 3>;

StockExtents LargestFirst(StockExtents extents);

struct StockRule {
    StockExtents allowance = {};  // for length, width and height
    double step = 0;              // that each is rounded up to; 0: not rounded
};

// A millionth of a step too much is rounding of the measured size and does not count.
StockExtents StockSize(const StockExtents& size, const StockRule& rule);

// With up to three decimals, those at the end that are 0 left out, and a point on every machine: "12.5".
std::wstring MillimetreText(double millimetres);

// "100×50.5×20"
std::wstring StockText(const StockExtents& stock);

}  // namespace kv
