// The command table as such: it has every command that it must have, and every command in it is available
// where it should be and is tested.

#include <cstddef>
#include <iterator>
#include <map>
#include <memory>
#include <set>
#include <span>
#include <string>

#include <gtest/gtest.h>

#include "base/host_callback.h"
#include "host/command_table.h"
#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/scenario.h"

namespace {

using sim::Fault;
using sim::HostMode;
using sim::SimHost;
using sim::SimModel;
using test::Messages;

enum class Rule { kAlways, kSolid, kModel, kPart, kDrawing };

// A command that must be there. Empty help key and icon: named after the command.
struct RequiredCommand {
    std::string name;
    Rule rule;
    std::string helpKey = {};
    std::string icon = {};

    std::string Help() const { return helpKey.empty() ? name + "_Help" : helpKey; }
    std::string Icon() const { return icon.empty() ? name + ".png" : icon; }
};

const RequiredCommand kRequired[] = {
    {"KvOpenDir", Rule::kAlways},
    {"KvBackup", Rule::kSolid},
    {"NewPart", Rule::kSolid},
    {"NewAsm", Rule::kSolid},
    {"NewSmt", Rule::kSolid},
    {"BatchColor", Rule::kModel, "Color_Help", "RandomColor.png"},
    {"KvClearAllColor", Rule::kModel},
    {"KvBoxSelSur", Rule::kModel},
    {"KvTransparent", Rule::kModel},
    {"SurfTransparent", Rule::kModel},
    {"BoxSel", Rule::kSolid},
    {"SetMat", Rule::kPart},
    {"SetBendTable", Rule::kPart},
    {"SameScale", Rule::kDrawing},
    {"KvIsolate", Rule::kSolid},
    {"KvHideReverse", Rule::kSolid},
    {"KvShowAllComp", Rule::kSolid},
    {"KvNormalView", Rule::kAlways},
    {"KvParams", Rule::kSolid},
    {"KvRelations", Rule::kSolid},
    {"SetUnit", Rule::kPart},
    {"CloneComp", Rule::kSolid},
    {"CloneAndReplace", Rule::kSolid},
    {"KvMerge", Rule::kSolid},
    {"KvMergeTo", Rule::kSolid},
    {"TweViews", Rule::kModel},
    {"NewDraw", Rule::kModel},
    {"KvExStp", Rule::kSolid},
    {"KvExIgs", Rule::kSolid},
    {"KvExSat", Rule::kSolid},
    {"KvBom", Rule::kSolid},
    {"KvRename", Rule::kSolid},
    {"KvRemoveCons", Rule::kSolid},
    {"KvExport", Rule::kAlways},
    {"KvMdlCount", Rule::kSolid},
    {"KvNewDrw", Rule::kSolid},
    {"KvDimModify", Rule::kDrawing},
    {"KvFrmReplace", Rule::kAlways},
    {"KvDrwScaleCheck", Rule::kAlways},
    {"KvSimRep", Rule::kSolid},
    {"KvBox", Rule::kSolid},
    {"KvExportDwg", Rule::kDrawing},
    {"KvExportPdf", Rule::kDrawing},
    {"KvMdlNameCopy", Rule::kSolid},
    {"KvMdlRename", Rule::kSolid},
    {"KvExportStp", Rule::kModel},
    {"KvUpdateSheetScale", Rule::kDrawing},
    {"KvUpdateMainViewScale", Rule::kDrawing},
    {"KvSingleDim", Rule::kDrawing},
    {"KvSetDirectory", Rule::kAlways},
    {"KvConfig", Rule::kAlways},
    {"ForTest", Rule::kAlways},
    {"KvVersion", Rule::kAlways},
    {"AboutKv", Rule::kAlways, "", "AboutKorvane.png"},
};

constexpr std::size_t kDesignatedCommands = 52;  // the first ones: all but version and about

TEST(CommandTable, HasEveryRequiredCommandInOrder) {
    const std::span<const kv::CommandRow> rows = kv::Commands();
    ASSERT_EQ(rows.size(), std::size(kRequired));
    for (std::size_t i = 0; i < rows.size(); ++i) {
        SCOPED_TRACE(kRequired[i].name);
        EXPECT_EQ(rows[i].name, kRequired[i].name);
        EXPECT_EQ(rows[i].helpKey, kRequired[i].Help());
        EXPECT_EQ(rows[i].icon, kRequired[i].Icon());
        EXPECT_EQ(rows[i].designated, i < kDesignatedCommands);
    }
}

// Commands that only a right-click brings have no row; they count as well.
TEST(CommandTable, EveryCommandHasAScenario) {
    std::set<std::string> inScenarios;
    for (const test::Scenario& scenario : test::Scenarios()) inScenarios.insert(scenario.command);
    SimHost host(test::Unstarted());
    test::StartWithRightClick(host);
    test::RightClick(host);
    for (const std::unique_ptr<sim::Command>& command : host.State().screen.Commands()) {
        EXPECT_TRUE(inScenarios.contains(command->name))
            << command->name << " has no scenario in tests/plugin/*_scenarios.cpp";
    }
}

// ---- Availability

bool IsAvailable(Rule rule, int mode) {
    static const std::map<Rule, std::set<int>> modes = {{Rule::kSolid, {5, 8}},
                                                        {Rule::kModel, {1, 2, 5, 8}},
                                                        {Rule::kPart, {1, 2, 5}},
                                                        {Rule::kDrawing, {6}}};
    return rule == Rule::kAlways || modes.at(rule).contains(mode);
}

TEST(Availability, FollowsTheModeOfTheHost) {
    SimHost host;
    SimModel& part = host.AddPart(L"BOLT");
    for (const int mode : {1, 2, 5, 6, 7, 8}) {
        host.Open(part, static_cast<HostMode>(mode));
        for (const RequiredCommand& command : kRequired)
            EXPECT_EQ(host.Availability(command.name), IsAvailable(command.rule, mode) ? 3 : 1)
                << command.name << " in mode " << mode;
    }
}

TEST(Availability, GreysWhatDependsOnAModeThatCannotBeRead) {
    SimHost host;
    host.Open(host.AddAssembly(L"PUMP"));
    host.State().report.Arm(Fault{"ProModeCurrentGet", 0});
    for (const RequiredCommand& command : kRequired)
        EXPECT_EQ(host.Availability(command.name), command.rule == Rule::kAlways ? 3 : 1) << command.name;
}

TEST(Availability, OfferedInEveryModeCostsNoHostCall) {
    SimHost host;
    host.State().report.ResetCalls();
    EXPECT_EQ(host.Availability("KvConfig"), 3);
    EXPECT_EQ(host.Calls(), 0);
}

}  // namespace
