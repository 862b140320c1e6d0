// Texts of dimensions: what a change makes of them. Plain rules, without a host call.
//
// A text is a few lines; in one of them the host's sign for the value stands once.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include <ProToolkit.h>

namespace kv {

using DimensionLines = std::vector<std::wstring>;

// The longest line that the host takes.
inline constexpr std::size_t kLongestDimensionLine = PRO_LINE_SIZE - 1;

struct DimensionTextChange {
    std::wstring prefix = {};  // in front of the line with the value
    std::wstring suffix = {};  // at its end
    DimensionLines below = {};
    bool replaces = false;  // the present text goes but for the value; else all of this is added to it
};

// The text that a change makes. Without any part of a text, a change that replaces leaves the value alone.
//
// Errors  PRO_TK_NOT_VALID for a change that brings a sign of the host's of its own, or adds to a text
//         without a value; PRO_TK_LINE_TOO_LONG
[[nodiscard]] ProError DimensionTextMake(const DimensionLines& old, const DimensionTextChange& change,
                                         DimensionLines& made);

// The text that shows the value alone.
DimensionLines PlainDimensionText();

// The text for the user, who sees the value as "{尺寸}", its lines divided by `separator`.
std::wstring DimensionTextShown(const DimensionLines& lines, std::wstring_view separator);

// The lines that the user typed, without empty ones at the end.
DimensionLines TypedLines(std::wstring_view text);

// The text that the user typed.
//
// isHidden  the value does not show: a text without it is taken, and gets it where it is not seen
// Errors    PRO_TK_NOT_VALID unless the value stands there once; PRO_TK_LINE_TOO_LONG
[[nodiscard]] ProError DimensionTextTyped(std::wstring_view text, bool isHidden, DimensionLines& made);

}  // namespace kv
