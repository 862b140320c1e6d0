#include "display/standard_views.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>

namespace kv {

// Of the largest extent, the rounding that a measured one may carry.
static constexpr double kExtentRounding = 1e-9;

using Vector = std::array<double, 3>;

// Where the viewer stands and what is up, in the directions of the main view.
struct Viewpoint {
    const wchar_t* name;
    Vector viewer;
    Vector up;
};

static constexpr Vector kUp = {0, 1, 0};
static constexpr Viewpoint kViewpoints[] = {
    {L"KV_FRONT", {0, 0, 1}, kUp}, {L"KV_BACK", {0, 0, -1}, kUp},      {L"KV_LEFT", {-1, 0, 0}, kUp},
    {L"KV_RIGHT", {1, 0, 0}, kUp}, {L"KV_TOP", {0, 1, 0}, {0, 0, -1}}, {L"KV_BOTTOM", {0, -1, 0}, {0, 0, 1}},
    {L"KV_ISO1", {1, 1, 1}, kUp},  {L"KV_ISO2", {-1, 1, 1}, kUp},      {L"KV_ISO3", {-1, 1, -1}, kUp},
    {L"KV_ISO4", {1, 1, -1}, kUp}, {L"KV_ISO5", {1, -1, 1}, kUp},      {L"KV_ISO6", {-1, -1, 1}, kUp},
};

static ViewMatrix ViewFrom(const Viewpoint& point);
static Vector Across(const Vector& one, const Vector& other);
static Vector OfLengthOne(const Vector& vector);
static ViewMatrix AfterMain(const ViewMatrix& main, const ViewMatrix& view);

std::array<StandardView, 12> StandardViews(const ViewMatrix& main) {
    std::array<StandardView, 12> views = {};
    std::ranges::transform(kViewpoints, views.begin(), [&main](const Viewpoint& point) {
        return StandardView{point.name, AfterMain(main, ViewFrom(point))};
    });
    return views;
}

ViewMatrix MainViewOf(const std::array<double, 3>& extents) {
    const double tolerance = kExtentRounding * *std::ranges::max_element(extents);
    // The largest face is across the smallest extent.
    std::size_t viewer = 0;
    for (std::size_t axis = 1; axis < extents.size(); ++axis)
        if (extents[axis] < extents[viewer] - tolerance) viewer = axis;
    const std::size_t first = viewer == 0 ? 1 : 0;
    const std::size_t second = 3 - viewer - first;
    const std::size_t level = extents[second] > extents[first] + tolerance ? second : first;
    const std::size_t up = 3 - viewer - level;
    ViewMatrix view = {};
    // Level, up and viewer in this order turn like X, Y and Z, or the other way round.
    view[level][0] = (level + 1) % 3 == up ? 1 : -1;
    view[up][1] = 1;
    view[viewer][2] = 1;
    view[3][3] = 1;
    return view;
}

// The screen's axes in the directions of the main view are the columns.
static ViewMatrix ViewFrom(const Viewpoint& point) {
    const Vector out = OfLengthOne(point.viewer);
    const Vector right = OfLengthOne(Across(point.up, out));
    const Vector up = Across(out, right);
    ViewMatrix view = {};
    for (std::size_t row = 0; row < out.size(); ++row) view[row] = {right[row], up[row], out[row], 0};
    view[3][3] = 1;
    return view;
}

static Vector Across(const Vector& one, const Vector& other) {
    return {one[1] * other[2] - one[2] * other[1], one[2] * other[0] - one[0] * other[2],
            one[0] * other[1] - one[1] * other[0]};
}

static Vector OfLengthOne(const Vector& vector) {
    const double length = std::hypot(vector[0], vector[1], vector[2]);
    return {vector[0] / length, vector[1] / length, vector[2] / length};
}

static ViewMatrix AfterMain(const ViewMatrix& main, const ViewMatrix& view) {
    ViewMatrix product = {};
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 3; ++column)
            for (std::size_t i = 0; i < 3; ++i) product[row][column] += main[row][i] * view[i][column];
    product[3][3] = 1;
    return product;
}

}  // namespace kv
