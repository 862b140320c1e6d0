// SameScale, KvUpdateSheetScale, KvUpdateMainViewScale, KvDrwScaleCheck.

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/drawings.h"
#include "support/plugin_home.h"
#include "support/reports.h"

namespace {

using sim::HostSetup;
using sim::ModelKind;
using sim::PromptAnswer;
using sim::SimHost;
using sim::SimModel;
using sim::ViewType;
using test::Messages;
using test::Texts;

// A drawing of two sheets: on the first a view of the pump that follows the sheet, on the second one with a
// scale of its own, one projected from it, and a view of the nut.
class SheetScale : public testing::Test {
protected:
    explicit SheetScale(const HostSetup& setup = {}) : host(setup) {
        drawing.AddView(pump, 1).AddView(pump, 2).AddView(pump, 2).AddView(nut, 2);
        drawing.Views()[1].scale = 0.5;
        drawing.Views()[2].type = ViewType::kProjection;
        drawing.Views()[2].parent = drawing.Views()[1].id;
        host.Open(drawing);
    }
    void Enter(const wchar_t* text) { host.AnswerPrompt({PromptAnswer::Kind::kTyped, text}); }
    int Regenerations(std::size_t sheet) { return drawing.Sheets()[sheet - 1].regenerations; }
    std::vector<double> ViewScales() {
        std::vector<double> scales;
        for (const sim::DrawingView& view : drawing.Views()) scales.push_back(drawing.ScaleOf(view));
        return scales;
    }

    SimHost host;
    SimModel& pump = host.AddPart(L"PUMP");
    SimModel& nut = host.AddPart(L"NUT");
    SimModel& drawing = host.AddDrawing(L"PUMP", {L"A3", L"A4"});
};

// ---- The three that set

TEST_F(SheetScale, ReachesViewsWithAScaleOfTheirOwnAndTheDrawingOfEveryModel) {
    drawing.SetCurrentSheet(2);
    Enter(L"0.25");
    EXPECT_EQ(host.Run("SameScale"), PRO_TK_NO_ERROR);
    // The last view follows the second sheet, which keeps its scale: the first is set, whichever is current.
    EXPECT_EQ(ViewScales(), (std::vector<double>{0.25, 0.25, 0.25, 1.0}));
    EXPECT_FALSE(drawing.Views()[0].scale);
    EXPECT_EQ(drawing.Views()[1].scale, 0.25);
    EXPECT_EQ(drawing.ScaleOn(1, pump), 0.25);
    EXPECT_EQ(drawing.ScaleOn(1, nut), 0.25);
    EXPECT_EQ(drawing.ScaleOn(2, pump), 1.0);
    EXPECT_EQ(Regenerations(1), 1);
    EXPECT_EQ(Regenerations(2), 0);
    EXPECT_EQ(drawing.CurrentSheet(), 2);
    EXPECT_EQ(Messages(host), Texts{});
}

TEST_F(SheetScale, ComesFromTheCurrentSheet) {
    drawing.SetCurrentSheet(2);
    drawing.SetScaleOn(2, pump, 0.125);
    EXPECT_EQ(host.Run("KvUpdateSheetScale"), PRO_TK_NO_ERROR);
    EXPECT_EQ(drawing.Views()[1].scale, 0.125);
    EXPECT_EQ(drawing.ScaleOn(1, pump), 0.125);
    EXPECT_EQ(drawing.ScaleOn(2, nut), 1.0);
    EXPECT_EQ(Regenerations(1), 0);
    EXPECT_EQ(Regenerations(2), 1);
}

TEST_F(SheetScale, ComesFromTheMainView) {
    EXPECT_EQ(host.Run("KvUpdateMainViewScale"), PRO_TK_NO_ERROR);
    EXPECT_EQ(drawing.ScaleOn(1, pump), 0.5);
    EXPECT_EQ(drawing.ScaleOn(1, nut), 0.5);
    EXPECT_EQ(Regenerations(1), 1);

    // Without children it is no main view: the first view counts.
    drawing.Views()[2].parent = 0;
    drawing.SetScaleOn(1, pump, 2);
    host.Run("KvUpdateMainViewScale");
    EXPECT_EQ(drawing.Views()[1].scale, 2);
}

TEST_F(SheetScale, IsNotChangedWithoutANumberAboveZero) {
    for (const PromptAnswer::Kind kind : {PromptAnswer::Kind::kEnter, PromptAnswer::Kind::kEscape}) {
        host.AnswerPrompt({kind, L""});
        EXPECT_NE(host.Run("SameScale"), PRO_TK_NO_ERROR);
    }
    EXPECT_EQ(Messages(host), Texts{});
    for (const wchar_t* text : {L"0", L"-2"}) {
        Enter(text);
        host.Run("SameScale");
    }
    EXPECT_EQ(Messages(host).size(), 2u);
    EXPECT_EQ(ViewScales(), (std::vector<double>{1, 0.5, 0.5, 1}));
    EXPECT_EQ(Regenerations(1), 0);
}

TEST_F(SheetScale, RecordsWhatTheHostRefuses) {
    drawing.SetReadOnly();
    Enter(L"3");
    host.Run("SameScale");
    EXPECT_EQ(test::LastReport(host).Count(L"失败"), 5u);
    EXPECT_NE(host.State().user.messageArea.back().find(L"失败 4"), std::wstring::npos);
    EXPECT_EQ(host.Calls("ProDrawingCurrentSheetSet"), 0);
}

TEST_F(SheetScale, CostsAtMostFourCallsAView) {
    for (int i = 0; i < 100; ++i) drawing.AddView(pump, 1);
    for (sim::DrawingView& view : drawing.Views())
        if (!SimModel::FollowsParent(view)) view.scale = 3;
    host.Run("KvUpdateSheetScale");
    EXPECT_LE(host.Calls(), 4 * 104 + 20);
}

TEST(SheetScaleWithoutViews, EndsSilently) {
    SimHost host;
    SimModel& drawing = host.AddDrawing(L"EMPTY", {L"A4"});
    host.Open(drawing);
    host.Run("KvUpdateSheetScale");
    host.Run("KvUpdateMainViewScale");
    EXPECT_EQ(drawing.Sheets()[0].regenerations, 0);
    EXPECT_EQ(Messages(host), Texts{});
}

// A host that scales and regenerates only the sheet that it shows.
class SheetScaleAsDocumented : public SheetScale {
protected:
    static HostSetup Documented() {
        HostSetup setup;
        setup.asDocumented = true;
        return setup;
    }
    SheetScaleAsDocumented() : SheetScale(Documented()) {}
};

TEST_F(SheetScaleAsDocumented, ReachesTheOtherSheetsAndComesBack) {
    drawing.Views()[0].scale = 8;
    drawing.Views()[3].scale = 8;
    drawing.SetCurrentSheet(2);
    Enter(L"0.25");
    EXPECT_EQ(host.Run("SameScale"), PRO_TK_NO_ERROR);
    EXPECT_EQ(ViewScales(), (std::vector<double>{0.25, 0.25, 0.25, 0.25}));
    EXPECT_EQ(Regenerations(1), 1);
    EXPECT_EQ(drawing.CurrentSheet(), 2);
}

// ---- The check

constexpr wchar_t kNoneFound[] = L"当前工作目录中工程图已检查完毕，不存在主视图比例与页面比例不符情况。";
constexpr wchar_t kFound[] = L"以下工程图中存在主视图比例与页面比例不符，请检查：";

class ScaleCheck : public testing::Test {
protected:
    // A drawing in a file, with a view of these scales on each sheet and the sheets at 0.2.
    void Store(const wchar_t* name, const std::vector<std::vector<double>>& scales) {
        SimModel& drawing = host.AddDrawing(name, std::vector<std::wstring>(scales.size(), L"A3"));
        int sheet = 0;
        for (const std::vector<double>& views : scales) {
            drawing.Sheets()[static_cast<std::size_t>(sheet)].scale = 0.2;
            ++sheet;
            for (const double scale : views) {
                drawing.AddView(pump, sheet);
                drawing.Views().back().scale = scale;
            }
        }
        host.Store(drawing);
    }

    SimHost host;
    SimModel& pump = host.AddPart(L"PUMP");
};

TEST_F(ScaleCheck, ListsASheetOnceAndEachSheetForItself) {
    Store(L"A", {{0.2, 0.5, 0.7}, {0.2}, {2}});
    Store(L"B", {{0.2}});
    Store(L"图", {{0.1}});
    EXPECT_EQ(host.Run("KvDrwScaleCheck"), PRO_TK_NO_ERROR);
    EXPECT_EQ(Messages(host),
              Texts{kFound + std::wstring(L"\n图纸'A' 第1页\n图纸'A' 第3页\n图纸'图' 第1页")});
    const test::Report report = test::LastReport(host);
    ASSERT_FALSE(report.rows.empty());
    EXPECT_EQ(report.rows[0].at(L"原因"), L"第1页：主视图比例 0.5，页面比例 0.2");
    EXPECT_EQ(report.rows.size(), 5u);
    for (SimModel* model : host.State().models.All())
        EXPECT_TRUE(model->Kind() != ModelKind::kDrawing || !model->IsModified());
    EXPECT_EQ(test::FilesIn(host.WorkingDirectory()).size(), 4u);
}

TEST_F(ScaleCheck, TakesScalesAsEqualUpToTheTolerance) {
    Store(L"EQUAL", {{0.2 + 1e-7, 0.2 - 1e-7, 0.2 + 0.5e-7}});
    EXPECT_EQ(host.Run("KvDrwScaleCheck"), PRO_TK_NO_ERROR);
    EXPECT_EQ(Messages(host), Texts{kNoneFound});
    Store(L"OTHER", {{0.2 + 2e-7}, {0.2 - 2e-7}});
    host.Run("KvDrwScaleCheck");
    EXPECT_EQ(host.LastMessage(), kFound + std::wstring(L"\n图纸'OTHER' 第1页\n图纸'OTHER' 第2页"));
}

TEST_F(ScaleCheck, ComparesGeneralViewsWithTheScaleOfTheirModel) {
    SimModel& nut = host.AddPart(L"NUT");
    SimModel& drawing = host.AddDrawing(L"D", {L"A3", L"A3"}, {&pump, &nut});
    drawing.SetScaleOn(1, nut, 4);
    drawing.Views()[1].scale = 4;
    drawing.AddView(pump, 2);
    drawing.Views().back().scale = 9;
    drawing.Views().back().type = ViewType::kDetail;
    drawing.SetCurrentSheet(2);
    host.Open(drawing);
    host.State().models.Save(drawing);
    host.Run("KvDrwScaleCheck");
    EXPECT_EQ(Messages(host), Texts{kNoneFound});
    EXPECT_EQ(drawing.CurrentSheet(), 2);

    drawing.Views()[1].scale = 1;
    host.Run("KvDrwScaleCheck");
    EXPECT_EQ(host.LastMessage(), kFound + std::wstring(L"\n图纸'D' 第1页"));
}

TEST_F(ScaleCheck, TellsFirstWhatCouldNotBeChecked) {
    Store(L"GOOD", {{0.2}});
    host.AddDrawingFile(L"EMPTY", {L"A3"});
    test::WriteBytes(host.WorkingDirectory() / "bad.drw.1", "{");
    SimModel& lost = host.AddDrawing(L"LOST", {L"A3"});
    host.Store(lost.AddMissingView(L"gone.prt", 1));
    host.Run("KvDrwScaleCheck");
    EXPECT_EQ(Messages(host), (Texts{L"以下工程图未能检查：\nbad\nlost", kNoneFound}));
}

TEST_F(ScaleCheck, TellsOfADirectoryWithoutDrawings) {
    EXPECT_EQ(host.Run("KvDrwScaleCheck"), PRO_TK_E_NOT_FOUND);
    EXPECT_EQ(Messages(host), Texts{L"当前工作目录下无工程图"});
}

TEST_F(ScaleCheck, CutsTheBoxAndKeepsTheReportWhole) {
    for (int i = 10; i < 60; ++i) Store((L"D" + std::to_wstring(i)).c_str(), {{7}});
    host.Run("KvDrwScaleCheck");
    const std::wstring text = host.LastMessage();
    EXPECT_NE(text.find(L"\n图纸'D49' 第1页\n……\n共50页"), std::wstring::npos);
    EXPECT_EQ(text.find(L"D50'"), std::wstring::npos);
    EXPECT_EQ(test::LastReport(host).rows.size(), 50u);
    // A file's name, its drawing, the views and their number, the sheets, the current one, the name.
    EXPECT_LE(host.Calls(), 50 * (6 + 2 + 5) + 20);
}

TEST_F(ScaleCheck, CanBeStopped) {
    for (const wchar_t* name : {L"A", L"B", L"C", L"D", L"E", L"F"}) Store(name, {{0.2}});
    host.WatchProgress(600, 3);
    host.Run("KvDrwScaleCheck");
    ASSERT_EQ(Messages(host).size(), 1u);
    EXPECT_NE(host.LastMessage().find(L"操作已取消"), std::wstring::npos);
}

}  // namespace
