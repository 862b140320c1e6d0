// The box around a model, and the unit of its lengths.
#pragma once

#include <array>
#include <string>

#include <ProMdl.h>

namespace kv {

// Lengths along three axes.
using Extents = std::array<double, 3>;

// Directions of three axes in the coordinates of a model, each of length 1.
using AxisDirections = std::array<std::array<double, 3>, 3>;
inline constexpr AxisDirections kOwnAxes = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};

// How the host reads the matrix of a box: as the way from the model into the system, or as the place of the
// system in the model.
enum class BoxMatrix { Unknown, IntoSystem, PlaceOfSystem };

// The box around a part or an assembly without datums and curves, along these axes, in the model's length
// unit.
//
// matrix  what the host was found to do; found out by two boxes more when it matters and is not known yet
// Errors  those of ProSolidOutlineCompute, PRO_TK_GENERAL_ERROR for a box that is none
[[nodiscard]] ProError ModelExtentsGet(ProMdl model, const AxisDirections& axes, BoxMatrix& matrix,
                                       Extents& extents);
// The same along the model's own axes.
[[nodiscard]] ProError ModelExtentsGet(ProMdl model, Extents& extents);

// The length of a box from corner to corner.
double DiagonalOf(const Extents& extents);

struct LengthUnit {
    std::wstring name;  // such as "mm"
    double millimetres = 1;
};

// The unit of a model's lengths. Errors: those of ProMdlPrincipalunitsystemGet and ProUnitsystemUnitGet;
// PRO_TK_NOT_VALID for a unit of unknown length, whose name is set.
[[nodiscard]] ProError LengthUnitGet(ProMdl model, LengthUnit& unit);

}  // namespace kv
