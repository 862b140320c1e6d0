// The shape of a text, for files that shall show it on machines without the font.

#pragma once

#include <string_view>
#include <vector>

namespace sim {

struct OutlinePoint {
    enum class Kind { kMove, kLine, kCurve };  // three points of the last kind make one curve
    Kind kind;
    double x, y;  // the type size is 1, the text starts at 0, 0 on its base line
    bool closes;  // the figure ends here
};

// In a font of the machine that has Chinese letters; empty when that cannot be had.
std::vector<OutlinePoint> TextOutline(std::wstring_view text);

}  // namespace sim
