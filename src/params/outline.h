// The outline parameter of a model.
#pragma once

#include <array>
#include <string>
#include <unordered_map>
#include <vector>

#include <ProMdl.h>

namespace kv {

using Point = std::array<double, 3>;

// The corners of a part's surface boxes, in its own coordinates and length unit.
struct PartCorners {
    ProError status = PRO_TK_NO_ERROR;   // of reading them
    ProError refused = PRO_TK_NO_ERROR;  // of a surface that could not be read
    std::vector<Point> points;
};

// What one press of the button writes. Each part's surfaces are read once for all models.
struct OutlineTask {
    std::wstring parameter;
    int decimals = 0;
    bool largestFirst = false;
    std::unordered_map<ProMdl, PartCorners> parts;
};

// Writes the outline dimensions of a part or an assembly into its string parameter.
//
// A model without a surface loses the parameter. One whose surfaces cannot all be read, such as a part of
// several bodies, keeps what it has, and the answer is the host's status. The extents of a turned component
// are approximate: of each surface box two corners are taken into the assembly, not all eight.
//
// Errors     the first of the host's; PRO_TK_LINE_TOO_LONG for a parameter name that does not fit
[[nodiscard]] ProError OutlineWrite(ProMdl model, OutlineTask& task);

}  // namespace kv
