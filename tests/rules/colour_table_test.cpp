// Random colours: texts of colours, how they are drawn, and the tables that ship.

#include <array>
#include <cmath>
#include <cstddef>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "display/colour_table.h"
#include "support/plugin_home.h"

namespace {

using kv::Colour;
using kv::ColourFromText;
using kv::ColoursDrawn;

TEST(ColourTable, TakesThreeNumbersAndNothingElse) {
    EXPECT_EQ(ColourFromText(L"0,128,255"), (Colour{0, 128, 255}));
    EXPECT_EQ(ColourFromText(L" 1, 2 ,3 "), (Colour{1, 2, 3}));
    for (const wchar_t* text : {L"", L"1,2", L"1,2,", L"1,2,3,4", L"1,2,256", L"-1,2,3", L"1;2;3", L"red",
                                L"1,2,3x", L"1,2，3", L"1.5,2,3"})
        EXPECT_FALSE(ColourFromText(text)) << testing::PrintToString(std::wstring(text));
}

using Taken = std::vector<std::optional<std::size_t>>;

// Whatever is drawn.
TEST(ColoursDrawn, GivesNeighboursDifferentColoursAndUsesAllOfThem) {
    for (const unsigned seed : {1u, 2u, 3u}) {
        std::minstd_rand numbers(seed);
        const auto random = [&numbers](std::size_t count) { return numbers() % count; };
        const Taken open(100);
        for (const std::size_t table : {2u, 3u, 24u}) {
            const auto drawn = ColoursDrawn(open, table, random);
            std::vector<int> uses(table);
            for (std::size_t i = 0; i < drawn.size(); ++i) {
                ++uses.at(drawn[i]);
                EXPECT_TRUE(i == 0 || drawn[i] != drawn[i - 1]) << table;
            }
            for (const int use : uses) EXPECT_GE(use, static_cast<int>(open.size() / table) - 1) << table;
        }
    }
}

TEST(ColoursDrawn, RespectsWhatStaysAndMakesDoWithOneColour) {
    const auto first = [](std::size_t) { return std::size_t{0}; };
    const Taken taken = {std::nullopt, 1, std::nullopt, 0, std::nullopt, 3};  // 3: not in the table
    EXPECT_EQ(ColoursDrawn(taken, 3, first), (std::vector<std::size_t>{0, 3, 2, 3, 1, 3}));
    EXPECT_EQ(ColoursDrawn(Taken(3), 1, first), (std::vector<std::size_t>{0, 0, 0}));
    EXPECT_EQ(ColoursDrawn(Taken{std::nullopt, 0}, 3, first)[0], 1u) << "not that of the next one either";
    // Both colours are a neighbour's: at least not the one before.
    EXPECT_EQ(ColoursDrawn(Taken{0, std::nullopt, 1}, 2, first)[1], 1u);
}

// ---- The tables that ship

// CIE Lab of an sRGB colour, daylight D65.
std::array<double, 3> Lab(const Colour& colour) {
    std::array<double, 3> linear = {};
    for (std::size_t i = 0; i < 3; ++i) {
        const double share = colour[i] / 255.0;
        linear[i] = share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
    }
    const auto [r, g, b] = linear;
    const auto f = [](double part) {
        return part > 216.0 / 24389 ? std::cbrt(part) : (24389.0 / 27 * part + 16) / 116;
    };
    const double x = f((0.4124564 * r + 0.3575761 * g + 0.1804375 * b) / 0.95047);
    const double y = f(0.2126729 * r + 0.7151522 * g + 0.0721750 * b);
    const double z = f((0.0193339 * r + 0.1191920 * g + 0.9503041 * b) / 1.08883);
    return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

double Distance(const Colour& one, const Colour& other) {
    const auto a = Lab(one), b = Lab(other);
    return std::hypot(a[0] - b[0], a[1] - b[1], a[2] - b[2]);
}

// Backgrounds of light and dark windows, and what is selected or about to be.
constexpr Colour kHostColours[] = {{255, 255, 255}, {238, 241, 245}, {183, 195, 212}, {32, 36, 42},
                                   {0, 160, 64},    {0, 255, 0},     {255, 165, 0}};

TEST(ColourTable, OfBothTablesTheColoursAreToldApart) {
    ASSERT_NEAR(Lab({255, 0, 0})[1], 80.09, 0.05) << "a known value";
    for (const wchar_t* file : {L"KvColor0.ini", L"KvColor1.ini"}) {
        std::vector<Colour> table;
        while (true) {
            const std::wstring section = L"Color" + std::to_wstring(table.size() + 1);
            const std::wstring text = test::ReadSettings(file, section, L"content");
            if (text.empty()) break;
            ASSERT_TRUE(ColourFromText(text)) << testing::PrintToString(text);
            table.push_back(*ColourFromText(text));
        }
        EXPECT_EQ(table.size(), 24u);
        for (std::size_t i = 0; i < table.size(); ++i) {
            for (std::size_t j = 0; j < i; ++j) EXPECT_GE(Distance(table[i], table[j]), 12) << i << " " << j;
            for (const Colour& host : kHostColours) EXPECT_GE(Distance(table[i], host), 20) << i;
        }
    }
}

}  // namespace
