// Colours for parts: the table that they come from, and which part gets which. Plain rules, without a host
// call.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kv {

// Red, green and blue from 0 to 255.
using Colour = std::array<int, 3>;

// A colour from "R,G,B", blanks aside. Nothing for any other text.
std::optional<Colour> ColourFromText(std::wstring_view text);

// A number from 0 to below `count`.
using RandomBelow = std::function<std::size_t(std::size_t count)>;

// A colour of the table for each place that has none yet, by its place in the table.
//
// taken    for each place the colour that stays there, by its place in the table; `table` for one that is not
//          in it; nothing for a place that gets a colour
// table    how many colours there are, not 0
// Neighbours differ unless there are too few colours; of those that may be the least used ones are drawn
// from.
std::vector<std::size_t> ColoursDrawn(std::span<const std::optional<std::size_t>> taken, std::size_t table,
                                      const RandomBelow& random);

}  // namespace kv
