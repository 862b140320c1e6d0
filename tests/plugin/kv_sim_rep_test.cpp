// KvSimRep: the list, the rules, and the representation from before.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include <windows.h>

#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/reports.h"

namespace {

using sim::Pick;
using sim::RepAction;
using sim::Representation;
using sim::SimDialog;
using sim::SimHost;
using sim::SimModel;
using test::Texts;

using Path = std::vector<int>;

// PUMP        1 SUB   2 SUB   3 STD_NUT (in inches)
//   SUB         1 BOLT  2 BASE
class Reps : public testing::Test {
protected:
    Reps() {
        bolt.AddBlock(6, 2, 3);                                                      // diagonal 7
        base.AddBlock(600, 20, 30);                                                  // diagonal 601
        nut.AddBlock(1, 1, 1).SetPrincipalUnits(L"Inch Pound Second (IPS)", false);  // diagonal 44
        sub.Place(bolt).Place(base);
        pump.Place(sub, 2).Place(nut);
        host.Open(pump);
    }
    void Play(const std::function<void(SimDialog&)>& play) { host.OnDialog("KvSimRep", play); }
    void Run() { EXPECT_EQ(host.Run("KvSimRep"), PRO_TK_NO_ERROR); }
    // One representation by a rule that `fill` chooses.
    void Make(const std::wstring& name, const std::function<void(SimDialog&)>& fill) {
        Play([&](SimDialog& dialog) {
            fill(dialog);
            dialog.Type("RepName", name).Press("CreateRep").Press("Close");
        });
        Run();
    }
    std::vector<Path> PathsOf(const std::wstring& name) {
        std::vector<Path> paths;
        if (const Representation* found = pump.FindRepresentation(name))
            for (const sim::RepItem& item : found->items) paths.push_back(item.path);
        return paths;
    }
    int IdOf(const std::wstring& name) { return pump.FindRepresentation(name)->id; }

    SimHost host;
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& sub = host.AddAssembly(L"SUB");
    SimModel& bolt = host.AddPart(L"BOLT");
    SimModel& base = host.AddPart(L"BASE");
    SimModel& nut = host.AddPart(L"STD_NUT");
};

TEST_F(Reps, LeavesOutOrKeepsWhatIsSelected) {
    host.Select({{&bolt, 0, 0, {2, 1}}, {&nut, 0, 0, {3}}});
    Make(L"OUT", [](SimDialog& dialog) { dialog.Choose("RuleRadio", L"排除所选元件"); });
    EXPECT_EQ(PathsOf(L"OUT"), (std::vector<Path>{{2, 1}, {3}}));
    EXPECT_EQ(pump.ActiveRepresentation(), IdOf(L"OUT"));
    EXPECT_TRUE(pump.IsLeftOut({3}));
    EXPECT_EQ(host.State().user.messageArea.back(), L"简化表示 OUT：排除 2 个元件，保留 5 个");
    Make(L"KEEP", [](SimDialog& dialog) { dialog.Choose("RuleRadio", L"仅保留所选元件"); });
    EXPECT_EQ(pump.FindRepresentation(L"KEEP")->usual, RepAction::kExclude);
    EXPECT_FALSE(pump.IsLeftOut({2, 1}));
    EXPECT_TRUE(pump.IsLeftOut({2, 2}));
}

TEST_F(Reps, RulesLookAtTheMasterWhateverIsActive) {
    Make(L"FIRST", [](SimDialog& dialog) {
        dialog.Choose("RuleRadio", L"按名称前缀排除").Type("RepPrefixes", L" std_，none").Press("CountRule");
        EXPECT_EQ(dialog.Text("RuleCount"), L"排除 1 个元件，保留 6 个");
    });
    ASSERT_EQ(PathsOf(L"FIRST"), (std::vector<Path>{{3}}));
    // The nut is left out now, and counts all the same. 7 mm and 44 mm against some 600.
    Make(L"SMALL", [](SimDialog& dialog) {
        dialog.Choose("RuleRadio", L"排除小零件").Type("SmallPercent", L"5").Press("CountRule");
        EXPECT_EQ(dialog.Text("RuleCount"), L"排除 2 个元件，保留 5 个");
        dialog.Type("SmallPercent", L"8");
    });
    EXPECT_EQ(PathsOf(L"SMALL"), (std::vector<Path>{{1, 1}, {2, 1}, {3}})) << "the nut by its own inches";
}

TEST_F(Reps, CountingLeavesTheActiveOneActive) {
    pump.ActivateRepresentation(
        pump.AddRepresentation({0, L"OLD", RepAction::kInclude, {{{1}, RepAction::kExclude}}}));
    Play([&](SimDialog& dialog) {
        EXPECT_EQ(dialog.Cell("rep_list", "1", "name"), L"主表示");
        EXPECT_EQ(dialog.Cell("rep_list", "2", "state"), L"当前");
        dialog.Choose("RuleRadio", L"按名称前缀排除").Type("RepPrefixes", L"BOLT").Press("CountRule");
        EXPECT_EQ(dialog.Text("RuleCount"), L"排除 2 个元件，保留 5 个");
        dialog.Press("Close");
    });
    Run();
    EXPECT_EQ(pump.ActiveRepresentation(), IdOf(L"OLD"));
}

TEST_F(Reps, AFailureBringsBackWhatWasActive) {
    pump.ActivateRepresentation(
        pump.AddRepresentation({0, L"OLD", RepAction::kInclude, {{{1}, RepAction::kExclude}}}));
    host.State().report.Arm({"ProSimprepCreate", 1, PRO_TK_CANT_MODIFY});
    Make(L"NEW", [](SimDialog& dialog) {
        dialog.Choose("RuleRadio", L"按名称前缀排除").Type("RepPrefixes", L"BOLT");
    });
    EXPECT_EQ(pump.ActiveRepresentation(), IdOf(L"OLD"));
    EXPECT_EQ(host.LastMessage(), L"\t无法创建简化表示：模型只读或被锁定\t");
    EXPECT_EQ(pump.Representations().size(), 1u);
}

TEST_F(Reps, RefusesNamesAndRulesThatAreNone) {
    pump.AddRepresentation({0, L"OLD", RepAction::kInclude, {{{1}, RepAction::kExclude}}});
    const auto byPrefix = [](SimDialog& dialog) {
        dialog.Choose("RuleRadio", L"按名称前缀排除").Type("RepPrefixes", L"BOLT");
    };
    struct Case {
        std::wstring name;
        std::function<void(SimDialog&)> fill;
        const wchar_t* message;
    };
    const Case cases[] = {
        {L"A B", byPrefix, L"\t名称须为1到31个字符，不能有空格！\t"},
        {L"", byPrefix, L"\t名称须为1到31个字符，不能有空格！\t"},
        {L"old", byPrefix, L"\t已有同名简化表示；要替换它请勾选“替换”！\t"},
        {L"N", [](SimDialog& d) { d.Choose("RuleRadio", L"排除所选元件"); },
         L"\t没有选中的元件，请先选取元件！\t"},
        {L"N", [](SimDialog& d) { d.Choose("RuleRadio", L"按名称前缀排除").Type("RepPrefixes", L" ，"); },
         L"\t请输入名称前缀！\t"},
        {L"N", [](SimDialog& d) { d.Choose("RuleRadio", L"排除小零件").Type("SmallPercent", L"100"); },
         L"\t百分比须为大于0、小于100的数字！\t"},
        {L"N", [](SimDialog& d) { d.Choose("RuleRadio", L"按名称前缀排除").Type("RepPrefixes", L"X"); },
         L"\t没有元件符合此规则，未创建简化表示！\t"},
        {L"N", [](SimDialog& d) { d.Choose("RuleRadio", L"按名称前缀排除").Type("RepPrefixes", L"s"); },
         L"\t此规则会排除全部元件，未创建简化表示！\t"},
    };
    for (const Case& one : cases) {
        Make(one.name, one.fill);
        EXPECT_EQ(host.LastMessage(), one.message);
        EXPECT_EQ(pump.Representations().size(), 1u) << testing::PrintToString(one.message);
    }
    host.Select({{&sub, 0, 0, {1}}, {&sub, 0, 0, {2}}, {&nut, 0, 0, {3}}});
    Make(L"N", [](SimDialog& dialog) { dialog.Choose("RuleRadio", L"仅保留所选元件"); });
    EXPECT_EQ(host.LastMessage(), L"\t没有元件符合此规则，未创建简化表示！\t") << "nothing is left out";
    Make(L"old", [&](SimDialog& dialog) {
        byPrefix(dialog);
        dialog.Check("ReplaceRep");
    });
    EXPECT_EQ(PathsOf(L"OLD"), (std::vector<Path>{{1, 1}, {2, 1}}));
}

TEST_F(Reps, ActivatesAndDeletesAfterAQuestion) {
    for (const wchar_t* name : {L"ONE", L"TWO"})
        pump.AddRepresentation({0, name, RepAction::kInclude, {{{1}, RepAction::kExclude}}});
    host.AnswerBox(IDNO);
    host.AnswerBox(IDYES);
    Play([&](SimDialog& dialog) {
        dialog.Press("ActivateRep");
        EXPECT_EQ(host.LastMessage(), L"\t请先在列表中选择一个简化表示！\t");
        dialog.DoubleClick("rep_list", "2", "name");
        EXPECT_EQ(pump.ActiveRepresentation(), IdOf(L"ONE"));
        dialog.SelectRows("rep_list", {"1"}).Press("DeleteRep");
        EXPECT_EQ(host.LastMessage(), L"\t主表示不能删除！\t");
        dialog.SelectRows("rep_list", {"2"}).Press("DeleteRep");
        EXPECT_EQ(host.LastMessage(), L"确定删除简化表示“ONE”吗？");
        EXPECT_EQ(pump.Representations().size(), 2u);
        dialog.SelectRows("rep_list", {"2"}).Press("DeleteRep");
        EXPECT_EQ(dialog.Rows("rep_list").size(), 2u);
        dialog.Press("Close");
    });
    Run();
    EXPECT_EQ(pump.Representations().front().name, L"TWO");
    EXPECT_EQ(pump.ActiveRepresentation(), sim::kMasterRepresentation);
}

TEST_F(Reps, PicksWithTheDialogAwayAndKeepsItsFields) {
    host.AnswerPick({false, {{&bolt, 0, 0, {1, 1}}}});
    Play([](SimDialog& dialog) {
        dialog.Choose("RuleRadio", L"仅保留所选元件").Type("RepName", L"BOLTS").Press("PickComponents");
        EXPECT_FALSE(dialog.IsOpen());
    });
    Play([](SimDialog& dialog) {
        EXPECT_EQ(dialog.Text("SelectedCount"), L"已选 1 个元件");
        dialog.Press("CreateRep").Press("Close");
    });
    Run();
    EXPECT_EQ(PathsOf(L"BOLTS"), (std::vector<Path>{{1, 1}}));
}

TEST_F(Reps, IsForAssembliesAlone) {
    host.Open(host.AddManufacturing(L"MOULD", pump));
    EXPECT_EQ(host.Run("KvSimRep"), PRO_TK_INVALID_TYPE);
    EXPECT_EQ(test::Messages(host), Texts{L"此功能仅组件可用！"});
}

}  // namespace
