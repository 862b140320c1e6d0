// Start-up of the plug-in: its menu with every command of the command table.

#include <algorithm>
#include <cstddef>
#include <map>
#include <set>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "host/command_table.h"
#include "simulator/host/sim_host.h"
#include "simulator/windows/desktop.h"
#include "support/arrange.h"

namespace {

using sim::Fault;
using sim::SimHost;

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
    const std::span<const kv::CommandRow> rows = kv::Commands();
    ASSERT_EQ(menu.buttons.size(), rows.size());
    for (std::size_t i = 0; i < menu.buttons.size(); ++i) {
        const kv::CommandRow& expected = rows[i];
        const sim::MenuButton& button = menu.buttons[i];
        SCOPED_TRACE(expected.name);
        EXPECT_EQ(button.name, expected.name);
        EXPECT_EQ(button.labelKey, expected.name);
        EXPECT_EQ(button.helpKey, expected.helpKey);
        EXPECT_EQ(button.messageFile, L"kvMenu.txt");
        ASSERT_NE(button.command, nullptr);

        const sim::Command& command = *button.command;
        EXPECT_EQ(command.name, expected.name);
        EXPECT_EQ(command.priority, 2);
        EXPECT_FALSE(command.inNonActiveWindow);
        EXPECT_FALSE(command.inAccessoryWindow);
        EXPECT_EQ(command.icon, expected.icon);
        EXPECT_EQ(command.designated, expected.designated);
        if (!command.designated) continue;
        EXPECT_EQ(command.labelKey, expected.name);
        EXPECT_EQ(command.helpKey, expected.helpKey);
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
    ASSERT_EQ(rows["chinese_cn"].size(), kv::Commands().size());
    ASSERT_EQ(rows["usascii"].size(), kv::Commands().size());
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
        for (const kv::CommandRow& row : kv::Commands().subspan(1))
            EXPECT_NE(host.State().screen.FindCommand(row.name), nullptr);
        EXPECT_EQ(sim::DesktopTimers().size(), 1u);
    }
}

}  // namespace
