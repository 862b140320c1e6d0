// KvDimModify, KvSingleDim: texts of dimensions in a drawing.

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/reports.h"

namespace {

using sim::Pick;
using sim::SimDialog;
using sim::SimHost;
using sim::SimModel;
using test::ItemOf;
using test::LastReport;
using Lines = std::vector<std::wstring>;

constexpr int kDimensionType = 8;
constexpr int kReferenceType = 28;
constexpr int kHidden = 2;
constexpr char kTexts[] = "dim_list";

// SHAFT has d1 and d2; the drawing has a reference dimension of its own.
class DimensionTexts : public testing::Test {
protected:
    DimensionTexts() {
        shaft.AddDimension(L"d1", 30).AddDimension(L"d2", 12.5);
        shaft.Dimensions()[1].text = {L"2×@D", L"通孔"};
        drawing.AddDimension(L"rdd1", 7);
        drawing.Dimensions()[0].isReference = true;
        host.Open(drawing);
    }
    Pick Of(int id) { return ItemOf(shaft, kDimensionType, id); }
    void PickThese(std::vector<Pick> picks) { host.AnswerPick({false, std::move(picks)}); }
    const Lines& Text(int id) const { return shaft.Dimensions()[static_cast<std::size_t>(id) - 1].text; }
    void Modify(const std::function<void(SimDialog&)>& user) { host.OnDialog("KvDimModify", user); }

    SimHost host;
    SimModel& shaft = host.AddPart(L"SHAFT");
    SimModel& drawing = host.AddDrawing(L"SHAFT", {L"A3"}, {&shaft});
};

TEST_F(DimensionTexts, PreviewsThenWritesAndTakesBack) {
    host.Select({Of(1), Of(2), Of(1), ItemOf(drawing, kReferenceType, 1)});
    Modify([this](SimDialog& dialog) {
        ASSERT_EQ(dialog.Rows(kTexts).size(), 3U) << "selected twice, listed once";
        EXPECT_EQ(dialog.Cell(kTexts, "2", "symbol"), L"d2");
        EXPECT_EQ(dialog.Cell(kTexts, "2", "value"), L"12.5");
        EXPECT_EQ(dialog.Cell(kTexts, "2", "owner"), L"SHAFT");
        EXPECT_EQ(dialog.Cell(kTexts, "2", "old_text"), L"2×{尺寸} ┃ 通孔");
        dialog.Press("InsDiameter").Choose("InsertAt", L"后缀").Press("InsDegree");
        dialog.Type("DimBelow", L"均布").Press("KvPreview");
        EXPECT_EQ(dialog.Text("DimPrefix"), L"Ø");
        EXPECT_EQ(dialog.Cell(kTexts, "2", "new_text"), L"Ø2×{尺寸}° ┃ 通孔 ┃ 均布");
        EXPECT_EQ(Text(2), (Lines{L"2×@D", L"通孔"})) << "a preview changes nothing";
        dialog.Press("ApplyBt");
        EXPECT_EQ(Text(1), (Lines{L"Ø@D°", L"均布"}));
        EXPECT_EQ(Text(2), (Lines{L"Ø2×@D°", L"通孔", L"均布"}));
        EXPECT_EQ(drawing.Dimensions()[0].text, (Lines{L"Ø@D°", L"均布"}));
        dialog.Choose("DimRule", L"替换")
            .Type("DimPrefix", L"R")
            .Type("DimSuffix", L"")
            .Type("DimBelow", L"");
        dialog.Press("ApplyBt");
        EXPECT_EQ(Text(2), Lines{L"R@D"});
        dialog.Press("KvDefault");
        EXPECT_EQ(Text(2), Lines{L"@D"});
        dialog.Press("KvUndo");
        EXPECT_EQ(dialog.Cell(kTexts, "2", "old_text"), L"2×{尺寸} ┃ 通孔");
    });
    EXPECT_EQ(host.Run("KvDimModify"), PRO_TK_NO_ERROR);
    EXPECT_EQ(Text(1), Lines{L"@D"});
    EXPECT_EQ(Text(2), (Lines{L"2×@D", L"通孔"})) << "as when the command began";
    EXPECT_GT(drawing.Sheets()[0].regenerations, 0);
}

TEST_F(DimensionTexts, NamesRowsThatAreRefusedAndChangesTheOthers) {
    SimModel& locked = host.AddPart(L"LOCKED");
    locked.AddDimension(L"d9", 1).SetReadOnly();
    shaft.Dimensions()[1].text = {std::wstring(70, L'x') + L"@D"};
    host.Select({Of(1), Of(2), ItemOf(locked, kDimensionType, 1)});
    Modify([](SimDialog& dialog) {
        dialog.Type("DimPrefix", L"1234567890").Press("KvPreview");
        EXPECT_EQ(dialog.Cell(kTexts, "2", "new_text"), L"");
        EXPECT_NE(dialog.Cell(kTexts, "2", "note"), L"");
        EXPECT_NE(dialog.Cell(kTexts, "3", "note"), L"");
        dialog.Press("ApplyBt");
    });
    host.Run("KvDimModify");
    EXPECT_EQ(host.LastMessage(), L"以下尺寸的文字未能修改：\n第2行 d2 (SHAFT)");
    EXPECT_EQ(Text(1), Lines{L"1234567890@D"});
    EXPECT_EQ(locked.Dimensions()[0].text, Lines{L"@D"});
    EXPECT_EQ(LastReport(host).Count(L"跳过"), 1U);
    EXPECT_EQ(LastReport(host).Count(L"失败"), 1U);
}

TEST_F(DimensionTexts, AnotherPickKeepsTheFieldsAndWhatUndoBringsBack) {
    PickThese({Of(1)});
    PickThese({Of(2)});
    Modify([](SimDialog& dialog) { dialog.Type("DimPrefix", L"Ø").Press("ApplyBt").Press("KvPickAgain"); });
    Modify([this](SimDialog& dialog) {
        EXPECT_EQ(dialog.Text("DimPrefix"), L"Ø");
        EXPECT_EQ(dialog.Cell(kTexts, "1", "symbol"), L"d2");
        dialog.Press("ApplyBt");
        EXPECT_EQ(Text(1), Lines{L"Ø@D"});
        dialog.Press("KvUndo");
    });
    EXPECT_EQ(host.Run("KvDimModify"), PRO_TK_NO_ERROR);
    EXPECT_EQ(Text(1), Lines{L"@D"}) << "of the first pick";
    EXPECT_EQ(Text(2), (Lines{L"2×@D", L"通孔"}));
}

TEST_F(DimensionTexts, SinglesGoOnUntilThePickEndsEmpty) {
    PickThese({Of(1)});
    PickThese({Of(2)});
    PickThese({});
    host.OnDialog("KvSingleDim", [](SimDialog& dialog) {
        EXPECT_EQ(dialog.Text("DimText"), L"{尺寸}");
        dialog.Type("DimText", L"Ø30").Press("OK");
        EXPECT_TRUE(dialog.IsOpen()) << "without the value";
        dialog.Type("DimText", std::wstring(80, L'x') + L"{尺寸}").Press("OK");
        EXPECT_TRUE(dialog.IsOpen()) << "too long";
        dialog.Type("DimText", L"Ø{尺寸}\n配作").Press("OK");
        EXPECT_FALSE(dialog.IsOpen());
    });
    host.OnDialog("KvSingleDim", [this](SimDialog& dialog) {
        EXPECT_EQ(Text(1), (Lines{L"Ø@D", L"配作"}));
        EXPECT_EQ(dialog.Text("DimText"), L"2×{尺寸}\n通孔");
        dialog.Type("DimText", L"见表").Check("HideValue").Press("OK");
    });
    EXPECT_EQ(host.Run("KvSingleDim"), PRO_TK_NO_ERROR);
    EXPECT_EQ(Text(2), Lines{L"@D见表"});
    EXPECT_EQ(shaft.Dimensions()[1].valueDisplay, kHidden);
    EXPECT_EQ(shaft.Dimensions()[0].valueDisplay, 0);
}

TEST_F(DimensionTexts, SingleUndoBringsBackTextAndDisplayOfAll) {
    shaft.Dimensions()[1].valueDisplay = 1;
    PickThese({Of(2)});
    PickThese({Of(1)});
    host.OnDialog("KvSingleDim",
                  [](SimDialog& dialog) { dialog.Type("DimText", L"").Check("HideValue").Press("OK"); });
    host.OnDialog("KvSingleDim", [](SimDialog& dialog) { dialog.Press("KvUndo").Press("Close"); });
    EXPECT_EQ(host.Run("KvSingleDim"), PRO_TK_NO_ERROR);
    EXPECT_EQ(Text(2), (Lines{L"2×@D", L"通孔"}));
    EXPECT_EQ(shaft.Dimensions()[1].valueDisplay, 1);
}

TEST_F(DimensionTexts, ATextThatCannotBeHiddenStaysAsItWas) {
    PickThese({Of(2)});
    host.State().report.Arm({"ProDimensionValuedisplaySet", 1, PRO_TK_GENERAL_ERROR});
    host.OnDialog("KvSingleDim", [](SimDialog& dialog) {
        dialog.Type("DimText", L"见表").Check("HideValue").Press("OK");
        EXPECT_TRUE(dialog.IsOpen());
    });
    host.Run("KvSingleDim");
    EXPECT_EQ(host.LastMessage(), L"\t主程序未接受此文字，尺寸未改动\t");
    EXPECT_EQ(Text(2), (Lines{L"2×@D", L"通孔"}));
}

TEST_F(DimensionTexts, ReadOnlyModelsAreRefusedBeforeTheDialog) {
    shaft.SetReadOnly();
    PickThese({Of(1)});
    PickThese({});
    EXPECT_EQ(host.Run("KvSingleDim"), PRO_TK_NO_ERROR);
    EXPECT_EQ(host.LastMessage(), L"\t尺寸所在的模型只读，不能修改：\t\nSHAFT");
}

}  // namespace
