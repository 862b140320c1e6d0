// What a simplified representation leaves out, and the size of stock.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "assembly/rep_rule.h"
#include "assembly/stock_size.h"

namespace {

using kv::ComponentIds;
using kv::PlanRepresentation;
using kv::RepPlacement;
using kv::RepPlan;
using kv::RepRule;

using Paths = std::vector<ComponentIds>;

// TOP   1 SUB (0)   2 SUB (0)   5 NUT (2)
//         1 BOLT (1)  1 BOLT (1)
//         3 NUT (2)   3 NUT (2)
const std::vector<RepPlacement> kPlacements = {{1, 1, 0}, {2, 1, 1}, {2, 3, 2}, {1, 2, 0},
                                               {2, 1, 1}, {2, 3, 2}, {1, 5, 2}};

TEST(RepRule, NamesTheHighestAndCountsAllThatIsBelow) {
    struct Case {
        RepRule rule;
        Paths items;
        std::size_t leftOut;
        const char* what;
    };
    const Case cases[] = {
        {{false, {false, false, true}, {}}, {{1, 3}, {2, 3}, {5}}, 3, "a model wherever it is placed"},
        {{false, {true, true}, {}}, {{1}, {2}}, 6, "nothing below a named one is named again"},
        {{false, {}, {{2, 1}, {5}}}, {{2, 1}, {5}}, 2, "selected placements alone"},
        {{false, {}, {{2}, {2, 3}}}, {{2}}, 3, "a component below a selected one"},
        {{true, {}, {{2, 3}}}, {{2, 3}}, 5, "kept with the assembly that holds it"},
        {{true, {}, {{5}, {1}}}, {{1}, {5}}, 3, "kept with all below"},
        {{false, {}, {{7}, {1, 9}}}, {}, 0, "placements that are gone"},
        {{true, {}, {{5, 1}}}, {}, 6, "a path through a part keeps what it begins with"},
    };
    for (const Case& one : cases) {
        const RepPlan plan = PlanRepresentation(kPlacements, one.rule);
        EXPECT_EQ(plan.items, one.items) << one.what;
        EXPECT_EQ(plan.leftOut, one.leftOut) << one.what;
        EXPECT_EQ(plan.leftOut + plan.kept, kPlacements.size()) << one.what;
    }
}

TEST(RepRule, NamesHaveNoBlanksAndAreNotTooLong) {
    EXPECT_TRUE(kv::IsRepName(L"小零件"));
    EXPECT_TRUE(kv::IsRepName(std::wstring(31, L'A')));
    for (const std::wstring& name :
         {std::wstring(), std::wstring(32, L'A'), std::wstring(L"A B"), std::wstring(L"A\tB")})
        EXPECT_FALSE(kv::IsRepName(name)) << testing::PrintToString(name);
}

TEST(StockSize, AddsTheAllowanceAndRoundsUpToTheStep) {
    using kv::StockExtents;
    EXPECT_EQ(kv::LargestFirst({2, 30, 7}), (StockExtents{30, 7, 2}));
    EXPECT_EQ(kv::StockSize({100, 50.2, 20}, {{4, 2, 1}, 5}), (StockExtents{105, 55, 25}));
    EXPECT_EQ(kv::StockSize({100.0000000001, 50, 20}, {{}, 1}), (StockExtents{100, 50, 20}))
        << "rounding of what was measured";
    EXPECT_EQ(kv::StockSize({0.25, 0.2, 0.1}, {{}, 0.1}), (StockExtents{0.3, 0.2, 0.1}));
    EXPECT_EQ(kv::StockSize({3.25, 2, 1}, {{1, 0, 0}, 0}), (StockExtents{4.25, 2, 1})) << "no step";
    EXPECT_EQ(kv::StockText({1234567, 12.5, 0.1254}), L"1234567×12.5×0.125");
}

}  // namespace
