// CloneComp, CloneAndReplace: a copy of the selected component's model.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "plugin/assembly_fixture.h"
#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/plugin_home.h"
#include "support/reports.h"

namespace {

using sim::IdentityMatrix;
using sim::ModelKind;
using sim::Pick;
using sim::PromptAnswer;
using sim::SimHost;
using sim::SimModel;
using test::ChangeSetting;
using test::HasFile;
using test::InMemory;
using test::LayPart;
using test::Messages;
using test::Texts;
using test::Whole;

constexpr wchar_t kNameRefused[] = L"\t名称已存在或输入非法，请重新输入\t";

Pick Placed(SimModel& model, std::vector<int> path) {
    Pick pick = Whole(model);
    pick.path = std::move(path);
    return pick;
}

// PUMP holds BOLT (1) and SUB (2), which holds NUT (1).
class Clone : public testing::Test {
protected:
    explicit Clone(const sim::HostSetup& setup = {}) : host(setup) {
        sub.Place(nut);
        pump.Place(bolt).Place(sub);
        host.Open(pump);
    }

    void NameBy(const wchar_t* rule) { ChangeSetting(L"KvConfig.ini", L"CompCopyAutoNum", L"value", rule); }
    // Clones a component and places the copy, whose name is the answer: "BOLT-1.prt".
    std::wstring CloneOf(const Pick& pick) {
        host.Select({pick});
        host.AnswerPlacement(true);
        host.Run("CloneComp");
        const SimModel& copy = *pump.Features().back().component;
        return copy.Name() + L"." + std::wstring(sim::ExtensionOf(copy.Kind()));
    }
    std::wstring LastLine() { return host.State().user.messageArea.back(); }

    SimHost host;
    SimModel& pump = host.AddAssembly(L"PUMP_00");
    SimModel& sub = host.AddAssembly(L"SUB");
    SimModel& bolt = host.AddPart(L"BOLT").SetParameter(L"MAT", std::wstring(L"zinc"));
    SimModel& nut = host.AddPart(L"NUT");
};

TEST_F(Clone, ChecksTheSelectionFirstAndThenTheActiveModel) {
    NameBy(L"byComp");
    const std::size_t before = host.State().models.All().size();
    const struct {
        std::vector<Pick> selected;
        bool isPartActive;
        const wchar_t* message;
    } kCases[] = {
        {{}, true, L"\t请先选择需要克隆的元件\t"},
        {{test::ItemOf(pump, 3, 1), Placed(sub, {2})}, true, L"\t当前模式只能选择1个元件\t"},
        {{test::ItemOf(pump, 3, 1)}, true, L"\t当前模式只能选择零件或组件\t"},
        {{test::ItemOf(bolt, 5, 7)}, true, L"\t当前模式只能选择零件或组件\t"},
        {{Placed(bolt, {1})}, true, L"\t当前被激活的模型不是组件/制造,无法克隆装配\t"},
    };
    for (const auto& [selected, isPartActive, message] : kCases) {
        host.Select(selected);
        if (isPartActive) host.Activate(bolt);
        host.Run("CloneComp");
        EXPECT_EQ(host.LastMessage(), message);
        host.Run("CloneAndReplace");
        const bool ofReplace = std::wstring(message).find(L"零件或组件") != std::wstring::npos;
        EXPECT_EQ(host.LastMessage(), ofReplace ? L"\t当前模式仅可选择零件或者组件\t" : message);
    }
    EXPECT_EQ(Messages(host).size(), 10U);
    EXPECT_EQ(host.State().models.All().size(), before);
}

TEST_F(Clone, NumbersByTheComponent) {
    NameBy(L" byComp ");
    LayPart(host, L"BOLT-1");
    EXPECT_EQ(CloneOf(Placed(bolt, {1})), L"BOLT-2.prt");
    SimModel* copy = InMemory(host, L"BOLT-2");
    ASSERT_NE(copy, nullptr);
    EXPECT_EQ(copy->Parameter(L"MAT"), L"zinc");
    EXPECT_TRUE(HasFile(host, L"bolt-2.prt.1"));
    EXPECT_EQ(pump.Features().back().constraints.size(), 1U) << "the user has placed it";
    EXPECT_EQ(CloneOf(Placed(*copy, {3})), L"BOLT-2-1.prt") << "nothing is stripped";

    // Only parts take names, but no assembly is written over.
    host.Store(host.AddAssembly(L"SUB-1"));
    host.Select({Placed(sub, {2})});
    host.Run("CloneComp");
    EXPECT_EQ(host.Calls("ProMdlnameCopy"), 0);
    EXPECT_FALSE(HasFile(host, L"sub-1.asm.2"));
    EXPECT_EQ(pump.Features().size(), 4U);
    EXPECT_NE(LastLine().find(L"SUB-1：未能创建"), std::wstring::npos);
    EXPECT_EQ(test::LastReport(host).Reason(L"SUB-1"), L"已存在");
    EXPECT_EQ(Messages(host), Texts());
}

TEST_F(Clone, NumbersByTheAssembly) {
    NameBy(L"byAsm");
    host.State().models.Create(L"PUMP-1", ModelKind::kAssembly);
    EXPECT_EQ(CloneOf(Placed(bolt, {1})), L"PUMP-1.prt");
    EXPECT_EQ(CloneOf(Placed(nut, {2, 1})), L"PUMP-2.prt");
    host.State().models.Create(L"PUMP_01", ModelKind::kPart);
    EXPECT_EQ(CloneOf(Placed(sub, {2})), L"PUMP_01.asm");
    for (int n = 2; n <= 9; ++n)
        host.State().models.Create(L"PUMP_0" + std::to_wstring(n), ModelKind::kAssembly);
    EXPECT_EQ(CloneOf(Placed(sub, {2})), L"PUMP_10.asm");

    host.Activate(sub);
    host.Select({Placed(bolt, {1})});
    host.AnswerPlacement(true);
    host.Run("CloneComp");
    EXPECT_EQ(sub.Features().back().component, InMemory(host, L"SUB-1")) << "the activated assembly counts";
}

TEST_F(Clone, AsksUntilANameIsFree) {
    NameBy(L"byUser");
    LayPart(host, L"TAKEN");
    host.AnswerPrompt({PromptAnswer::Kind::kEnter, {}});
    for (const wchar_t* name : {L"taken", L"A B", L"THIS_NAME_HAS_MORE_THAN_31_CHARS", L"NEW"})
        host.AnswerPrompt({PromptAnswer::Kind::kTyped, name});
    EXPECT_EQ(CloneOf(Placed(bolt, {1})), L"NEW.prt");
    EXPECT_EQ(Messages(host), Texts(4, kNameRefused)) << "Enter means the component's own name";
    EXPECT_FALSE(HasFile(host, L"taken.prt.2"));
    EXPECT_EQ(host.State().user.messageArea[0].find(L"BOLT"), std::wstring::npos) << "it is the offer";

    // Names that are taken by the other kind of model are free.
    host.AnswerPrompt({PromptAnswer::Kind::kTyped, L"TAKEN"});
    EXPECT_EQ(CloneOf(Placed(sub, {2})), L"TAKEN.asm");
}

TEST_F(Clone, EndsQuietlyWhenTheUserQuitsOrNoRuleIsSet) {
    const std::size_t before = host.State().models.All().size();
    host.Select({Placed(bolt, {1})});
    NameBy(L"byUser");
    host.AnswerPrompt({PromptAnswer::Kind::kEscape, {}});
    host.Run("CloneComp");
    for (const wchar_t* rule : {L"", L"byname", L"BYCOMP"}) {
        NameBy(rule);
        EXPECT_EQ(host.Run("CloneAndReplace"), PRO_TK_NO_ERROR);
    }
    EXPECT_EQ(Messages(host), Texts());
    EXPECT_EQ(host.State().models.All().size(), before);
    EXPECT_TRUE(host.State().user.macros.empty());

    // A prompt that can never be read does not keep the user.
    NameBy(L"byUser");
    host.State().report.Arm({"ProMessageStringRead", 0, PRO_TK_GENERAL_ERROR});
    host.Run("CloneComp");
    EXPECT_EQ(Messages(host).size(), 10U);
}

TEST_F(Clone, LeavesTheCopyWhereItIsWhenTheUserCancelsItsPlacing) {
    NameBy(L"byComp");
    host.Select({Placed(bolt, {1})});
    host.AnswerPlacement(false);
    host.Run("CloneComp");
    const sim::Feature& component = pump.Features().back();
    EXPECT_EQ(component.component, InMemory(host, L"BOLT-1"));
    EXPECT_EQ(component.placement, IdentityMatrix());
    EXPECT_TRUE(component.constraints.empty());
    EXPECT_EQ(test::LastReport(host).Count(L"失败"), 0U);
}

TEST_F(Clone, NamesThatTheHostRefusesAreNotTried) {
    NameBy(L"byComp");
    SimModel& longest = host.AddPart(std::wstring(31, L'L'));
    pump.Place(longest);
    host.Select({Placed(longest, {3})});
    host.Run("CloneComp");
    EXPECT_EQ(pump.Features().size(), 3U);
    EXPECT_EQ(Messages(host), Texts());
    EXPECT_EQ(test::LastReport(host).Count(L"失败"), 1U);
}

// The host's own release of the two dialogs plays only its own macro.
class Replace : public testing::TestWithParam<const char*> {};

TEST_P(Replace, PutsTheCopyInTheSelectedPlaceOnly) {
    sim::HostSetup setup;
    setup.release = GetParam();
    SimHost host(setup);
    ChangeSetting(L"KvConfig.ini", L"CompCopyAutoNum", L"value", L"byAsm");
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& frame = host.AddAssembly(L"FRAME");
    SimModel& bolt = host.AddPart(L"BOLT");
    pump.Place(frame.Place(bolt, 2)).Place(bolt);
    host.Open(pump);
    host.Select({Placed(bolt, {1, 2})});

    EXPECT_EQ(host.Run("CloneAndReplace"), PRO_TK_NO_ERROR);
    EXPECT_EQ(frame.Features()[0].component, &bolt);
    EXPECT_EQ(frame.Features()[1].component, InMemory(host, L"PUMP-1"));
    EXPECT_EQ(pump.Features().size(), 2U) << "nothing new is placed";

    host.Select({Placed(frame, {1})});
    host.Run("CloneAndReplace");
    EXPECT_EQ(pump.Features()[0].component, InMemory(host, L"PUMP_01", ModelKind::kAssembly));
    EXPECT_EQ(host.State().user.macros.size(), 2U);
    EXPECT_EQ(Messages(host), Texts());
}

INSTANTIATE_TEST_SUITE_P(Releases, Replace, testing::Values("hostsim 9", "Creo 2.0", "5.0", "Creo 3.0"));

TEST_F(Clone, ReplacesNothingWithoutAPlace) {
    NameBy(L"byComp");
    host.Select({Placed(bolt, {2})});
    host.Run("CloneAndReplace");
    EXPECT_TRUE(host.State().user.macros.empty());
    EXPECT_NE(InMemory(host, L"BOLT-1"), nullptr) << "the copy stays";
    EXPECT_NE(LastLine().find(L"BOLT-1：已创建，未能替换所选元件"), std::wstring::npos);
}

}  // namespace
