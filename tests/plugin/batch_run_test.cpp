// What every run over many models has in common: the progress window, cancelling, and the report.

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/plugin_home.h"
#include "support/reports.h"

namespace {

namespace fs = std::filesystem;
using sim::ProgressSight;
using sim::SimDialog;
using sim::SimHost;
using sim::SimModel;
using test::Messages;
using test::Report;
using test::Texts;

// PUMP holds parts BOLT1 to BOLT5; Add writes COATING into all six.
void ArrangeSix(SimHost& host) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    for (const wchar_t* name : {L"BOLT1", L"BOLT2", L"BOLT3", L"BOLT4", L"BOLT5"})
        pump.Place(host.AddPart(name));
    host.Open(pump);
    host.OnDialog("KvParams", [](SimDialog& dialog) {
        dialog.Choose("TypeRadio", L"AsmAndPart").Type("ParaName", L"COATING").Type("ParaValue", L"zinc");
        dialog.Press("Add").Press("Close");
    });
}

int ModelsWithCoating(SimHost& host) {
    int count = 0;
    for (const SimModel* model : host.State().models.All())
        if (model->FindParameter(L"COATING") != nullptr) ++count;
    return count;
}

TEST(Progress, AShortRunShowsNoWindow) {
    SimHost host;
    ArrangeSix(host);
    host.WatchProgress(100);
    host.Run("KvParams");
    EXPECT_EQ(ModelsWithCoating(host), 6);
    EXPECT_TRUE(host.State().user.progress.sights.empty());
}

TEST(Progress, ALongRunTellsHowFarItIs) {
    SimHost host;
    ArrangeSix(host);
    host.WatchProgress(600);
    host.Run("KvParams");
    EXPECT_EQ(ModelsWithCoating(host), 6);
    const std::vector<ProgressSight>& sights = host.State().user.progress.sights;
    ASSERT_FALSE(sights.empty());
    for (const ProgressSight& sight : sights) {
        ASSERT_EQ(sight.texts.size(), 4u);
        EXPECT_EQ(sight.texts[0], L"批量参数");
        EXPECT_TRUE(sight.texts[1].ends_with(L" / 6")) << testing::PrintToString(sight.texts[1]);
        EXPECT_FALSE(sight.texts[2].empty()) << "the model in work";
        // Before the first model is finished nobody can tell.
        const bool told = sight.texts[3].starts_with(L"剩余时间约 0:0");
        EXPECT_NE(told, sight.texts[1] == L"0 / 6") << testing::PrintToString(sight.texts[3]);
        EXPECT_EQ(sight.buttons, Texts{L"取消"});
        EXPECT_FALSE(sight.isActive);
    }
    EXPECT_EQ(Messages(host), Texts{});
}

TEST(Progress, CancelFinishesTheModelInWorkAndTellsWhatIsLeft) {
    SimHost host;
    ArrangeSix(host);
    host.WatchProgress(600, 3);
    host.Run("KvParams");
    EXPECT_EQ(ModelsWithCoating(host), 4);
    EXPECT_EQ(Messages(host), Texts{L"\t操作已取消\t\n\n已完成：4\n失败：0\n未处理：2"});
    const Report report = test::LastReport(host);
    EXPECT_EQ(report.Count(L"完成"), 4u);
    EXPECT_EQ(report.Count(L"未处理"), 2u);
}

TEST(Progress, GoesOnWhereNoWindowCanBeMade) {
    SimHost host;
    ArrangeSix(host);
    host.WatchProgress(600);
    host.State().user.progress.windowsFail = true;
    host.Run("KvParams");
    EXPECT_EQ(ModelsWithCoating(host), 6);
    EXPECT_TRUE(host.State().user.progress.sights.empty());
}

TEST(RunReport, HoldsALineForEachModelWithTheReason) {
    SimHost host;
    ArrangeSix(host);
    host.State().models.Find(L"BOLT2", sim::ModelKind::kPart)->SetParameter(L"COATING", std::wstring(L"old"));
    host.State().models.Find(L"BOLT4", sim::ModelKind::kPart)->SetReadOnly();
    host.Run("KvParams");

    const Report report = test::LastReport(host);
    EXPECT_TRUE(report.name.starts_with(L"KvParams_")) << testing::PrintToString(report.name);
    EXPECT_EQ(report.Head(L"命令"), L"KvParams");
    EXPECT_FALSE(report.Head(L"主程序版本").empty());
    EXPECT_EQ(test::PathText(report.Head(L"工作目录")), test::PathText(host.WorkingDirectory()));
    EXPECT_FALSE(report.Head(L"用时（秒）").empty());
    EXPECT_EQ(report.rows.size(), 6u);
    EXPECT_EQ(report.Count(L"失败"), 2u);
    EXPECT_EQ(report.Reason(L"BOLT2"), L"模型中已有同名参数");
    EXPECT_EQ(report.Reason(L"BOLT4"), L"模型只读或被锁定");
    EXPECT_EQ(report.Count(L"完成"), 4u);
}

TEST(RunReport, AReportThatCannotBeWrittenStopsNothing) {
    SimHost host;
    ArrangeSix(host);
    host.State().user.localData = host.WorkingDirectory() / "gone" / "further";
    host.Run("KvParams");
    EXPECT_EQ(ModelsWithCoating(host), 6);
    EXPECT_EQ(Messages(host), Texts{});
}

TEST(RunReport, OnlyTheNewestHundredStay) {
    SimHost host;
    const fs::path folder = host.State().user.localData / "Korvane" / "reports";
    fs::create_directories(folder);
    for (int i = 0; i < 101; ++i)
        test::WriteBytes(folder / (L"KvBom_20200101-000000-" + std::to_wstring(100 + i) + L"_1.csv"), "");
    test::WriteBytes(folder / L"KvBom_2020.csv", "the user's own");
    ArrangeSix(host);
    host.Run("KvParams");
    EXPECT_FALSE(fs::exists(folder / L"KvBom_20200101-000000-100_1.csv"));
    EXPECT_FALSE(fs::exists(folder / L"KvBom_20200101-000000-101_1.csv"));
    EXPECT_TRUE(fs::exists(folder / L"KvBom_20200101-000000-102_1.csv"));
    EXPECT_TRUE(fs::exists(folder / L"KvBom_2020.csv"));
}

}  // namespace
