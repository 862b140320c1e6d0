// Texts of dimensions, and plans for formats.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "drawing/dimension_text.h"
#include "drawing/format_plan.h"

namespace {

using kv::DimensionLines;
using kv::DimensionTextChange;
using kv::FormatRequest;
using kv::SheetFate;
using kv::SheetScope;
using kv::SheetState;

TEST(DimensionText, ChangesKeepTheValueOnce) {
    struct Case {
        DimensionLines old;
        DimensionTextChange change;
        DimensionLines made;
    };
    const std::vector<Case> cases = {
        {{L"@D"}, {L"Ø", L" H7"}, {L"Ø@D H7"}},
        {{L"Ø@D"}, {L"2×"}, {L"2×Ø@D"}},
        {{L"above", L"@D ±0.1", L"below"},
         {L"(", L")", {L"均布"}},
         {L"above", L"(@D ±0.1)", L"below", L"均布"}},
        {{L"above", L"4×@D", L"below"}, {L"Ø", {}, {L"通孔"}, true}, {L"Ø@D", L"通孔"}},
        {{L"@O text"}, {{}, {}, {}, true}, {L"@D"}},
        {{L"@D of @D", L"@D"}, {}, {L"@D of ", L""}},
        {{L"@D"}, {}, {L"@D"}},
    };
    for (const Case& one : cases) {
        DimensionLines made;
        EXPECT_EQ(kv::DimensionTextMake(one.old, one.change, made), PRO_TK_NO_ERROR);
        EXPECT_EQ(made, one.made);
    }
}

TEST(DimensionText, ChangesThatTheHostWouldMisreadAreRefused) {
    DimensionLines made;
    for (const wchar_t* sign : {L"@D", L"a@o", L"@S"}) {
        EXPECT_EQ(kv::DimensionTextMake({L"@D"}, {sign}, made), PRO_TK_NOT_VALID);
        EXPECT_EQ(kv::DimensionTextMake({L"@D"}, {{}, sign}, made), PRO_TK_NOT_VALID);
        EXPECT_EQ(kv::DimensionTextMake({L"@D"}, {{}, {}, {L"", sign}}, made), PRO_TK_NOT_VALID);
    }
    EXPECT_EQ(kv::DimensionTextMake({L"@O通孔"}, {L"4×"}, made), PRO_TK_NOT_VALID) << "no value to stand by";
    EXPECT_EQ(kv::DimensionTextMake({L"@D"}, {std::wstring(78, L'x')}, made), PRO_TK_NO_ERROR);
    EXPECT_EQ(kv::DimensionTextMake({L"@D"}, {std::wstring(79, L'x')}, made), PRO_TK_LINE_TOO_LONG);
    EXPECT_EQ(kv::DimensionTextMake({L"@D"}, {{}, {}, {std::wstring(81, L'x')}}, made), PRO_TK_LINE_TOO_LONG);
}

TEST(DimensionText, WhatIsTypedIsReadBack) {
    struct Case {
        const wchar_t* typed;
        bool isHidden;
        ProError status;
        DimensionLines made;
    };
    const std::vector<Case> cases = {
        {L"Ø{尺寸}\r\n通孔\n\n", false, PRO_TK_NO_ERROR, {L"Ø@D", L"通孔"}},
        {L"\n{尺寸}", false, PRO_TK_NO_ERROR, {L"", L"@D"}},
        {L"通孔", false, PRO_TK_NOT_VALID, {}},
        {L"通孔", true, PRO_TK_NO_ERROR, {L"@D通孔"}},
        {L"", true, PRO_TK_NO_ERROR, {L"@D"}},
        {L"{尺寸}×{尺寸}", true, PRO_TK_NOT_VALID, {}},
        {L"@D", false, PRO_TK_NOT_VALID, {}},
    };
    for (const Case& one : cases) {
        DimensionLines made;
        EXPECT_EQ(kv::DimensionTextTyped(one.typed, one.isHidden, made), one.status);
        if (one.status != PRO_TK_NO_ERROR) continue;
        EXPECT_EQ(made, one.made);
        DimensionLines again;
        EXPECT_EQ(kv::DimensionTextTyped(kv::DimensionTextShown(made, L"\n"), false, again), PRO_TK_NO_ERROR);
        EXPECT_EQ(again, made);
    }
}

TEST(FormatPlan, TellsWhichSheetsChangeAndHow) {
    const std::vector<SheetState> sheets = {
        {1, L"A3", L"OLD_A3", 0}, {2, L"A4", L"OLD_A4", 2}, {3, L"A3", L"", 0}};
    struct Case {
        FormatRequest request;
        std::wstring text;
    };
    const std::vector<Case> cases = {
        {{SheetScope::All, L"", L"NEW", L"A3"},
         L"第1页：OLD_A3 → NEW；第2页：有图框表格，跳过；第3页：(无) → NEW"},
        {{SheetScope::ByFormat, L"old_a4", L"NEW", L"A3", 1, true},
         L"第2页：OLD_A4 → NEW，图幅 A4 → A3，删除2个图框表格"},
        {{SheetScope::BySize, L"a3", L"NEW", L""}, L"第1页：OLD_A3 → NEW；第3页：(无) → NEW"},
        {{SheetScope::BySize, L"A0", L"NEW", L"A3"}, L"没有符合条件的页"},
    };
    for (const Case& one : cases) EXPECT_EQ(kv::DrawingPlanText(sheets, one.request), one.text);
    EXPECT_EQ(kv::FormatsText(sheets), L"OLD_A3,OLD_A4,(无)");
}

}  // namespace
