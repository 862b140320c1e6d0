// Right-click entries: when they are installed, what the menus show, and for which selection.

#include <algorithm>
#include <filesystem>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "host/command_table.h"
#include "simulator/host/sim_host.h"
#include "simulator/report/utf8.h"
#include "support/arrange.h"
#include "support/plugin_home.h"
#include "support/temp_directory.h"

namespace {

namespace fs = std::filesystem;
using sim::Fault;
using sim::HostSetup;
using sim::Pick;
using sim::PopupButton;
using sim::SimHost;
using sim::SimModel;
using test::ItemOf;
using test::RightClick;
using test::StateOf;
using test::Whole;

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

// What the menu registered first stays in force; where it could not, the right click brings its own rule.
TEST(RightClickMenu, RegistersWhatTheMenuCouldNot) {
    test::ChangeSetting(L"KvConfig.ini", L"RmbDisable", L"value", L"0");
    const std::span<const kv::CommandRow> rows = kv::Commands();
    const auto isolate = std::ranges::find(rows, std::string_view("KvIsolate"), &kv::CommandRow::name);
    for (const bool fails : {false, true}) {
        SimHost host(test::Unstarted());
        if (fails) host.State().report.Arm(Fault{"ProCmdActionAdd", isolate - rows.begin() + 1});
        host.Initialize();
        RightClick(host);
        const sim::Command* command = host.State().screen.FindCommand("KvIsolate");
        ASSERT_NE(command, nullptr);
        EXPECT_EQ(command->priority, fails ? uiProe2ndImmediate : uiProeImmediate);
        EXPECT_EQ(host.State().screen.FindMenu("ActionMenu")->buttons.size(), 5u);
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
        EXPECT_EQ(entries[5].label, host.State().texts.FindMessage(L"kvMenu.txt", "KvOpenDrw")->Shown());
        EXPECT_EQ(entries[5].help, host.State().texts.FindMessage(L"kvMenu.txt", "KvOpenDrw_Help")->Shown());
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

}  // namespace
