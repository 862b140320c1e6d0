// How the host ties and frees components, and what it takes for the text of a dimension.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <ProArray.h>
#include <ProAsmcomp.h>
#include <ProAsmcomppath.h>
#include <ProDimension.h>
#include <ProDrawing.h>
#include <ProDwgtable.h>
#include <ProWstring.h>

#include "simulator/cad/model.h"
#include "support/host_test.h"

namespace {

using namespace sim;
using test::Solid;

class Freedom : public test::HostTest {
protected:
    Freedom() {
        pump.Place(Part(L"BOLT"));
        Component().constraints = {{0, 0, 0}, {4, 0, 0}};
        Component().initial = TranslationMatrix(1, 2, 3);
        session.desk.Open(pump);
    }
    Feature& Component() { return *pump.FindFeature(1); }

    SimModel& pump = Assembly(L"PUMP");
    ProAsmcomp item = {PRO_FEATURE, 1, &pump};
};

TEST_F(Freedom, FreedComponentsGoToTheirInitialPositionWhenRegenerated) {
    ProMatrix here = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {7, 8, 9, 1}};
    ASSERT_EQ(ProAsmcompPositionSet(nullptr, &item, here), PRO_TK_NO_ERROR);
    EXPECT_EQ(*Component().initial, TranslationMatrix(1, 2, 3)) << "what is tied has no position of its own";
    EXPECT_EQ(ProAsmcompConstrRemove(&item, 2), PRO_TK_E_NOT_FOUND);
    ASSERT_EQ(ProAsmcompConstrRemove(&item, -1), PRO_TK_NO_ERROR);
    EXPECT_EQ(Component().placement, IdentityMatrix()) << "not before it is regenerated";
    ASSERT_EQ(ProAsmcompRegenerate(&item, PRO_B_FALSE), PRO_TK_NO_ERROR);
    EXPECT_EQ(Component().placement, TranslationMatrix(1, 2, 3));
    ASSERT_EQ(ProAsmcompPositionSet(nullptr, &item, here), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProAsmcompRegenerate(&item, PRO_B_FALSE), PRO_TK_NO_ERROR);
    EXPECT_EQ(Component().placement, TranslationMatrix(7, 8, 9));
    here[0][0] = 2;
    EXPECT_EQ(ProAsmcompPositionSet(nullptr, &item, here), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("more than turn and shift"));
}

TEST_F(Freedom, ConstraintsAreGivenOutByTheOwnersPath) {
    Component().constraints[1].isOfInterface = true;
    ProAsmcomppath path = {};
    ProAsmcompconstraint* constraints = nullptr;
    EXPECT_EQ(ProAsmcompConstraintsWithComppathGet(&item, nullptr, &constraints), PRO_TK_BAD_INPUTS);
    ASSERT_EQ(ProAsmcomppathInit(Solid(pump), nullptr, 0, &path), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProAsmcompConstraintsWithComppathGet(&item, &path, &constraints), PRO_TK_NO_ERROR);
    ProAsmcompConstrType type = PRO_ASM_UNDEF;
    EXPECT_EQ(ProAsmcompconstraintTypeGet(constraints[1], &type), PRO_TK_NO_ERROR);
    EXPECT_EQ(static_cast<int>(type), 4);
    EXPECT_EQ(ProAsmcompconstraintArrayFree(constraints), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProAsmcompConstrRemove(&item, -1), PRO_TK_NO_ERROR);
    ASSERT_EQ(Component().constraints.size(), 1U) << "of an interface";
}

TEST_F(Freedom, TextsOfDimensionsNeedAValueAndShortLines) {
    pump.AddDimension(L"d1", 5);
    ProDimension dimension = {PRO_DIMENSION, 1, &pump};
    wchar_t** text = nullptr;
    ASSERT_EQ(ProDimensionTextWstringsGet(&dimension, &text), PRO_TK_NO_ERROR);
    EXPECT_STREQ(text[0], L"@D");
    EXPECT_EQ(ProWstringproarrayFree(text), PRO_TK_NO_ERROR);
    struct Case {
        std::vector<std::wstring> lines;
        ProError status;
    };
    const std::vector<Case> cases = {{{L"Ø@D", L""}, PRO_TK_NO_ERROR},
                                     {{L"Ø30"}, PRO_TK_GENERAL_ERROR},
                                     {{L"@D", std::wstring(81, L'x')}, PRO_TK_GENERAL_ERROR}};
    for (const Case& one : cases) {
        ProArray array = nullptr;
        ASSERT_EQ(ProArrayAlloc(0, sizeof(wchar_t*), 1, &array), PRO_TK_NO_ERROR);
        for (const std::wstring& line : one.lines) {
            auto* pointer = const_cast<wchar_t*>(line.c_str());
            ASSERT_EQ(ProArrayObjectAdd(&array, -1, 1, &pointer), PRO_TK_NO_ERROR);
        }
        EXPECT_EQ(ProDimensionTextWstringsSet(&dimension, static_cast<wchar_t**>(array)), one.status);
        EXPECT_EQ(ProArrayFree(&array), PRO_TK_NO_ERROR);
    }
    EXPECT_EQ(pump.Dimensions()[0].text, (std::vector<std::wstring>{L"Ø@D", L""}));
    dimension.id = 2;
    EXPECT_EQ(ProDimensionTextWstringsGet(&dimension, &text), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("does not have"));
}

TEST_F(Freedom, FormatsBringTheirTablesAndLeaveTheOldOnes) {
    SimModel& drawing = New(L"PUMP", ModelKind::kDrawing).AddSheet(L"A3").AddSheet(L"A3");
    drawing.AddTable(1, L"old", true).AddTable(2, L"elsewhere", true).AddTable(1, L"of the user");
    SimModel& frame = New(L"FRAME", ModelKind::kFormat).AddSheet(L"A2").AddTable(1, L"new");
    auto* handle = reinterpret_cast<ProDrawing>(&drawing);
    ASSERT_EQ(ProDrawingFormatAdd(handle, 1, nullptr, &frame, 1), PRO_TK_NO_ERROR);
    EXPECT_EQ(drawing.Tables().size(), 4U);
    session.strict.formatTakesOldTables = true;
    ASSERT_EQ(ProDrawingFormatAdd(handle, 1, nullptr, &frame, 1), PRO_TK_NO_ERROR);
    ASSERT_EQ(drawing.Tables().size(), 3U);
    EXPECT_EQ(drawing.Tables()[2].text, L"new");
    test::Name name;
    EXPECT_EQ(ProDrawingFormatGet(handle, 1, name.text), PRO_TK_NO_ERROR);
    EXPECT_STREQ(name.text, L"FRAME");
    EXPECT_EQ(ProDrawingFormatGet(handle, 2, name.text), PRO_TK_NOT_EXIST);
    ProDwgtable table = {PRO_DRAW_TABLE, drawing.Tables()[0].id, &drawing};
    EXPECT_EQ(ProDwgtableDelete(&table, 0), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProDwgtableDelete(&table, 0), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("does not have"));
}

}  // namespace
