// Commands that build assemblies.

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "plugin/assembly_fixture.h"
#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/scenario.h"

namespace test {

using sim::SimHost;
using sim::SimModel;

// PUMP holds SUB, which is activated; both have a coordinate system. One name of the series is taken on disk.
static void ArrangeActivated(SimHost& host) {
    SimModel& pump = host.AddAssembly(L"PUMP").AddCoordinateSystem(L"ASM_DEF_CSYS");
    SimModel& sub = host.AddAssembly(L"SUB").AddCoordinateSystem(L"ASM_DEF_CSYS");
    pump.Place(host.AddPart(L"BOLT")).Place(sub);
    LayPart(host, L"SUB-1");
    host.Open(pump);
    host.Activate(sub);
}

// Nobody's model gets a second version, unless the host says that there is none of that name.
static void ExpectNothingOverwritten(SimHost& host) {
    if (host.State().report.FaultedFunction() == "ProMdlnameRetrieve") return;
    for (const wchar_t* name : {L"sub-1.prt.2", L"bolt-1.prt.2", L"taken.prt.2"})
        EXPECT_FALSE(HasFile(host, name)) << testing::PrintToString(name);
}

static Scenario NewComponentScenario(const std::string& command) {
    const auto arrange = [](SimHost& host) {
        UsePartTemplate(host);
        UseTemplate(host, host.AddAssembly(L"START").AddCoordinateSystem(L"ASM_DEF_CSYS"), kAssemblyTemplate);
        UseTemplate(host, host.AddSheetmetal(L"START").AddCoordinateSystem(L"PRT_CSYS_DEF"),
                    kSheetmetalTemplate);
        ArrangeActivated(host);
    };
    return CommandScenario(command, arrange, ExpectNothingOverwritten);
}

// What a fault leaves unanswered is no problem: how often a name is asked for depends on it.
static Scenario Forgetting(Scenario scenario) {
    scenario.act = [act = scenario.act](SimHost& host) {
        act(host);
        host.ForgetAnswers();
    };
    return scenario;
}

// A component of the open assembly is cloned under this rule; TAKEN is on disk.
static Scenario CloneScenario(const std::string& command, const std::wstring& rule) {
    const auto arrange = [rule](SimHost& host) {
        ChangeSetting(L"KvConfig.ini", L"CompCopyAutoNum", L"value", rule);
        ArrangeActivated(host);
        LayPart(host, L"BOLT-1");
        LayPart(host, L"TAKEN");
        sim::Pick pick = Whole(Bolt(host));
        pick.path = {2};
        host.Select({pick});
        host.AnswerPlacement(true);
        for (const wchar_t* name : {L"TAKEN", L"NEW"})
            host.AnswerPrompt({sim::PromptAnswer::Kind::kTyped, name});
        for (int i = 0; i < 3; ++i) host.AnswerPrompt({sim::PromptAnswer::Kind::kEscape, {}});
    };
    return Forgetting(
        CommandScenario(command, arrange, ExpectNothingOverwritten, std::string(rule.begin(), rule.end())));
}

// BOLT and SUB are selected, and picked when the command asks.
static void ArrangeMerge(SimHost& host) {
    UsePartTemplate(host);
    ArrangeActivated(host);
    LayPart(host, L"TAKEN");
    SimModel& nut = host.AddPart(L"NUT").AddBlock(1, 1, 1);
    SimModel& sub = *InMemory(host, L"SUB", sim::ModelKind::kAssembly);
    sub.Place(nut);
    Bolt(host).AddBlock(1, 1, 1);
    sim::Pick bolt = Whole(Bolt(host));
    bolt.path = {2};
    sim::Pick assembly = Whole(sub);
    assembly.path = {3};
    host.Select({bolt, assembly});
    for (const wchar_t* name : {L"TAKEN", L"NEW"}) host.AnswerPrompt({sim::PromptAnswer::Kind::kTyped, name});
    for (int i = 0; i < 3; ++i) host.AnswerPrompt({sim::PromptAnswer::Kind::kEscape, {}});
}

static Scenario Merging(const std::string& command, Arrangement arrange) {
    const auto holds = [](SimHost& host) {
        ExpectNothingOverwritten(host);
        EXPECT_TRUE(Bolt(host).Features().empty()) << "only the target changes";
    };
    return Forgetting(CommandScenario(command, std::move(arrange), holds));
}

static void ArrangeMergeTo(SimHost& host) {
    ArrangeMerge(host);
    const std::vector<sim::Pick> selected = host.State().desk.selected;
    host.AnswerPick({false, {selected[0]}});
    host.Activate(*InMemory(host, L"NUT"));
}

// BOLT (2) was first placed elsewhere; both components are ticked.
static Scenario RemovingConstraints(const std::wstring& way, const std::string& variant) {
    const auto arrange = [way](SimHost& host) {
        ArrangeActivated(host);
        SimModel& pump = *InMemory(host, L"PUMP", sim::ModelKind::kAssembly);
        host.Activate(pump);
        for (const int id : {2, 3}) pump.FindFeature(id)->constraints = {{0, 0, 0}, {4, 0, 0}};
        pump.FindFeature(2)->initial = sim::TranslationMatrix(1, 2, 3);
        sim::Pick bolt = Whole(Bolt(host));
        bolt.path = {2};
        host.Select({bolt, ItemOf(pump, 3, 3)});
        host.OnDialog("KvRemoveCons",
                      [way](sim::SimDialog& dialog) { dialog.Choose("RemoveWay", way).Press("ApplyBt"); });
    };
    // Whatever fails: nothing moves, now or when the host regenerates it.
    const auto holds = [](SimHost& host) {
        const SimModel& pump = *InMemory(host, L"PUMP", sim::ModelKind::kAssembly);
        for (const sim::Feature& feature : pump.Features()) {
            EXPECT_EQ(feature.placement, sim::IdentityMatrix());
            const bool isTied = !feature.constraints.empty() || !feature.initial;
            EXPECT_TRUE(isTied || *feature.initial == feature.placement) << feature.id;
        }
    };
    return CommandScenario("KvRemoveCons", arrange, holds, variant);
}

std::vector<Scenario> AssemblyScenarios() {
    return {
        NewComponentScenario("NewPart"),
        NewComponentScenario("NewAsm"),
        NewComponentScenario("NewSmt"),
        CloneScenario("CloneComp", L"byUser"),
        CloneScenario("CloneComp", L"byComp"),
        CloneScenario("CloneAndReplace", L"byAsm"),
        Merging("KvMerge", ArrangeMerge),
        Merging("KvMergeTo", ArrangeMergeTo),
        RemovingConstraints(L"固定在当前位置", "Fix"),
        RemovingConstraints(L"只移除约束", "Free"),
    };
}

}  // namespace test
