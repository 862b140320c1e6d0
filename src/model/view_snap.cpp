#include "model/view_snap.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include "base/status.h"

namespace kv {

static constexpr std::size_t kAxes = 3;
// By how much a later column's entry has to be larger.
static constexpr double kColumnTolerance = 1e-8;
// Up to which difference two rows count as equal where they compete for a column.
static constexpr double kRowTolerance = 1e-5;
// Of what one row is long, the rounding that a host's matrix may carry.
static constexpr double kRounding = 1e-9;

using Rotation = std::array<std::array<double, kAxes>, kAxes>;
using Columns = std::array<std::size_t, kAxes>;

static double ScaleOf(const ViewMatrix& view);
static std::optional<Rotation> RotationOf(const ViewMatrix& view);
static std::size_t LargestColumn(const std::array<double, kAxes>& row);
static bool SettleClash(const Rotation& rotation, Columns& columns);

std::optional<ViewMatrix> SnappedView(const ViewMatrix& view) {
    const std::optional<Rotation> rotation = RotationOf(view);
    if (!rotation) return std::nullopt;
    Columns columns = {};
    std::ranges::transform(*rotation, columns.begin(), LargestColumn);
    if (!SettleClash(*rotation, columns)) return std::nullopt;

    const double scale = ScaleOf(view);
    ViewMatrix snapped = view;
    for (std::size_t row = 0; row < kAxes; ++row) {
        std::fill_n(snapped[row].begin(), kAxes, 0.0);
        snapped[row][columns[row]] = (*rotation)[row][columns[row]] > 0 ? scale : -scale;
    }
    return snapped;
}

ViewMatrix NormalisedView(const ViewMatrix& view) {
    ViewMatrix normalised = {};
    for (std::size_t row = 0; row < kAxes; ++row) {
        const double length = std::hypot(view[row][0], view[row][1], view[row][2]);
        for (std::size_t column = 0; column < kAxes; ++column)
            normalised[row][column] = view[row][column] / length;
    }
    normalised[kAxes][kAxes] = 1;
    return normalised;
}

bool IsSameView(const ViewMatrix& one, const ViewMatrix& other) {
    const double tolerance = kRounding * ScaleOf(one);
    for (std::size_t row = 0; row < kAxes; ++row)
        for (std::size_t column = 0; column < kAxes; ++column)
            if (!(std::abs(one[row][column] - other[row][column]) <= tolerance)) return false;
    return true;
}

ProError CurrentViewGet(ViewMatrix& view, ProMdl model) {
    ProMatrix matrix = {};
    const ProError status = ProViewMatrixGet(model, nullptr, matrix);
    if (Failed(status)) return status;
    for (std::size_t row = 0; row < view.size(); ++row)
        std::copy_n(matrix[row], view[row].size(), view[row].begin());
    return status;
}

ProError CurrentViewSet(const ViewMatrix& view, ProMdl model) {
    ProMatrix matrix = {};
    for (std::size_t row = 0; row < view.size(); ++row) std::ranges::copy(view[row], matrix[row]);
    return ProViewMatrixSet(model, nullptr, matrix);
}

ProError CurrentViewReturn(const ViewMatrix& view, ProMdl model) {
    const ProError status = CurrentViewSet(view, model);
    return Failed(status) ? CurrentViewSet(NormalisedView(view), model) : status;
}

// The length of the first row of the rotation.
static double ScaleOf(const ViewMatrix& view) {
    return std::hypot(view[0][0], view[0][1], view[0][2]);
}

static std::optional<Rotation> RotationOf(const ViewMatrix& view) {
    const double scale = ScaleOf(view);
    Rotation rotation = {};
    for (std::size_t row = 0; row < kAxes; ++row) {
        const double length = std::hypot(view[row][0], view[row][1], view[row][2]);
        if (!std::isfinite(length) || length == 0) return std::nullopt;
        for (std::size_t column = 0; column < kAxes; ++column)
            rotation[row][column] = view[row][column] / scale;
    }
    return rotation;
}

static std::size_t LargestColumn(const std::array<double, kAxes>& row) {
    std::size_t largest = 0;
    for (std::size_t column = 1; column < kAxes; ++column)
        if (std::abs(row[column]) > std::abs(row[largest]) + kColumnTolerance) largest = column;
    return largest;
}

// Makes the columns different. False when all three rows want one.
static bool SettleClash(const Rotation& rotation, Columns& columns) {
    if (columns[0] == columns[1] && columns[1] == columns[2]) return false;
    for (std::size_t first = 0; first < kAxes; ++first) {
        for (std::size_t second = first + 1; second < kAxes; ++second) {
            const std::size_t wanted = columns[first];
            if (wanted != columns[second]) continue;
            const std::size_t third = columns[kAxes - first - second];
            const bool secondIsLarger =
                std::abs(rotation[second][wanted]) > std::abs(rotation[first][wanted]) + kRowTolerance;
            columns[secondIsLarger ? first : second] = kAxes - wanted - third;
            return true;
        }
    }
    return true;
}

}  // namespace kv
