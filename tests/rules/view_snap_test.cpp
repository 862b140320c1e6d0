// The view along the axes that is nearest to another one.

#include "model/view_snap.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <limits>
#include <optional>
#include <random>

#include <gtest/gtest.h>

namespace {

using kv::SnappedView;
using kv::ViewMatrix;

using Rows = std::array<std::array<double, 3>, 3>;

// A view of this rotation; scale and shift are those of a window.
ViewMatrix ViewOf(const Rows& rows, double scale = 0.25) {
    ViewMatrix view = {};
    for (std::size_t row = 0; row < 3; ++row)
        for (std::size_t column = 0; column < 3; ++column) view[row][column] = scale * rows[row][column];
    view[3] = {500, 400, 7, 1};
    return view;
}

// The rotation of a snapped view in whole numbers; zeros for none.
Rows RowsOf(const std::optional<ViewMatrix>& view, double scale = 0.25) {
    Rows rows = {};
    for (std::size_t row = 0; view && row < 3; ++row)
        for (std::size_t column = 0; column < 3; ++column)
            rows[row][column] = std::round((*view)[row][column] / scale);
    return rows;
}

double Determinant(const Rows& m) {
    return m[0][0] * (m[1][1] * m[2][2] - m[1][2] * m[2][1]) -
           m[0][1] * (m[1][0] * m[2][2] - m[1][2] * m[2][0]) +
           m[0][2] * (m[1][0] * m[2][1] - m[1][1] * m[2][0]);
}

Rows RandomRotation(std::mt19937& random) {
    std::normal_distribution<double> normal;
    double w = normal(random);
    double x = normal(random);
    double y = normal(random);
    double z = normal(random);
    const double length = std::sqrt(w * w + x * x + y * y + z * z);
    w /= length;
    x /= length;
    y /= length;
    z /= length;
    return {{{1 - 2 * (y * y + z * z), 2 * (x * y - z * w), 2 * (x * z + y * w)},
             {2 * (x * y + z * w), 1 - 2 * (x * x + z * z), 2 * (y * z - x * w)},
             {2 * (x * z - y * w), 2 * (y * z + x * w), 1 - 2 * (x * x + y * y)}}};
}

TEST(SnappedView, TurnsEveryRotationToARotationAlongTheAxes) {
    std::mt19937 random(7);
    for (int i = 0; i < 20000; ++i) {
        const Rows rotation = RandomRotation(random);
        const auto snapped = SnappedView(ViewOf(rotation));
        ASSERT_TRUE(snapped);
        const Rows rows = RowsOf(snapped);
        ASSERT_EQ(Determinant(rows), 1) << i;
        std::array<int, 3> taken = {};
        int moved = 0;
        for (std::size_t row = 0; row < 3; ++row) {
            const auto one =
                std::ranges::find_if(rows[row], [](double entry) { return std::abs(entry) == 1; });
            ASSERT_NE(one, rows[row].end());
            const auto column = static_cast<std::size_t>(one - rows[row].begin());
            ++taken[column];
            EXPECT_GT(*one * rotation[row][column], 0) << "the sign is kept";
            const auto larger = [&](double entry) {
                return std::abs(entry) > std::abs(rotation[row][column]) + 1e-8;
            };
            moved += std::ranges::any_of(rotation[row], larger) ? 1 : 0;
        }
        ASSERT_EQ(taken, (std::array<int, 3>{1, 1, 1}));
        ASSERT_LE(moved, 1) << "only the row that loses its column leaves its largest entry";
        EXPECT_EQ((*snapped)[3], ViewOf(rotation)[3]) << "the shift stays";
        EXPECT_EQ(SnappedView(*snapped), snapped) << "a view along the axes stays";
    }
}

TEST(SnappedView, BreaksTiesByTheOrderOfColumnsAndRows) {
    const double third = 1 / std::sqrt(3.0);
    const double sixth = 1 / std::sqrt(6.0);
    const double half = 1 / std::sqrt(2.0);
    // Seen from (1, 1, 1): in the third column all are equal, in the first row the first wins.
    const Rows corner = {{{half, -sixth, third}, {0, 2 * sixth, third}, {-half, -sixth, third}}};
    EXPECT_EQ(RowsOf(SnappedView(ViewOf(corner))), (Rows{{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}));
    // A half turn about (1, 1, 1): the second and third row both want the first column, equally.
    const double a = 2.0 / 3;
    const double b = -1.0 / 3;
    const Rows halfTurn = {{{b, a, a}, {a, b, a}, {a, a, b}}};
    EXPECT_EQ(RowsOf(SnappedView(ViewOf(halfTurn))), (Rows{{{0, 1, 0}, {1, 0, 0}, {0, 0, -1}}}));

    struct Case {
        double more;
        Rows expected;
    };
    // The later column has to be larger by more than 1e-8,
    const Rows level = {{{half, half, 0}, {-half, half, 0}, {0, 0, 1}}};
    for (const auto& [more, expected] : {Case{0.5e-8, {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}}},
                                         Case{3e-8, {{{0, 1, 0}, {-1, 0, 0}, {0, 0, 1}}}}}) {
        Rows rows = level;
        rows[0][1] += more;
        EXPECT_EQ(RowsOf(SnappedView(ViewOf(rows, 1)), 1), expected) << more;
    }
    // the later row by more than 1e-5.
    for (const auto& [more, expected] : {Case{0.5e-5, {{{0, 1, 0}, {1, 0, 0}, {0, 0, -1}}}},
                                         Case{3e-5, {{{0, 1, 0}, {0, 0, 1}, {1, 0, 0}}}}}) {
        Rows rows = halfTurn;
        rows[2][0] += more;
        EXPECT_EQ(RowsOf(SnappedView(ViewOf(rows, 1)), 1), expected) << more;
    }
}

TEST(SnappedView, RefusesWhatIsNoRotation) {
    const Rows plain = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}};
    for (std::size_t row = 0; row < 3; ++row) {
        ViewMatrix flat = ViewOf(plain);
        flat[row] = {};
        EXPECT_FALSE(SnappedView(flat)) << row;
        for (const double wrong :
             {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
            ViewMatrix view = ViewOf(plain);
            view[row][2] = wrong;
            EXPECT_FALSE(SnappedView(view)) << row;
        }
    }
    EXPECT_FALSE(SnappedView(ViewOf({{{1, 0, 0}, {1, 0, 0}, {1, 0, 0}}})));
}

TEST(NormalisedView, HasNeitherScaleNorShift) {
    const ViewMatrix normalised = kv::NormalisedView(ViewOf({{{0, 1, 0}, {-1, 0, 0}, {0, 0, 1}}}, 40));
    EXPECT_EQ(normalised, (ViewMatrix{{{0, 1, 0, 0}, {-1, 0, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}}));
}

}  // namespace
