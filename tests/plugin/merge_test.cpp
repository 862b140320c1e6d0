// KvMerge, KvMergeTo: several parts in one.

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "plugin/assembly_fixture.h"
#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/reports.h"

namespace {

using sim::Box;
using sim::ModelKind;
using sim::Pick;
using sim::PromptAnswer;
using sim::SimHost;
using sim::SimModel;
using sim::TranslationMatrix;
using test::HasFile;
using test::InMemory;
using test::Messages;
using test::Texts;
using test::Whole;

constexpr wchar_t kNoTemplate[] = L"\t零件模板加载失败，请确认template_solidpart选项是否配置正确\t";
constexpr wchar_t kMergedNameRefused[] = L"\t名称已存在或输入非法，请重新输入\t";

Pick PickedPlace(SimModel& model, std::vector<int> path) {
    Pick pick = Whole(model);
    pick.path = std::move(path);
    return pick;
}

std::vector<std::wstring> MergeNames(const SimModel& part) {
    std::vector<std::wstring> names;
    for (const sim::Feature& feature : part.Features())
        if (feature.type == sim::kMergeType) names.push_back(feature.name + L"=" + feature.reference->Name());
    return names;
}

// PUMP holds BOLT (2) at x = 10 and SUB (3) at y = 20, which holds NUT (1); each part is a cube of 1.
class Merge : public testing::TestWithParam<bool> {
protected:
    static sim::HostSetup HostOfKind() {
        sim::HostSetup setup;
        setup.asDocumented = GetParam();
        return setup;
    }
    Merge() {
        test::UsePartTemplate(host);
        sim::Placing placing;
        placing.placement = TranslationMatrix(10, 0, 0);
        pump.AddCoordinateSystem(L"ASM_DEF_CSYS").Place(bolt, placing);
        placing.placement = TranslationMatrix(0, 20, 0);
        pump.Place(sub.Place(nut), placing);
        host.Open(pump);
    }
    void Name(const wchar_t* name) { host.AnswerPrompt({PromptAnswer::Kind::kTyped, name}); }

    SimHost host{HostOfKind()};
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& sub = host.AddAssembly(L"SUB");
    SimModel& bolt = host.AddPart(L"BOLT").AddBlock(1, 1, 1);
    SimModel& nut = host.AddPart(L"NUT").AddBlock(1, 1, 1);
};

// On a host that takes the tree and the selection as they are, and on one that keeps to its documents.
INSTANTIATE_TEST_SUITE_P(Hosts, Merge, testing::Bool(),
                         [](const auto& documented) { return documented.param ? "AsDocumented" : "AsItIs"; });

TEST_P(Merge, TakesEverySelectedPartIntoANewOne) {
    host.Select({PickedPlace(nut, {3, 1}), PickedPlace(sub, {3}), PickedPlace(bolt, {2})});
    Name(L"CAST");
    EXPECT_EQ(host.Run("KvMerge"), PRO_TK_NO_ERROR);

    SimModel* cast = InMemory(host, L"CAST");
    ASSERT_NE(cast, nullptr);
    ASSERT_EQ(pump.Features().size(), 3U);
    EXPECT_EQ(pump.Features()[2].component, cast);
    EXPECT_EQ(pump.Features()[2].constraints.size(), 1U) << "whatever the settings say";
    EXPECT_EQ(MergeNames(*cast), (std::vector<std::wstring>{L"合并1=NUT", L"合并1=BOLT"}));
    ASSERT_EQ(cast->Surfaces().size(), 12U);
    const Box& ofNut = cast->Surfaces()[5]->box;
    EXPECT_EQ(ofNut.maximum.y, 21);
    EXPECT_EQ(cast->Surfaces()[11]->box.maximum.x, 11);
    EXPECT_EQ(cast->Regenerations(), 2);
    EXPECT_TRUE(cast->IsModified()) << "it is saved before its features only";
    EXPECT_TRUE(HasFile(host, L"cast.prt.1"));
    EXPECT_EQ(Messages(host), Texts());
    EXPECT_EQ(test::LastReport(host).Count(L"跳过"), 1U) << "the assembly";
}

TEST_P(Merge, ChecksInItsOrderAndLeavesNothingBehind) {
    const std::size_t before = host.State().models.All().size();
    const auto option = std::exchange(host.State().configOptions[test::kPartTemplate], {});
    host.Run("KvMerge");
    EXPECT_EQ(host.LastMessage(), kNoTemplate);
    host.State().configOptions[test::kPartTemplate] = option;
    host.Activate(bolt);
    host.Run("KvMerge");
    EXPECT_EQ(host.LastMessage(), L"\t请先选择需要合并的零件(不支持组件)\t");
    host.Select({PickedPlace(bolt, {2})});
    host.Run("KvMerge");
    EXPECT_EQ(host.LastMessage(), L"\t当前激活元件不是组件/制造,无法进行新建装配操作\t")
        << "before the prompt";
    host.Activate(pump);
    Name(L"BOLT");
    host.AnswerPrompt({PromptAnswer::Kind::kEnter, {}});
    host.AnswerPrompt({PromptAnswer::Kind::kEscape, {}});
    host.Run("KvMerge");
    EXPECT_EQ(Messages(host).size(), 5U);
    EXPECT_EQ(host.LastMessage(), kMergedNameRefused);
    // The template has been loaded and stays.
    EXPECT_EQ(host.State().models.All().size(), before + 1);
    EXPECT_EQ(pump.Features().size(), 2U);
}

TEST_P(Merge, MergesNothingWithoutCoordinateSystems) {
    test::UseTemplate(host, host.AddPart(L"BARE"), test::kPartTemplate);
    host.Select({PickedPlace(bolt, {2})});
    Name(L"CAST");
    host.Run("KvMerge");
    EXPECT_EQ(Messages(host), Texts{L"\t零件模板无坐标系,无法缺省装配新零件\t"});
    EXPECT_TRUE(MergeNames(*InMemory(host, L"CAST")).empty());
    EXPECT_EQ(pump.Features().size(), 3U) << "the new part stays where it is";
}

TEST_P(Merge, GoesOnAfterAPartThatCannotBeMerged) {
    host.Activate(nut);
    // It has taken in the target itself.
    bolt.AddMerge(nut, L"", sim::IdentityMatrix());
    SimModel& pin = host.AddPart(L"PIN");
    pump.Place(pin);
    host.AnswerPick({false, {PickedPlace(bolt, {2}), PickedPlace(nut, {3, 1}), PickedPlace(pin, {4})}});
    EXPECT_EQ(host.Run("KvMergeTo"), PRO_TK_NO_ERROR);
    EXPECT_EQ(MergeNames(nut), std::vector<std::wstring>{L"合并1=PIN"});
    const test::Report report = test::LastReport(host);
    EXPECT_EQ(report.Reason(L"BOLT"), L"主程序拒绝了此操作");
    EXPECT_EQ(report.Count(L"跳过"), 1U) << "the activated part itself";
    EXPECT_EQ(report.Count(L"完成"), 1U);
    EXPECT_EQ(Messages(host), Texts());
}

TEST_P(Merge, MergesIntoTheActivatedPartInItsOwnCoordinates) {
    host.Activate(nut);
    nut.AddMerge(host.AddPart(L"OLD"), L"合并7", sim::IdentityMatrix()).AddFeature(917);
    host.AnswerPick({false, {PickedPlace(bolt, {2}), PickedPlace(bolt, {2})}});
    EXPECT_EQ(host.Run("KvMergeTo"), PRO_TK_NO_ERROR);
    EXPECT_EQ(MergeNames(nut), (std::vector<std::wstring>{L"合并7=OLD", L"合并8=BOLT", L"合并9=BOLT"}));
    ASSERT_EQ(nut.Surfaces().size(), 18U);
    EXPECT_EQ(nut.Surfaces()[11]->box.maximum.x, 11);
    EXPECT_EQ(nut.Surfaces()[11]->box.maximum.y, -19) << "NUT lies at y = 20";
    EXPECT_EQ(nut.Regenerations(), 2);
}

TEST_P(Merge, IntoNeedsAnActivatedPartInTheOpenAssembly) {
    host.Activate(sub);
    host.Run("KvMergeTo");
    EXPECT_EQ(Messages(host), Texts{L"\t当前激活的元件不是零件，无法合并\t"});
    host.Activate(host.AddPart(L"ELSEWHERE"));
    host.Run("KvMergeTo");
    host.Activate(bolt);
    for (const bool quits : {true, false}) {
        host.AnswerPick({quits, {}});
        host.Run("KvMergeTo");
    }
    EXPECT_EQ(Messages(host).size(), 1U);
    EXPECT_TRUE(bolt.Features().empty());
}

}  // namespace
