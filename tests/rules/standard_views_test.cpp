// The twelve standard views and the main view of a box.

#include <array>
#include <cmath>
#include <cstddef>
#include <map>
#include <string>

#include <gtest/gtest.h>

#include "display/standard_views.h"

namespace {

using kv::MainViewOf;
using kv::StandardView;
using kv::StandardViews;
using kv::ViewMatrix;

using Vector = std::array<double, 3>;

// What the screen shows to the right, upwards and towards the viewer (0, 1, 2), in the model's axes.
Vector OnScreen(const ViewMatrix& view, std::size_t direction) {
    return {view[0][direction], view[1][direction], view[2][direction]};
}

double Dot(const Vector& one, const Vector& other) {
    return one[0] * other[0] + one[1] * other[1] + one[2] * other[2];
}

double Determinant(const ViewMatrix& view) {
    const Vector x = OnScreen(view, 0), y = OnScreen(view, 1);
    const Vector across = {x[1] * y[2] - x[2] * y[1], x[2] * y[0] - x[0] * y[2], x[0] * y[1] - x[1] * y[0]};
    return Dot(across, OnScreen(view, 2));
}

// From the model's +X, its +Z upwards, so that its +Y is to the right.
constexpr ViewMatrix kFromX = {{{0, 0, 1, 0}, {1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 0, 1}}};

std::map<std::wstring, ViewMatrix> Views(const ViewMatrix& main) {
    std::map<std::wstring, ViewMatrix> views;
    for (const StandardView& view : StandardViews(main)) views[view.name] = view.orientation;
    return views;
}

void ExpectVector(const Vector& found, const Vector& expected, const std::string& what) {
    for (std::size_t i = 0; i < 3; ++i) EXPECT_NEAR(found[i], expected[i], 1e-12) << what << i;
}

TEST(StandardViews, AreTwelveDifferentRotations) {
    const auto views = StandardViews(kFromX);
    for (const StandardView& one : views) {
        EXPECT_NEAR(Determinant(one.orientation), 1, 1e-12);
        for (std::size_t i = 0; i < 3; ++i) {
            EXPECT_NEAR(Dot(OnScreen(one.orientation, i), OnScreen(one.orientation, i)), 1, 1e-12);
            EXPECT_NEAR(Dot(OnScreen(one.orientation, i), OnScreen(one.orientation, (i + 1) % 3)), 0, 1e-12);
        }
        for (const StandardView& other : views)
            EXPECT_EQ(one.orientation == other.orientation, one.name == other.name);
    }
}

TEST(StandardViews, ShowTheSideThatTheyAreNamedAfter) {
    struct Case {
        const wchar_t* name;
        Vector viewer, up;
    };
    // Front is +X, right is +Y, up is +Z.
    const Case cases[] = {
        {L"KV_FRONT", {1, 0, 0}, {0, 0, 1}}, {L"KV_BACK", {-1, 0, 0}, {0, 0, 1}},
        {L"KV_RIGHT", {0, 1, 0}, {0, 0, 1}}, {L"KV_LEFT", {0, -1, 0}, {0, 0, 1}},
        {L"KV_TOP", {0, 0, 1}, {-1, 0, 0}},  {L"KV_BOTTOM", {0, 0, -1}, {1, 0, 0}},
    };
    auto views = Views(kFromX);
    for (const Case& one : cases) {
        const std::string name(one.name, one.name + std::wstring(one.name).size());
        ExpectVector(OnScreen(views[one.name], 2), one.viewer, name);
        ExpectVector(OnScreen(views[one.name], 1), one.up, name);
    }
    const double third = 1 / std::sqrt(3);
    const Vector corners[] = {{1, 1, 1}, {1, -1, 1}, {-1, -1, 1}, {-1, 1, 1}, {1, 1, -1}, {1, -1, -1}};
    for (std::size_t i = 0; i < std::size(corners); ++i) {
        const ViewMatrix& view = views[L"KV_ISO" + std::to_wstring(i + 1)];
        const Vector& corner = corners[i];
        ExpectVector(OnScreen(view, 2), {corner[0] * third, corner[1] * third, corner[2] * third}, "corner");
        EXPECT_NEAR(OnScreen(view, 0)[2], 0, 1e-12) << "level";
        EXPECT_GT(OnScreen(view, 1)[2], 0) << "upright";
    }
}

TEST(MainView, LooksAtTheLargestFaceWithItsLongerEdgeLevel) {
    struct Case {
        Vector extents, viewer, up;
        const char* what;
    };
    const Case cases[] = {
        {{300, 200, 10}, {0, 0, 1}, {0, 1, 0}, "a plate in XY"},
        {{200, 300, 10}, {0, 0, 1}, {1, 0, 0}, "the same, longer along Y"},
        {{10, 300, 200}, {1, 0, 0}, {0, 0, 1}, "a plate in YZ"},
        {{10, 200, 300}, {1, 0, 0}, {0, 1, 0}, "longer along Z"},
        {{300, 10, 200}, {0, 1, 0}, {0, 0, 1}, "a plate in XZ"},
        {{200, 10, 300}, {0, 1, 0}, {1, 0, 0}, "longer along Z"},
        {{5, 5, 5}, {1, 0, 0}, {0, 0, 1}, "a cube: X is the front, Y lies level"},
        {{5, 5 + 1e-12, 5}, {1, 0, 0}, {0, 0, 1}, "rounding decides nothing"},
        {{5, 5 - 1e-12, 5}, {1, 0, 0}, {0, 0, 1}, "nor the other way"},
        {{9, 5, 5}, {0, 1, 0}, {0, 0, 1}, "Y before Z"},
    };
    for (const Case& one : cases) {
        const ViewMatrix view = MainViewOf(one.extents);
        ExpectVector(OnScreen(view, 2), one.viewer, one.what);
        ExpectVector(OnScreen(view, 1), one.up, one.what);
        EXPECT_EQ(Determinant(view), 1) << one.what;
    }
}

}  // namespace
