// KvRemoveCons: components lose their constraints and stay where they are.

#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <ProObjects.h>

#include "plugin/assembly_fixture.h"
#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/reports.h"

namespace {

using sim::Feature;
using sim::Matrix;
using sim::Pick;
using sim::SimDialog;
using sim::SimHost;
using sim::SimModel;
using sim::TranslationMatrix;
using test::LastReport;
using test::Messages;
using test::Texts;
using test::Whole;

constexpr int kCsysType = 6;
constexpr int kFixType = 13;
constexpr char kTies[] = "comp_list";

// A quarter turn about z, and a shift that no double holds exactly.
constexpr Matrix kTurned = {{{0, 1, 0, 0}, {-1, 0, 0, 0}, {0, 0, 1, 0}, {0.1, 123456.7, -30, 1}}};

// PUMP holds BOLT (1, turned, with two constraints; it was first placed elsewhere), NUT (2, movable) and SUB
// (3), in which PIN is the component 1.
class RemoveCons : public testing::Test {
protected:
    RemoveCons() {
        sim::Placing placing;
        placing.placement = kTurned;
        pump.Place(host.AddPart(L"BOLT"), placing).Place(host.AddPart(L"NUT"));
        pump.Place(host.AddAssembly(L"SUB").Place(host.AddPart(L"PIN")));
        At(1).constraints = {{0, 0, 0}, {4, 0, 0}};
        At(1).initial = TranslationMatrix(5, 5, 5);
        At(2).constraints = {{kCsysType, 0, 0}};
        At(2).isMovable = true;
        host.Open(pump);
    }
    Feature& At(int id) { return *pump.FindFeature(id); }
    // Selected as a person does it: the model by the path to it.
    void SelectComponents(const std::vector<int>& ids) {
        std::vector<Pick> picks;
        for (const int id : ids) {
            picks.push_back(Whole(*At(id).component));
            picks.back().path = {id};
        }
        host.Select(picks);
    }
    void Run(const std::function<void(SimDialog&)>& user) {
        host.OnDialog("KvRemoveCons", user);
        EXPECT_EQ(host.Run("KvRemoveCons"), PRO_TK_NO_ERROR);
    }
    std::vector<int> Kinds(int id) {
        std::vector<int> kinds;
        for (const sim::ComponentConstraint& constraint : At(id).constraints)
            kinds.push_back(constraint.type);
        return kinds;
    }

    SimHost host;
    SimModel& pump = host.AddAssembly(L"PUMP");
};

TEST_F(RemoveCons, FixesWhatIsTickedAndLeavesMovableComponentsToTheUser) {
    SelectComponents({1, 2, 1});
    Run([](SimDialog& dialog) {
        EXPECT_EQ(dialog.Rows(kTies).size(), 2U) << "selected twice, listed once";
        EXPECT_EQ(dialog.Cell(kTies, "1", "constraints"), L"匹配、插入");
        EXPECT_EQ(dialog.Cell(kTies, "1", "count"), L"2");
        EXPECT_TRUE(dialog.IsChecked("comp_tick1"));
        EXPECT_FALSE(dialog.IsChecked("comp_tick2"));
        EXPECT_NE(dialog.Cell(kTies, "2", "note"), L"");
        dialog.Press("ApplyBt");
        EXPECT_EQ(dialog.Cell(kTies, "1", "constraints"), L"固定");
        EXPECT_FALSE(dialog.IsChecked("comp_tick1")) << "a second press changes nothing";
        dialog.Press("ApplyBt");
    });
    EXPECT_EQ(Kinds(1), std::vector<int>{kFixType});
    EXPECT_EQ(At(1).placement, kTurned);
    EXPECT_EQ(Kinds(2), std::vector<int>{kCsysType});
    const test::Report report = LastReport(host);
    ASSERT_EQ(report.Done(L"原因").size(), 1U);
    EXPECT_EQ(report.Done(L"原因")[0], L"原约束：匹配、插入");
    EXPECT_EQ(report.Count(L"跳过"), 1U);
    EXPECT_EQ(Messages(host), Texts{L"\t请先勾选需要移除约束的元件\t"});
}

TEST_F(RemoveCons, FreedComponentsStayWhereTheyAre) {
    SelectComponents({1, 2, 3});
    Run([](SimDialog& dialog) {
        dialog.Choose("RemoveWay", L"只移除约束").Check("comp_tick2").Press("ApplyBt");
    });
    for (const int id : {1, 2, 3}) {
        EXPECT_TRUE(At(id).constraints.empty());
        EXPECT_EQ(At(id).initial.value_or(At(id).placement), At(id).placement)
            << "also when it is regenerated";
    }
    EXPECT_EQ(At(1).placement, kTurned);
    EXPECT_EQ(LastReport(host).Count(L"跳过"), 1U) << "SUB had no constraint";
    EXPECT_TRUE(pump.IsModified());
}

TEST_F(RemoveCons, TellsWhyComponentsAreLeftOut) {
    At(1).isFrozen = true;
    At(2).status = sim::kFeatureSuppressed;
    At(3).isUnplaced = true;
    pump.AddFeature(923);
    SimModel& pin = *test::InMemory(host, L"PIN");
    Pick below = Whole(pin);
    below.path = {3, 1};
    std::vector<Pick> picks = {below, test::ItemOf(pump, PRO_FEATURE, 4)};
    for (const int id : {1, 2, 3}) picks.push_back(test::ItemOf(pump, PRO_FEATURE, id));
    host.Select(picks);
    Run([](SimDialog& dialog) {
        const std::vector<std::wstring> reasons = {L"不是激活组件的元件", L"不是元件", L"已冻结", L"已隐含",
                                                   L"未放置"};
        ASSERT_EQ(dialog.Rows(kTies).size(), reasons.size());
        for (std::size_t i = 0; i < reasons.size(); ++i)
            EXPECT_EQ(dialog.Cell(kTies, std::to_string(i + 1), "note"), reasons[i]);
        dialog.Press("ApplyBt");
    });
    EXPECT_EQ(Kinds(1).size(), 2U);
    EXPECT_EQ(Kinds(2).size(), 1U);
}

TEST_F(RemoveCons, ReportsWhatTheHostDoesNotLetGo) {
    At(2).constraints[0].isOfInterface = true;
    SelectComponents({1, 2});
    host.State().report.Arm({"ProAsmcompPositionSet", 1, PRO_TK_GENERAL_ERROR});
    Run([](SimDialog& dialog) {
        dialog.Choose("RemoveWay", L"只移除约束").Check("comp_tick2").Press("ApplyBt");
    });
    EXPECT_EQ(Kinds(1), std::vector<int>{kFixType}) << "else it would go to where it was first placed";
    EXPECT_EQ(At(1).placement, kTurned);
    const test::Report report = LastReport(host);
    EXPECT_EQ(report.Count(L"失败"), 2U);
    EXPECT_EQ(report.Reason(L"NUT (#2)"), L"接口约束不能移除，元件仍受其约束");
    ASSERT_FALSE(report.rows.empty());
    EXPECT_EQ(report.rows[0].at(L"原因"), L"原约束：匹配、插入") << "nothing else knows them any more";
}

TEST_F(RemoveCons, ReadOnlyAssembliesAreLeftAsTheyAre) {
    pump.SetReadOnly();
    SelectComponents({1});
    Run([](SimDialog& dialog) {
        dialog.Press("ApplyBt").Check("comp_tick1").Choose("RemoveWay", L"只移除约束").Press("ApplyBt");
    });
    EXPECT_EQ(Kinds(1).size(), 2U);
    EXPECT_EQ(LastReport(host).Reason(L"BOLT (#1)"), L"模型只读或被锁定");
}

TEST_F(RemoveCons, NeedsComponentsOfAnAssembly) {
    EXPECT_NE(host.Run("KvRemoveCons"), PRO_TK_NO_ERROR);
    EXPECT_EQ(host.LastMessage(), L"\t请先选择需要移除约束的元件\t");
    SelectComponents({1});
    host.Activate(*At(1).component);
    EXPECT_NE(host.Run("KvRemoveCons"), PRO_TK_NO_ERROR);
    EXPECT_EQ(host.LastMessage(), L"\t当前激活的模型不是组件/制造，无法移除元件约束\t");
}

}  // namespace
