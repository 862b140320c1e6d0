// What every run over many models has in common: the progress window, cancelling, and the report.

#include <algorithm>
#include <filesystem>
#include <functional>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>

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

// PUMP holds parts BOLT1 to BOLT5; Add writes COATING into all six that are not excluded.
void ArrangeSix(SimHost& host, const std::wstring& excluded = L"") {
    SimModel& pump = host.AddAssembly(L"PUMP");
    for (const wchar_t* name : {L"BOLT1", L"BOLT2", L"BOLT3", L"BOLT4", L"BOLT5"})
        pump.Place(host.AddPart(name));
    host.Open(pump);
    host.OnDialog("KvParams", [excluded](SimDialog& dialog) {
        dialog.Choose("TypeRadio", L"AsmAndPart").Type("ParaName", L"COATING").Type("ParaValue", L"zinc");
        dialog.Type("InputKeyWords", excluded).Press("Add").Press("Close");
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

// The models come in the order of their handles, which is any order: of four, one to three are among the
// excluded.
TEST(Progress, CancelFinishesTheModelInWorkAndTellsWhatIsLeft) {
    SimHost host;
    ArrangeSix(host, L"BOLT1,BOLT2,BOLT3");
    host.WatchProgress(600, 3);
    host.Run("KvParams");
    EXPECT_EQ(Messages(host), Texts{L"\t操作已取消\t\n\n已完成：4\n失败：0\n未处理：2"});
    const Report report = test::LastReport(host);
    const auto changed = report.Count(L"完成");
    EXPECT_EQ(ModelsWithCoating(host), static_cast<int>(changed));
    EXPECT_GE(changed, 1u);
    EXPECT_LE(changed, 3u);
    EXPECT_EQ(report.Count(L"跳过"), 4 - changed);
    EXPECT_EQ(report.Count(L"未处理"), 2u);
}

// An item of several steps failed when one of them did, whatever came after it.
TEST(Progress, CountsAnItemAsItsWorstStep) {
    SimHost host;
    SimModel& pump = host.AddAssembly(L"PUMP");
    for (const wchar_t* name : {L"BOLT1", L"BOLT2", L"BOLT3"}) {
        pump.Place(host.AddPart(name));
        host.AddDrawingFile(name, {L"A4"});
    }
    host.Open(pump);
    host.AnswerFolder(test::MakeFolder(host, "backup").wstring());
    host.State().report.Arm(sim::Fault{"ProMdlnameBackup", 1, PRO_TK_CANT_WRITE});
    host.WatchProgress(600, 1);
    host.Run("KvBackup");
    EXPECT_EQ(Messages(host), Texts{L"\t操作已取消\t\n\n已完成：1\n失败：1\n未处理：1"});
}

TEST(Progress, ComesAfterASecond) {
    SimHost host;
    ArrangeSix(host);
    host.WatchProgress(400);
    host.Run("KvParams");
    EXPECT_FALSE(host.State().user.progress.sights.empty());
}

TEST(Progress, ReckonsFromTheMeanTime) {
    SimHost slow;
    ArrangeSix(slow);
    slow.WatchProgress(60'000);
    slow.Run("KvParams");
    const auto isAfterFirst = [](const ProgressSight& sight) { return sight.texts[1] == L"1 / 6"; };
    const std::vector<ProgressSight>& sights = slow.State().user.progress.sights;
    const auto sight = std::ranges::find_if(sights, isAfterFirst);
    ASSERT_NE(sight, sights.end());
    EXPECT_EQ(sight->texts[3], L"剩余时间约 15:00");
}

TEST(Progress, IsUpdatedTenTimesASecondAtMost) {
    SimHost host;
    ArrangeSix(host);
    for (int i = 0; i < 100; ++i)
        host.State().models.current->Place(host.AddPart(L"NUT" + std::to_wstring(i)));
    host.WatchProgress(20);
    host.Run("KvParams");
    std::set<std::wstring> counts;
    for (const ProgressSight& sight : host.State().user.progress.sights) counts.insert(sight.texts[1]);
    EXPECT_GE(counts.size(), 2u);
    EXPECT_LE(counts.size(), host.State().user.progress.sights.size() / 5 + 2);
}

// ---- The progress window among the other windows of its thread

class ProgressAmongWindows : public testing::Test {
protected:
    void SetUp() override {
        ASSERT_NE(window, nullptr);
        SetActiveWindow(window);
        ArrangeSix(host);
    }
    ~ProgressAmongWindows() override {
        host.Terminate();
        DestroyWindow(window);
    }
    // What is waiting for a window of the thread; for none of them: the end of the program.
    static int Waiting(UINT message) {
        MSG found = {};
        int count = 0;
        while (PeekMessageW(&found, nullptr, message, message, PM_REMOVE) && found.message == message)
            ++count;
        return count;
    }

    HWND window = CreateWindowExW(0, L"STATIC", L"", WS_POPUP | WS_VISIBLE, 0, 0, 9, 9, nullptr, nullptr,
                                  nullptr, nullptr);
    SimHost host;
};

TEST_F(ProgressAmongWindows, LeavesTheEndOfTheProgramToTheHost) {
    PostQuitMessage(7);
    host.WatchProgress(600, 3);
    host.Run("KvParams");
    EXPECT_EQ(ModelsWithCoating(host), 6) << "nothing is pumped any more, the button neither";
    EXPECT_EQ(Waiting(WM_QUIT), 1);
}

TEST_F(ProgressAmongWindows, LeavesTheMessagesOfOthersWhereTheyAre) {
    host.WatchProgress(600);
    host.State().user.progress.onSight = [this](void*) {
        PostMessageW(window, WM_KEYDOWN, VK_ESCAPE, 0);
        EXPECT_EQ(GetActiveWindow(), window);
    };
    host.Run("KvParams");
    EXPECT_EQ(ModelsWithCoating(host), 6);
    EXPECT_GE(Waiting(WM_KEYDOWN), 3);
    ASSERT_FALSE(host.State().user.progress.sights.empty());
    EXPECT_TRUE(host.State().user.progress.sights[0].isOwned);
}

TEST_F(ProgressAmongWindows, IsStoppedByEscapeThatComesToIt) {
    host.WatchProgress(600);
    host.State().user.progress.onSight = [](void* progress) {
        PostMessageW(static_cast<HWND>(progress), WM_KEYDOWN, VK_ESCAPE, 0);
    };
    host.Run("KvParams");
    EXPECT_LT(ModelsWithCoating(host), 6);
    EXPECT_TRUE(host.LastMessage().starts_with(L"\t操作已取消\t"));
    host.Terminate();
    WNDCLASSEXW left = {};
    left.cbSize = sizeof(left);
    EXPECT_FALSE(GetClassInfoExW(GetModuleHandleW(L"korvane5.1C9.dll"), L"KorvaneProgress", &left));
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
    const fs::path file = host.State().user.localData / "Korvane" / "reports" / report.name;
    EXPECT_TRUE(test::ReadBytes(file).starts_with("\xEF\xBB\xBF"));
    EXPECT_TRUE(report.name.starts_with(L"KvParams_")) << testing::PrintToString(report.name);
    EXPECT_EQ(report.Head(L"命令"), L"KvParams");
    EXPECT_FALSE(report.Head(L"主程序版本").empty());
    EXPECT_EQ(test::PathText(report.Head(L"工作目录")), test::PathText(host.WorkingDirectory()));
    EXPECT_FALSE(report.Head(L"用时（秒）").empty());
    EXPECT_EQ(report.rows.size(), 6u);
    // In the order of the host's handles.
    std::vector<const SimModel*> worked;
    for (const auto& row : report.rows)
        for (const SimModel* model : host.State().models.All())
            if (model->Name() == row.at(L"模型")) worked.push_back(model);
    EXPECT_TRUE(std::ranges::is_sorted(worked, std::less<>()));
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
