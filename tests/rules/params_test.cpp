// Outline texts and typed parameter values: pure rules, where a dialog cannot reach their limits.

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "params/outline_text.h"
#include "params/parameter_value.h"

namespace {

TEST(OutlineText, SortsOnlyWhenAskedTo) {
    const double sizes[][3] = {{3, 2, 1}, {3, 1, 2}, {2, 3, 1}, {2, 1, 3}, {1, 3, 2}, {1, 2, 3}};
    const wchar_t* const unsorted[] = {L"3×2×1", L"3×1×2", L"2×3×1", L"2×1×3", L"1×3×2", L"1×2×3"};
    for (int i = 0; i < 6; ++i) {
        const std::array<double, 3> extents = {sizes[i][0], sizes[i][1], sizes[i][2]};
        EXPECT_EQ(kv::OutlineText(extents, 2, true), L"3×2×1");
        EXPECT_EQ(kv::OutlineText(extents, 2, false), unsorted[i]);
    }
    EXPECT_EQ(kv::OutlineText({4, 4, 4}, 2, true), L"4×4×4");
    EXPECT_EQ(kv::OutlineText({1, 4, 4}, 2, true), L"4×4×1");
    EXPECT_EQ(kv::OutlineText({4, 1, 4}, 2, true), L"4×4×1");
}

TEST(OutlineText, RoundsFirstAndThenKeepsSixDigits) {
    const std::vector<std::pair<std::pair<double, int>, std::wstring>> cases = {
        {{1234567.8, 2}, L"1.23457e+06"},
        {{999999.4, 0}, L"999999"},
        {{999999.7, 0}, L"1e+06"},
        {{100000.25, 2}, L"100000"},
        {{12.3456789, 15}, L"12.3457"},
        {{1.0 / 3, 4}, L"0.3333"},
        {{0.00004, 4}, L"0"},
        {{0.00006, 4}, L"0.0001"},
        {{0.000012345, 9}, L"1.2345e-05"},
        {{1e300, 4}, L"1e+300"},
        {{0, 2}, L"0"},
    };
    for (const auto& [input, text] : cases)
        EXPECT_EQ(kv::OutlineText({input.first, 0, 0}, input.second, false), text + L"×0×0") << input.first;
}

TEST(ParameterValue, KnowsTheFourLabelsOfTheTypeMenu) {
    const std::vector<std::pair<std::wstring, ProParamvalueType>> labels = {
        {L"整数", PRO_PARAM_INTEGER},  {L"实数", PRO_PARAM_DOUBLE},    {L"字符串", PRO_PARAM_STRING},
        {L"是/否", PRO_PARAM_BOOLEAN}, {L"String", PRO_PARAM_NOT_SET}, {L"", PRO_PARAM_NOT_SET},
    };
    for (const auto& [label, type] : labels) EXPECT_EQ(kv::ParameterTypeFromLabel(label), type);
}

TEST(ParameterValue, RefusesARealThatNoModelCanHold) {
    ProParamvalue value = {};
    for (const wchar_t* text : {L"1e999", L"-1e999", L"inf", L"nan"}) {
        const ProError status = kv::ParameterValueFromText(PRO_PARAM_DOUBLE, text, value);
        // Words are no numbers and read as 0.
        const double read = status == PRO_TK_NO_ERROR ? value.value.d_val : 0.0;
        EXPECT_EQ(read, 0.0) << testing::PrintToString(text);
    }
    EXPECT_EQ(kv::ParameterValueFromText(PRO_PARAM_DOUBLE, L"1e308", value), PRO_TK_NO_ERROR);
    EXPECT_EQ(value.value.d_val, 1e308);
}

TEST(ParameterValue, ReadsLongTextsWithoutAnEnd) {
    ProParamvalue value = {};
    EXPECT_EQ(kv::ParameterValueFromText(PRO_PARAM_INTEGER, std::wstring(5000, L'9'), value),
              PRO_TK_NOT_VALID);
    EXPECT_EQ(kv::ParameterValueFromText(PRO_PARAM_INTEGER, L"-2147483648x", value), PRO_TK_NO_ERROR);
    EXPECT_EQ(value.value.i_val, -2147483647 - 1);
    EXPECT_EQ(kv::ParameterValueFromText(PRO_PARAM_DOUBLE, L"0." + std::wstring(5000, L'3'), value),
              PRO_TK_NO_ERROR);
    EXPECT_DOUBLE_EQ(value.value.d_val, 1.0 / 3);
    EXPECT_NE(kv::ParameterValueFromText(PRO_PARAM_STRING, std::wstring(5000, L'x'), value), PRO_TK_NO_ERROR);
    EXPECT_NE(kv::ParameterValueFromText(PRO_PARAM_NOT_SET, L"x", value), PRO_TK_NO_ERROR);
}

}  // namespace
