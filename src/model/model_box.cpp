#include "model/model_box.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>

#include <ProMdlUnits.h>
#include <ProSolid.h>

#include "base/status.h"

namespace kv {

// Units of lengths by the host's abbreviations.
struct BasicLength {
    const wchar_t* name;
    double millimetres;
};
static constexpr BasicLength kLengths[] = {
    {L"mm", 1},        {L"cm", 10},   {L"m", 1000},  {L"in", 25.4}, {L"inch", 25.4},  {L"ft", 304.8},
    {L"micron", 1e-3}, {L"um", 1e-3}, {L"nm", 1e-6}, {L"km", 1e6},  {L"mil", 0.0254}, {L"yd", 914.4},
};
// By how many sizes of the box the probe shifts it.
static constexpr double kProbeShift = 2;

struct Corners {
    Pro3dPnt points[2] = {};
};

static ProError CornersGet(ProMdl model, ProMatrix matrix, Corners& corners);
static ProError MatrixProbe(ProMdl model, BoxMatrix& matrix);
static void ToMatrix(const AxisDirections& axes, BoxMatrix form, ProMatrix matrix);

ProError ModelExtentsGet(ProMdl model, const AxisDirections& axes, BoxMatrix& matrix, Extents& extents) {
    if (axes == kOwnAxes) return ModelExtentsGet(model, extents);
    ProError status = matrix == BoxMatrix::Unknown ? MatrixProbe(model, matrix) : PRO_TK_NO_ERROR;
    if (Failed(status)) return status;
    ProMatrix turned = {};
    ToMatrix(axes, matrix, turned);
    Corners corners;
    status = CornersGet(model, turned, corners);
    for (std::size_t axis = 0; axis < extents.size(); ++axis)
        extents[axis] = std::abs(corners.points[1][axis] - corners.points[0][axis]);
    return status;
}

ProError ModelExtentsGet(ProMdl model, Extents& extents) {
    Corners corners;
    const ProError status = CornersGet(model, nullptr, corners);
    for (std::size_t axis = 0; axis < extents.size(); ++axis)
        extents[axis] = std::abs(corners.points[1][axis] - corners.points[0][axis]);
    return status;
}

double DiagonalOf(const Extents& extents) {
    return std::hypot(extents[0], extents[1], extents[2]);
}

ProError LengthUnitGet(ProMdl model, LengthUnit& unit) {
    ProUnitsystem system = {};
    ProUnititem length = {};
    ProError status = ProMdlPrincipalunitsystemGet(model, &system);
    if (!Failed(status)) status = ProUnitsystemUnitGet(&system, PRO_UNITTYPE_LENGTH, &length);
    if (Failed(status)) return status;
    unit.name = length.name;
    const auto isIt = [&unit](const BasicLength& known) { return unit.name == known.name; };
    const BasicLength* known = std::ranges::find_if(kLengths, isIt);
    if (known == std::end(kLengths)) return PRO_TK_NOT_VALID;
    unit.millimetres = known->millimetres;
    return PRO_TK_NO_ERROR;
}

static ProError CornersGet(ProMdl model, ProMatrix matrix, Corners& corners) {
    ProSolidOutlExclTypes datums[] = {PRO_OUTL_EXC_DATUM_PLANE, PRO_OUTL_EXC_DATUM_POINT,
                                      PRO_OUTL_EXC_DATUM_CSYS,  PRO_OUTL_EXC_DATUM_AXES,
                                      PRO_OUTL_EXC_FACETS,      PRO_OUTL_EXC_ALL_CRVS};
    Corners found;
    const ProError status = ProSolidOutlineCompute(static_cast<ProSolid>(model), matrix, datums,
                                                   static_cast<int>(std::size(datums)), found.points);
    if (Failed(status)) return status;
    for (const auto& point : found.points)
        for (const double coordinate : point)
            if (!std::isfinite(coordinate)) return PRO_TK_GENERAL_ERROR;
    corners = found;
    return status;
}

// Shifts the box along X and looks where it went.
static ProError MatrixProbe(ProMdl model, BoxMatrix& matrix) {
    Corners before;
    ProError status = CornersGet(model, nullptr, before);
    if (Failed(status)) return status;
    double size = 1;
    for (std::size_t axis = 0; axis < 3; ++axis)
        size = std::max(size, std::abs(before.points[1][axis] - before.points[0][axis]));
    ProMatrix shift = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {kProbeShift * size, 0, 0, 1}};
    Corners after;
    status = CornersGet(model, shift, after);
    if (Failed(status)) return status;
    const double moved =
        std::min(after.points[0][0], after.points[1][0]) - std::min(before.points[0][0], before.points[1][0]);
    if (std::abs(moved) < size) return PRO_TK_GENERAL_ERROR;
    matrix = moved > 0 ? BoxMatrix::IntoSystem : BoxMatrix::PlaceOfSystem;
    return PRO_TK_NO_ERROR;
}

// Points are rows: on the way into the system its axes are columns, as its place they are rows.
static void ToMatrix(const AxisDirections& axes, BoxMatrix form, ProMatrix matrix) {
    for (std::size_t axis = 0; axis < axes.size(); ++axis)
        for (std::size_t i = 0; i < axes[axis].size(); ++i)
            (form == BoxMatrix::IntoSystem ? matrix[i][axis] : matrix[axis][i]) = axes[axis][i];
    matrix[3][3] = 1;
}

}  // namespace kv
