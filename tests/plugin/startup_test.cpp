// Start-up of the plug-in: its menu with all commands, and their availability.

#include <algorithm>
#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "simulator/host/sim_host.h"
#include "simulator/windows/desktop.h"
#include "support/arrange.h"

namespace {

using sim::Fault;
using sim::HostMode;
using sim::SimHost;
using sim::SimModel;
using test::Messages;

enum class Rule { kAlways, kSolid, kModel, kPart, kDrawing };

// One command as the menu has to show it. Empty help key and icon: named after the command.
struct ExpectedCommand {
    std::string name;
    Rule rule;
    bool built = false;
    std::string helpKey = {};
    std::string icon = {};

    std::string Help() const { return helpKey.empty() ? name + "_Help" : helpKey; }
    std::string Icon() const { return icon.empty() ? name + ".png" : icon; }
};

const std::vector<ExpectedCommand>& ExpectedCommands() {
    static const std::vector<ExpectedCommand> commands = {
        {"KvOpenDir", Rule::kAlways, true},
        {"KvBackup", Rule::kSolid, true},
        {"NewPart", Rule::kSolid},
        {"NewAsm", Rule::kSolid},
        {"NewSmt", Rule::kSolid},
        {"BatchColor", Rule::kModel, false, "Color_Help", "RandomColor.png"},
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
        {"KvParams", Rule::kSolid, true},
        {"KvRelations", Rule::kSolid},
        {"SetUnit", Rule::kPart},
        {"CloneComp", Rule::kSolid},
        {"CloneAndReplace", Rule::kSolid},
        {"KvMerge", Rule::kSolid},
        {"KvMergeTo", Rule::kSolid},
        {"TweViews", Rule::kModel},
        {"NewDraw", Rule::kModel},
        {"KvExStp", Rule::kSolid, true},
        {"KvExIgs", Rule::kSolid, true},
        {"KvExSat", Rule::kSolid, true},
        {"KvBom", Rule::kSolid, true},
        {"KvRename", Rule::kSolid},
        {"KvRemoveCons", Rule::kSolid},
        {"KvExport", Rule::kAlways, true},
        {"KvMdlCount", Rule::kSolid, true},
        {"KvNewDrw", Rule::kSolid},
        {"KvDimModify", Rule::kDrawing},
        {"KvFrmReplace", Rule::kAlways},
        {"KvDrwScaleCheck", Rule::kAlways},
        {"KvSimRep", Rule::kSolid},
        {"KvBox", Rule::kSolid},
        {"KvExportDwg", Rule::kDrawing, true},
        {"KvExportPdf", Rule::kDrawing, true},
        {"KvMdlNameCopy", Rule::kSolid},
        {"KvMdlRename", Rule::kSolid},
        {"KvExportStp", Rule::kModel, true},
        {"KvUpdateSheetScale", Rule::kDrawing},
        {"KvUpdateMainViewScale", Rule::kDrawing},
        {"KvSingleDim", Rule::kDrawing},
        {"KvSetDirectory", Rule::kAlways, true},
        {"KvConfig", Rule::kAlways, true},
        {"ForTest", Rule::kAlways, true},
        {"KvVersion", Rule::kAlways, true},
        {"AboutKv", Rule::kAlways, true, "", "AboutKorvane.png"},
    };
    return commands;
}

constexpr std::size_t kDesignatedCommands = 52;  // the first ones: all but version and about

// ---- The menu

TEST(StartUp, AddsEveryCommandInOrderToAMenuAfterHelp) {
    SimHost host;
    sim::Interface& ui = host.State().interface_;
    std::vector<std::string> menus;
    for (const sim::Menu& menu : ui.Menus()) menus.push_back(menu.name);
    const auto help = std::find(menus.begin(), menus.end(), "Help");
    ASSERT_LT(help - menus.begin() + 1, static_cast<std::ptrdiff_t>(menus.size()));
    EXPECT_EQ(*(help + 1), "Menu");

    const sim::Menu& menu = *ui.FindMenu("Menu");
    EXPECT_EQ(menu.labelKey, "Menu");
    EXPECT_EQ(menu.messageFile, L"kvMenu.txt");
    ASSERT_EQ(menu.buttons.size(), ExpectedCommands().size());
    for (std::size_t i = 0; i < menu.buttons.size(); ++i) {
        const ExpectedCommand& expected = ExpectedCommands()[i];
        const sim::MenuButton& button = menu.buttons[i];
        SCOPED_TRACE(expected.name);
        EXPECT_EQ(button.name, expected.name);
        EXPECT_EQ(button.labelKey, expected.name);
        EXPECT_EQ(button.helpKey, expected.Help());
        EXPECT_EQ(button.messageFile, L"kvMenu.txt");
        ASSERT_NE(button.command, nullptr);

        const sim::Command& command = *button.command;
        EXPECT_EQ(command.name, expected.name);
        EXPECT_EQ(command.priority, 2);
        EXPECT_FALSE(command.inNonActiveWindow);
        EXPECT_FALSE(command.inAccessoryWindow);
        EXPECT_EQ(command.icon, expected.Icon());
        EXPECT_EQ(command.designated, i < kDesignatedCommands);
        if (!command.designated) continue;
        EXPECT_EQ(command.labelKey, expected.name);
        EXPECT_EQ(command.helpKey, expected.Help());
        EXPECT_EQ(command.descriptionKey, expected.name);
        EXPECT_EQ(command.messageFile, L"kvMenu.txt");
    }
}

TEST(StartUp, NamesEveryCommandInChineseAndInEnglish) {
    std::map<std::string, std::vector<sim::MenuRow>> rows;
    for (const char* language : {"chinese_cn", "usascii"}) {
        SimHost host(test::Unstarted());
        host.State().interface_.language = language;
        host.Initialize();
        for (sim::MenuRow& row : host.State().interface_.MenuRows())
            if (row.menu == "Menu") rows[language].push_back(std::move(row));
    }
    const auto isAscii = [](const std::wstring& text) {
        return std::all_of(text.begin(), text.end(), [](wchar_t c) { return c < 0x80; });
    };
    ASSERT_EQ(rows["chinese_cn"].size(), ExpectedCommands().size());
    ASSERT_EQ(rows["usascii"].size(), ExpectedCommands().size());
    std::set<std::wstring> labels;
    for (std::size_t i = 0; i < rows["usascii"].size(); ++i) {
        const sim::MenuRow& english = rows["usascii"][i];
        const sim::MenuRow& chinese = rows["chinese_cn"][i];
        SCOPED_TRACE(english.command);
        EXPECT_FALSE(english.label.empty() || english.help.empty());
        EXPECT_TRUE(isAscii(english.label) && isAscii(english.help));
        EXPECT_FALSE(isAscii(chinese.label) || isAscii(chinese.help));
        EXPECT_TRUE(labels.insert(english.label).second && labels.insert(chinese.label).second)
            << "a label twice";
    }
}

TEST(StartUp, GoesOnAfterAFailedRow) {
    for (const char* function :
         {"ProCmdActionAdd", "ProMenubarmenuPushbuttonAdd", "ProCmdIconSet", "ProCmdDesignate"}) {
        SCOPED_TRACE(function);
        SimHost host(test::Unstarted());
        host.State().report.Arm(Fault{function, 1});
        EXPECT_EQ(host.Initialize(), 0);
        EXPECT_EQ(host.State().report.FaultsHit(), 1);
        for (std::size_t i = 1; i < ExpectedCommands().size(); ++i)
            EXPECT_NE(host.State().interface_.FindCommand(ExpectedCommands()[i].name), nullptr);
        EXPECT_EQ(sim::DesktopTimers().size(), 1u);
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
        for (const ExpectedCommand& command : ExpectedCommands())
            EXPECT_EQ(host.Availability(command.name), IsAvailable(command.rule, mode) ? 3 : 1)
                << command.name << " in mode " << mode;
    }
}

TEST(Availability, GreysWhatDependsOnAModeThatCannotBeRead) {
    SimHost host;
    host.Open(host.AddAssembly(L"PUMP"));
    host.State().report.Arm(Fault{"ProModeCurrentGet", 0});
    for (const ExpectedCommand& command : ExpectedCommands())
        EXPECT_EQ(host.Availability(command.name), command.rule == Rule::kAlways ? 3 : 1) << command.name;
}

TEST(Availability, OfferedInEveryModeCostsNoHostCall) {
    SimHost host;
    host.State().report.ResetCalls();
    EXPECT_EQ(host.Availability("KvConfig"), 3);
    EXPECT_EQ(host.Calls(), 0);
}

// ---- Commands that are not there yet

TEST(CommandsNotBuiltYet, SayThatTheyAreNotAvailable) {
    SimHost host;
    SimModel& part = host.AddPart(L"BOLT");
    for (const ExpectedCommand& command : ExpectedCommands()) {
        if (command.built) continue;
        SCOPED_TRACE(command.name);
        host.Open(part, IsAvailable(command.rule, 5) ? HostMode::kAssembly : HostMode::kDrawing);
        const std::size_t before = host.Boxes().size();
        EXPECT_EQ(host.Run(command.name), PRO_TK_NO_ERROR);
        EXPECT_EQ(Messages(host).size(), before + 1);
        EXPECT_FALSE(host.LastMessage().empty());
    }
}

}  // namespace
