// Commands that build assemblies.

#include <string>
#include <utility>
#include <vector>

#include <ProObjects.h>
#include <gtest/gtest.h>

#include <windows.h>

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

// PUMP holds SUB and a small NUT. Its representation OLD leaves out the nut and is active.
static SimModel& ArrangeRepresented(SimHost& host) {
    ArrangePump(host);
    SimModel& pump = *host.State().models.current;
    pump.Place(host.AddPart(L"NUT").AddBlock(0.1, 0.1, 0.1));
    pump.ActivateRepresentation(
        pump.AddRepresentation({0, L"OLD", sim::RepAction::kInclude, {{{2}, sim::RepAction::kExclude}}}));
    return pump;
}

// Where the new one is not active, the one from before is, unless that very call fails or it was deleted.
static void ExpectARepresentation(SimHost& host) {
    SimModel& pump = *host.State().models.current;
    const sim::Representation* active = pump.FindRepresentation(pump.ActiveRepresentation());
    if (host.State().report.FaultedFunction() == "ProSimprepActivate") return;
    EXPECT_TRUE(active != nullptr || pump.FindRepresentation(L"OLD") == nullptr) << "the master was left";
    for (const sim::Representation& one : pump.Representations())
        EXPECT_EQ(one.items.size(), 1u) << testing::PrintToString(one.name);
}

static Scenario MakingRepresentation(const std::string& variant, bool deletes) {
    const auto arrange = [deletes](SimHost& host) {
        ArrangeRepresented(host);
        host.Select({{&Bolt(host), 0, 0, {1, 1}}});
        host.OnDialog("KvSimRep", [deletes](sim::SimDialog& dialog) {
            if (deletes) {
                if (dialog.Rows("rep_list").size() < 2) return;
                dialog.SelectRows("rep_list", {"2"}).Press("DeleteRep").Press("Close");
                return;
            }
            dialog.Choose("RuleRadio", L"排除小零件").Type("SmallPercent", L"20").Press("CountRule");
            dialog.Type("RepName", L"OLD").Check("ReplaceRep").Press("CreateRep");
            dialog.Choose("RuleRadio", L"仅保留所选元件").Type("RepName", L"NEW").Press("CreateRep");
            dialog.Press("Close");
        });
        if (deletes) host.AnswerBox(IDYES);
    };
    return Forgetting(CommandScenario("KvSimRep", arrange, ExpectARepresentation, variant));
}

// The user picks a coordinate system of SUB, writes the stock of BOLT and of PUMP and copies the table.
static void ArrangeBox(SimHost& host) {
    ArrangePump(host);
    SimModel& sub = *InMemory(host, L"SUB", sim::ModelKind::kAssembly);
    sub.AddCoordinateSystem(L"TURNED", {{{0, 1, 0, 0}, {-1, 0, 0, 0}, {0, 0, 1, 0}, {5, 0, 0, 1}}});
    host.Select({{&Bolt(host), 0, 0, {1, 1}}});
    host.AnswerPick({false, {{&sub, PRO_CSYS, sub.CoordinateSystems()[0].id, {1}}}});
    host.OnDialog("KvBox", [](sim::SimDialog& dialog) { dialog.Press("PickCsys"); });
    host.OnDialog("KvBox", [](sim::SimDialog& dialog) {
        dialog.Type("AllowLength", L"2").Type("StockStep", L"0.5");
        dialog.Press("UpdateStock").Press("WriteStock").Press("CopyTable").Press("Close");
    });
}

// Nobody gets a stock that is no more than nothing, and what the report calls done is there.
static void ExpectStock(SimHost& host) {
    for (const wchar_t* name : {L"BOLT", L"PUMP"}) {
        const auto kind = name[0] == L'B' ? sim::ModelKind::kPart : sim::ModelKind::kAssembly;
        const SimModel& model = *InMemory(host, name, kind);
        const std::wstring text = model.Parameter(L"下料尺寸");
        EXPECT_TRUE(text.empty() || text == L"5×2×1") << testing::PrintToString(text);
    }
}

std::vector<Scenario> AssemblyScenarios() {
    return {
        MakingRepresentation("Make", false),
        MakingRepresentation("Delete", true),
        CommandScenario("KvBox", ArrangeBox, ExpectStock),
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
