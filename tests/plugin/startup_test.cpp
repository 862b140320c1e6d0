// Start and end of the plug-in: menu, commands and their availability, right-click entries, the last
// directory, and the small commands of the frame itself.

#include <algorithm>
#include <array>
#include <filesystem>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>

#include "simulator/host/sim_host.h"
#include "simulator/report/utf8.h"
#include "simulator/windows/desktop.h"
#include "support/arrange.h"
#include "support/plugin_home.h"
#include "support/temp_directory.h"

namespace {

namespace fs = std::filesystem;
using sim::Fault;
using sim::HostMode;
using sim::HostSetup;
using sim::Pick;
using sim::PopupButton;
using sim::SimDialog;
using sim::SimHost;
using sim::SimModel;
using test::ItemOf;
using test::Messages;
using test::RightClick;
using test::StateOf;
using test::Texts;
using test::Whole;

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
    sim::Interface& ui = host.State().screen;
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
        host.State().texts.language = language;
        host.Initialize();
        for (sim::MenuRow& row : host.State().screen.MenuRows())
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
            EXPECT_NE(host.State().screen.FindCommand(ExpectedCommands()[i].name), nullptr);
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

// ---- The right-click menu

struct RightClickSetting {
    std::optional<std::wstring> file;  // contents of KvConfig.ini
    bool installs;
};

TEST(RightClickMenu, IsInstalledForTheSettingZeroAlone) {
    const RightClickSetting settings[] = {
        {L"[RmbDisable]\r\nvalue=0\r\n", true},
        {L"[RmbDisable]\r\nvalue=\" 0 \"\r\n", true},  // quotes keep the blanks
        {L"[RmbDisable]\r\nvalue=1\r\n", false},
        {L"[RmbDisable]\r\nvalue=00\r\n", false},
        {L"[RmbDisable]\r\nvalue=\r\n", false},
        {L"[RmbDisable]\r\npath=0\r\n", false},
        {std::nullopt, false},
    };
    for (const auto& [file, installs] : settings) {
        SCOPED_TRACE(sim::Utf8(file.value_or(L"no file")));
        if (file)
            test::WriteSettings(L"KvConfig.ini", *file);
        else
            fs::remove(test::SettingsFile(L"KvConfig.ini"));
        SimHost host;
        RightClick(host);
        EXPECT_EQ(host.State().screen.FindMenu("ActionMenu")->buttons.size(), installs ? 5u : 0u);
        EXPECT_EQ(RightClick(host).size(), installs ? 6u : 0u);
    }
}

// The text tree may lie apart from the module; this one setting is looked for beside the text tree.
TEST(RightClickMenu, ReadsItsSettingBesideTheTextTree) {
    const test::TempDirectory apart;
    test::CopyPluginHome(apart.Path());
    test::ChangeSetting(L"KvConfig.ini", L"RmbDisable", L"value", L"0");
    test::WriteBytes(apart.Path() / "KVconfig" / "KvConfig.ini",
                     test::ReadBytes(test::SettingsFile(L"KvConfig.ini")));
    test::RestoreSettings();
    HostSetup setup;
    setup.textDirectory = apart.Path();
    SimHost host(setup);
    RightClick(host);
    EXPECT_EQ(RightClick(host).size(), 6u);
}

TEST(RightClickMenu, FirstPopupAddsFiveCommandsToTheActionMenu) {
    test::ChangeSetting(L"KvConfig.ini", L"RmbDisable", L"value", L"0");
    SimHost host;
    EXPECT_TRUE(host.State().screen.FindMenu("ActionMenu")->buttons.empty());
    EXPECT_TRUE(RightClick(host, "Some Other Menu").empty());

    const std::vector<std::pair<std::string, std::wstring>> expected = {
        {"KvIsolate", L"独立显示"},         {"KvHideReverse", L"反向隐藏"},
        {"KvShowAllComp", L"全部显示"},     {"KvMdlNameCopy", L"复制模型名称(kv)"},
        {"KvMdlRename", L"快速重命名(kv)"},
    };
    const std::vector<sim::MenuButton>& buttons = host.State().screen.FindMenu("ActionMenu")->buttons;
    ASSERT_EQ(buttons.size(), expected.size());
    for (std::size_t i = 0; i < expected.size(); ++i) {
        EXPECT_EQ(buttons[i].name, sim::Utf8(expected[i].second));
        EXPECT_EQ(buttons[i].labelKey, expected[i].first);
        EXPECT_EQ(buttons[i].helpKey, expected[i].first + "_Help");
        EXPECT_EQ(buttons[i].command, host.State().screen.FindCommand(expected[i].first));
    }
}

TEST(RightClickMenu, LaterSelectionPopupsShowSixEntriesEachTime) {
    SimHost host(test::Unstarted());
    test::StartWithRightClick(host);
    const std::vector<std::pair<std::string, std::wstring>> expected = {
        {"KvIsolate", L"独立显示(kv)"},     {"KvHideReverse", L"反转显示(kv)"},
        {"KvShowAllComp", L"全部显示(kv)"}, {"KvMdlNameCopy", L"复制模型名称(kv)"},
        {"KvMdlRename", L"快速重命名(kv)"},
    };
    for (int popup = 0; popup < 3; ++popup) {
        EXPECT_TRUE(RightClick(host, "Some Other Menu").empty());
        EXPECT_TRUE(RightClick(host, "sel obj menu").empty());
        const std::vector<PopupButton> entries = RightClick(host);
        ASSERT_EQ(entries.size(), 6u);
        for (std::size_t i = 0; i < expected.size(); ++i) {
            EXPECT_EQ(entries[i].name, expected[i].first);
            EXPECT_EQ(entries[i].label, expected[i].second);
            EXPECT_EQ(entries[i].help, sim::Wide(expected[i].first + "_Help"));
            EXPECT_EQ(entries[i].command, host.State().screen.FindCommand(expected[i].first));
        }
        EXPECT_EQ(entries[5].name, "KvOpenDrw");
        sim::Interface& ui = host.State().screen;
        sim::TextTree& texts = host.State().texts;
        EXPECT_EQ(entries[5].label, texts.FindMessage(L"kvMenu.txt", "KvOpenDrw")->Shown());
        EXPECT_EQ(entries[5].help, texts.FindMessage(L"kvMenu.txt", "KvOpenDrw_Help")->Shown());
        ASSERT_NE(entries[5].command, nullptr);
        EXPECT_EQ(entries[5].command, ui.FindCommand("KvOpenDrw"));
        EXPECT_EQ(ui.FindMenu("ActionMenu")->buttons.size(), 6u);
    }
}

// Which entries a selection shows: those for components, and those for any single item.
class RightClickRules : public testing::Test {
protected:
    RightClickRules() : host(test::Unstarted()) {
        test::StartWithRightClick(host);
        bolt.AddBlock(1, 1, 1);
        pump.Place(sub).Place(bolt);
        host.Open(pump);
    }
    // States of an entry for components and of one for single items.
    std::pair<int, int> States(const std::vector<Pick>& picks) {
        host.Select(picks);
        const std::vector<PopupButton> entries = RightClick(host);
        EXPECT_EQ(StateOf(entries, "KvHideReverse"), StateOf(entries, "KvIsolate"));
        EXPECT_EQ(StateOf(entries, "KvShowAllComp"), StateOf(entries, "KvIsolate"));
        EXPECT_EQ(StateOf(entries, "KvMdlRename"), StateOf(entries, "KvMdlNameCopy"));
        EXPECT_EQ(StateOf(entries, "KvOpenDrw"), StateOf(entries, "KvMdlNameCopy"));
        return {StateOf(entries, "KvIsolate"), StateOf(entries, "KvMdlNameCopy")};
    }

    SimHost host;
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& sub = host.AddAssembly(L"SUB");
    SimModel& bolt = host.AddPart(L"BOLT");
};

TEST_F(RightClickRules, DependOnTheKindOfTheFirstItem) {
    const std::map<int, std::pair<int, int>> expected = {
        {1, {3, 3}},  {2, {3, 3}},  {5, {0, 3}},   {6, {0, 3}}, {25, {0, 3}}, {66, {0, 3}},
        {71, {0, 3}}, {72, {0, 3}}, {176, {0, 3}}, {3, {0, 0}}, {21, {0, 0}}, {57, {0, 0}},
    };
    for (const auto& [type, states] : expected) {
        // A surface is looked up in its part, so it gets the number of one that is there.
        const Pick pick = type == 1   ? Whole(sub)
                          : type == 2 ? Whole(bolt)
                                      : ItemOf(bolt, type, bolt.Surfaces()[0]->id);
        EXPECT_EQ(States({pick}), states) << "type " << type;
    }
}

TEST_F(RightClickRules, DependOnTheNumberOfItems) {
    const Pick surface = ItemOf(bolt, 5, bolt.Surfaces()[0]->id);
    EXPECT_EQ(States({}), std::pair(0, 0));
    EXPECT_EQ(States({Whole(bolt), surface}), std::pair(3, 0));
    EXPECT_EQ(States({surface, Whole(bolt)}), std::pair(0, 0));
}

TEST_F(RightClickRules, GreyTheEntriesWhenTheSelectionCannotBeRead) {
    sim::Report& report = host.State().report;
    report.Arm(Fault{"ProSelbufferSelectionsGet", 0});
    EXPECT_EQ(States({Whole(bolt)}), std::pair(1, 1));
    report.DisarmAll();
    // The host's answer for an empty selection: hidden, not greyed.
    report.Arm(Fault{"ProSelbufferSelectionsGet", 0, PRO_TK_E_NOT_FOUND});
    EXPECT_EQ(States({Whole(bolt)}), std::pair(0, 0));
    report.DisarmAll();
    report.Arm(Fault{"ProSelectionModelitemGet", 0});
    const auto [component, item] = States({Whole(bolt)});
    EXPECT_LT(component, 3);
    EXPECT_LT(item, 3);
}

// ---- The last directory

// Text of a folder that brings the working directory to this length.
std::wstring LongFolder(const fs::path& workspace, std::size_t length, wchar_t filling) {
    std::wstring folder;
    const std::size_t used = test::PathText(workspace).size() + 1;
    // Some file systems take 85 Chinese characters a name.
    while (used + folder.size() < length) folder += folder.size() % 50 == 49 ? L'\\' : filling;
    if (folder.back() == L'\\') folder.back() = filling;
    return folder;
}

TEST(LastDirectory, ComesBackInTheNextSession) {
    test::ChangeSetting(L"KvConfig.ini", L"SetLastDir", L"value", L"1");
    const test::TempDirectory workspace;
    HostSetup setup;
    setup.workspace = workspace.Path();
    // The longest path of the host has 259 characters, the separator at its end among them.
    for (const std::wstring& folder :
         {std::wstring(L"pump v2"), std::wstring(L"图纸 目录,1"), LongFolder(workspace.Path(), 258, L'x'),
          LongFolder(workspace.Path(), 258, L'图')}) {
        const std::wstring directory = test::PathText(workspace.Path() / folder);
        SCOPED_TRACE(sim::Utf8(directory));
        {
            SimHost host(setup);
            test::EnterFolder(host, folder);
        }
        std::string written = test::ReadBytes(test::SettingsFile(L"korvane.ini"));
        if (written.ends_with('\\')) written.pop_back();
        EXPECT_EQ(written, test::Encode936(directory)) << "code page 936 and nothing else";
        SimHost host(setup);
        EXPECT_EQ(test::PathText(host.WorkingDirectory()), test::PathText(workspace.Path()));
        host.FireTimers();
        EXPECT_EQ(test::PathText(host.WorkingDirectory()), directory);
    }
}

TEST(LastDirectory, IsRestoredByOneTickTwoSecondsAfterTheStart) {
    SimHost host;
    ASSERT_EQ(sim::DesktopTimers().size(), 1u);
    EXPECT_EQ(sim::DesktopTimers()[0].period, 2000u);
    host.FireTimers();
    EXPECT_TRUE(sim::DesktopTimers().empty());
}

TEST(LastDirectory, ReplacesWhatAnEarlierSessionLeft) {
    test::WriteBytes(test::SettingsFile(L"korvane.ini"), std::string(700, 'x'));
    SimHost host;
    const std::wstring directory = test::PathText(host.WorkingDirectory());
    host.Terminate();
    EXPECT_TRUE(test::ReadBytes(test::SettingsFile(L"korvane.ini")).starts_with(test::Encode936(directory)));
    EXPECT_LE(test::ReadBytes(test::SettingsFile(L"korvane.ini")).size(), directory.size() + 1);
}

TEST(LastDirectory, IsRestoredForTheSettingOneAlone) {
    const std::map<std::wstring, bool> settings = {
        {L"[SetLastDir]\r\nvalue=1\r\n", true},  {L"[SetLastDir]\r\nvalue=\" 1 \"\r\n", true},
        {L"[SetLastDir]\r\nvalue=0\r\n", false}, {L"[SetLastDir]\r\nvalue=11\r\n", false},
        {L"[SetLastDir]\r\nvalue=\r\n", false},  {L"[RmbDisable]\r\nvalue=1\r\n", false},
    };
    for (const auto& [file, restores] : settings) {
        SCOPED_TRACE(sim::Utf8(file));
        test::WriteSettings(L"KvConfig.ini", file);
        SimHost host;
        const fs::path folder = test::MakeFolder(host, "last");
        const fs::path expected = restores ? folder : host.WorkingDirectory();
        test::WriteBytes(test::SettingsFile(L"korvane.ini"), test::Encode936(folder.wstring()));
        host.FireTimers();
        EXPECT_EQ(test::PathText(host.WorkingDirectory()), test::PathText(expected));
    }
    fs::remove(test::SettingsFile(L"KvConfig.ini"));
    SimHost host;
    const fs::path before = host.WorkingDirectory();
    host.FireTimers();
    EXPECT_EQ(host.WorkingDirectory(), before);
}

TEST(LastDirectory, StaysWhereTheHostStartedWhenTheFileIsOfNoUse) {
    test::ChangeSetting(L"KvConfig.ini", L"SetLastDir", L"value", L"1");
    const std::vector<std::pair<const char*, std::optional<std::string>>> files = {
        {"missing", std::nullopt},
        {"empty", ""},
        {"the folder is gone", "C:\\no such folder\\at all"},
        {"longer than a path", "C:\\" + std::string(300, 'x')},
        {"far longer than a path", "C:\\" + std::string(100'000, 'x')},
        {"longer than a path, in Chinese", test::Encode936(L"C:\\" + std::wstring(300, L'图'))},
        {"not text", std::string("C:\\\xFF\xFF\x81", 6)},
    };
    for (const auto& [what, bytes] : files) {
        SCOPED_TRACE(what);
        fs::remove(test::SettingsFile(L"korvane.ini"));
        if (bytes) test::WriteBytes(test::SettingsFile(L"korvane.ini"), *bytes);
        SimHost host;
        const fs::path before = host.WorkingDirectory();
        host.FireTimers();
        EXPECT_EQ(host.WorkingDirectory(), before);
        EXPECT_EQ(Messages(host), Texts{});
    }
}

// ---- The commands of the frame

TEST(KvVersion, ShowsTheVersionFirst) {
    SimHost host;
    EXPECT_EQ(host.Run("KvVersion"), PRO_TK_NO_ERROR);
    ASSERT_EQ(Messages(host).size(), 1u);
    EXPECT_TRUE(Messages(host)[0].starts_with(L"当前版本：5.1C9"));
}

TEST(AboutKv, ShowsTheTermsOnceTheUserAgrees) {
    SimHost host;
    host.OnDialog("AboutKv", [&](SimDialog& dialog) {
        EXPECT_EQ(Messages(host), Texts{});
        dialog.Press("OK");
        EXPECT_FALSE(dialog.IsOpen());
        EXPECT_EQ(host.State().screen.FindDialog("AboutKv")->exitStatus, 1);
    });
    EXPECT_EQ(host.Run("AboutKv"), PRO_TK_NO_ERROR);
    EXPECT_EQ(Messages(host),
              Texts{L"使用本插件表示同意以下条款：\n使用前应充分了解该插件所有功能并进行备份数据测试，"
                    L"本插件不承担任何使用过程中造成的数据丢失或其他损失;。"});
}

TEST(ForTest, LetsTheUserPickOneFeatureAndChangesNothing) {
    SimHost host;
    SimModel& bolt = host.AddPart(L"BOLT").AddBlock(1, 1, 1).AddFeature(917);
    EXPECT_NE(host.Run("ForTest"), PRO_TK_NO_ERROR) << "no model is open";

    host.Open(bolt);
    const Pick feature = ItemOf(bolt, 3, bolt.Features()[0].id);
    host.AnswerPick({false, {feature}});
    EXPECT_EQ(host.Run("ForTest"), PRO_TK_NO_ERROR);
    EXPECT_EQ(host.Calls("ProSelectionModelitemGet"), 1);
    for (const sim::PickAnswer& none : {sim::PickAnswer{false, {}}, sim::PickAnswer{true, {}}}) {
        host.AnswerPick(none);
        host.Run("ForTest");
        EXPECT_EQ(host.Calls("ProSelectionModelitemGet"), 0);
    }
    EXPECT_EQ(Messages(host), Texts{});

    // The host lets the user pick neither another kind of item nor a second one.
    host.AnswerPick({false, {ItemOf(bolt, 5, bolt.Surfaces()[0]->id)}});
    host.Run("ForTest");
    host.AnswerPick({false, {feature, feature}});
    host.Run("ForTest");
    EXPECT_EQ(host.TakeProblems().size(), 2u);
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
