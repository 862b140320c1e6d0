// The host's commands, menus and popup menus, called as the plug-in calls them: what works, what is refused,
// and what counts as misuse.

#include <string>
#include <vector>

#include <ProArray.h>
#include <ProMenuBar.h>
#include <ProNotify.h>
#include <ProPopupmenu.h>
#include <ProUICmd.h>
#include <gtest/gtest.h>

#include "simulator/report/utf8.h"
#include "simulator/session/session.h"
#include "support/toolkit_ui.h"

namespace {

using namespace sim;
using namespace test;

uiCmdAccessState access = ACCESS_AVAILABLE;
uiCmdAccessState Access(uiCmdAccessMode) {
    return access;
}
int OddAccess(uiCmdAccessMode) {
    return 9;
}

TEST_F(ToolkitUi, CommandsRunWhenTheyAreAvailable) {
    const uiCmdCmdId id = AddRun(Access);
    const uiCmdCmdId untouched = reinterpret_cast<uiCmdCmdId>(this);
    uiCmdCmdId again = untouched;
    EXPECT_EQ(ProCmdActionAdd(C("Run"), RunAction, 2, nullptr, PRO_B_FALSE, PRO_B_FALSE, &again),
              PRO_TK_E_FOUND);
    EXPECT_NE(again, untouched) << "it means nothing then";
    EXPECT_EQ(ProCmdCmdIdFind(C("Run"), &again), PRO_TK_NO_ERROR);
    EXPECT_EQ(again, id);
    EXPECT_EQ(ProCmdCmdIdFind(C("Walk"), &again), PRO_TK_E_NOT_FOUND);

    access = ACCESS_AVAILABLE;
    EXPECT_EQ(session.screen.RunCommand("Run"), PRO_TK_E_BUSY) << "the action's own answer";
    EXPECT_EQ(session.user.macros, (std::vector<std::wstring>{L"last", L"first"}));
    access = ACCESS_UNAVAILABLE;
    EXPECT_EQ(session.screen.RunCommand("Run"), PRO_TK_CANT_ACCESS);
    session.screen.FindCommand("Run")->access =
        reinterpret_cast<uiCmdAccessFn>(reinterpret_cast<void (*)()>(OddAccess));
    EXPECT_EQ(session.screen.RunCommand("Run"), PRO_TK_CANT_ACCESS);
    EXPECT_EQ(session.screen.RunCommand("Walk"), PRO_TK_E_NOT_FOUND);
    Play([this](SimDialog&) { EXPECT_EQ(session.screen.RunCommand("Run"), PRO_TK_E_BUSY); });
    EXPECT_EQ(session.user.macros.size(), 2U) << "run once";
    EXPECT_EQ(TakeProblems(), (Lines{"the command \"Run\" is not available",
                                     "the command \"Run\" is not available", "there is no command \"Walk\"",
                                     "the command \"Run\" cannot start, the dialog \"D\" is open"}));
    EXPECT_EQ(TakeViolations(), Lines{"the access function of \"Run\" answers 9"});
}

TEST_F(ToolkitUi, RegistrationIsCheckedAgainstTheTextTree) {
    const uiCmdCmdId id = AddRun();
    const uiCmdCmdId stray = reinterpret_cast<uiCmdCmdId>(this);
    uiCmdCmdId other = nullptr;
    const auto menu = [](const char* name, const char* key, const char* beside) {
        return ProMenubarMenuAdd(C(name), C(key), C(beside), PRO_B_TRUE, File());
    };
    const auto button = [](const char* parent, const char* name, const char* key, uiCmdCmdId command) {
        return ProMenubarmenuPushbuttonAdd(C(parent), C(name), C(key), C("Run_Help"), nullptr, PRO_B_TRUE,
                                           command, File());
    };
    const auto action = [&](const char* name, int priority) {
        return ProCmdActionAdd(C(name), RunAction, priority, nullptr, PRO_B_FALSE, PRO_B_FALSE, &other);
    };
    struct Case {
        ProError answered, expected;
        std::string violation;
    };
    const std::vector<Case> cases = {
        {action("A2345678901234567890123456789012", 2), PRO_TK_GENERAL_ERROR,
         "the command name \"A2345678901234567890123456789012\" is longer than 31 characters"},
        {action("Walk", 4), PRO_TK_GENERAL_ERROR, "there is no priority 4"},
        {action("\xB0\xA1", 2), PRO_TK_GENERAL_ERROR, "the command name \"\xB0\xA1\" is no UTF-8"},
        {action("A234567890123456789012345678901", 2), PRO_TK_NO_ERROR, ""},
        {menu("Menu", "Menu", "Help"), PRO_TK_NO_ERROR, ""},
        {menu("Menu", "Menu", "Help"), PRO_TK_E_FOUND, ""},
        {menu("Other", "Menu", "Edit"), PRO_TK_GENERAL_ERROR, "there is no menu \"Edit\""},
        {menu("Other", "Other", "Help"), PRO_TK_MSG_NOT_FOUND,
         "the message file \"kvMenu.txt\" has no key \"Other\""},
        {button("Menu", "Run", "Run", id), PRO_TK_NO_ERROR, ""},
        {button("Menu", "Run", "Run", id), PRO_TK_E_FOUND, ""},
        {button("Menu", "Run", "Run", other), PRO_TK_E_FOUND, "the button name \"Run\" is taken"},
        {button("ActionMenu", "Run", "Run", id), PRO_TK_E_FOUND, "the button name \"Run\" is taken"},
        {button("ActionMenu", "独立显示", "Run", id), PRO_TK_NO_ERROR, ""},
        {button("Nowhere", "Go", "Run", id), PRO_TK_GENERAL_ERROR, "there is no menu \"Nowhere\""},
        {button("Menu", "Go", "Run", stray), PRO_TK_GENERAL_ERROR,
         "the command identifier is none of the host's"},
        {button("Menu", "Go", "Go", id), PRO_TK_MSG_NOT_FOUND,
         "the message file \"kvMenu.txt\" has no key \"Go\""},
        {ProCmdIconSet(id, C("Run.png")), PRO_TK_NO_ERROR, ""},
        {ProCmdIconSet(id, C("Go.png")), PRO_TK_GENERAL_ERROR, "there is no icon file \"Go.png\""},
        {ProCmdIconSet(id, C("Small.png")), PRO_TK_GENERAL_ERROR,
         "the icon file \"Small_large.png\" measures 16x16 pixels instead of 32x32"},
        {ProCmdIconSet(id, C("D.res")), PRO_TK_GENERAL_ERROR, "the icon file \"D.res\" is no PNG file"},
        {ProCmdIconSet(id, C("resource/Run.png")), PRO_TK_GENERAL_ERROR,
         "the icon name \"resource/Run.png\" has a path"},
        {ProCmdDesignate(id, C("Run"), C("Run_Help"), C("Run"), File()), PRO_TK_NO_ERROR, ""},
        {ProCmdDesignate(id, C("Run"), C("Help"), C("Run"), File()), PRO_TK_MSG_NOT_FOUND,
         "the message file \"kvMenu.txt\" has no key \"Help\""},
        {ProCmdDesignate(id, C("Run"), C("Run_Help"), C("Run"), W(L"none.txt")), PRO_TK_E_NOT_FOUND,
         "there is no message file \"none.txt\""},
        {ProCmdDesignate(stray, C("Run"), C("Run_Help"), C("Run"), File()), PRO_TK_BAD_INPUTS,
         "the command identifier is none of the host's"},
    };
    Lines expected, found;
    for (const Case& one : cases) {
        EXPECT_EQ(one.answered, one.expected) << one.violation;
        if (!one.violation.empty()) expected.push_back(one.violation);
    }
    for (const std::string& violation : TakeViolations())
        found.push_back(violation.substr(violation.find(": ") + 2));
    EXPECT_EQ(found, expected);

    const std::vector<MenuRow> rows = session.screen.MenuRows();
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0].menu + "/" + rows[0].button + "/" + rows[0].command, "Menu/Run/Run");
    EXPECT_EQ(Utf8(rows[0].label) + Utf8(rows[0].help), "运行运行一次。");
    EXPECT_EQ(rows[1].button, "独立显示");

    session.screen.strict.nonAsciiButtonNameRefused = true;
    EXPECT_EQ(button("ActionMenu", "全部显示", "Run", id), PRO_TK_GENERAL_ERROR);
    EXPECT_EQ(TakeViolations(), Lines{});
}

// ---- Popup menus

int selectedItems = -1;
uiCmdAccessState popupAccess = ACCESS_AVAILABLE;
uiCmdAccessState PopupAccess(uiCmdCmdId, ProAppData, ProSelection* selections) {
    EXPECT_EQ(ProArraySizeGet(selections, &selectedItems), PRO_TK_NO_ERROR);
    return popupAccess;
}

ProError AddButton(const char* name, int position, ProPopupMenuId menu) {
    uiCmdCmdId id = nullptr;
    ProCmdCmdIdFind(C("Run"), &id);
    return ProPopupmenuButtonAdd(menu, position, C(name), W(L"标签"), W(L"help"), id, PopupAccess, nullptr);
}

ProPopupMenuId lastMenu = 0;
ProError SecondHandler(const char* name) {
    EXPECT_STREQ(name, "Sel Obj Menu");
    EXPECT_EQ(ProPopupmenuIdGet(name, &lastMenu), PRO_TK_NO_ERROR);
    EXPECT_EQ(AddButton("A", PRO_VALUE_UNUSED, lastMenu), PRO_TK_NO_ERROR);
    EXPECT_EQ(AddButton("B", 0, lastMenu), PRO_TK_NO_ERROR);
    return PRO_TK_NO_ERROR;
}
ProError FirstHandler(const char*) {
    return ProNotificationSet(PRO_POPUPMENU_CREATE_POST,
                              reinterpret_cast<ProFunction>(reinterpret_cast<void (*)()>(SecondHandler)));
}

TEST_F(ToolkitUi, PopupMenuAsksTheHandlerAndEveryButton) {
    AddRun(Access);
    Interface& screen = session.screen;
    const auto handler = reinterpret_cast<ProFunction>(reinterpret_cast<void (*)()>(FirstHandler));
    ASSERT_EQ(ProNotificationSet(PRO_POPUPMENU_CREATE_POST, handler), PRO_TK_NO_ERROR);
    EXPECT_TRUE(screen.OpenPopup("Sel Obj Menu").buttons.empty()) << "the first handler only sets the second";

    SimModel* bolt = session.models.Create(L"BOLT", ModelKind::kPart);
    session.desk.selected.assign(2, Pick{bolt, 0, 0, {}});
    struct Case {
        uiCmdAccessState command, button, shown;
        ProError chosen;
    };
    const std::vector<Case> cases = {
        {ACCESS_AVAILABLE, ACCESS_AVAILABLE, ACCESS_AVAILABLE, PRO_TK_E_BUSY},
        {ACCESS_AVAILABLE, ACCESS_INVISIBLE, ACCESS_INVISIBLE, PRO_TK_E_NOT_FOUND},
        {ACCESS_UNAVAILABLE, ACCESS_AVAILABLE, ACCESS_UNAVAILABLE, PRO_TK_CANT_ACCESS},
    };
    for (const Case& one : cases) {
        access = one.command;
        popupAccess = one.button;
        const PopupMenu& popup = screen.OpenPopup("Sel Obj Menu");
        ASSERT_EQ(popup.buttons.size(), 2U);
        EXPECT_EQ(popup.buttons[0].name + popup.buttons[1].name, "BA");
        EXPECT_EQ(popup.buttons[0].state, one.shown);
        EXPECT_EQ(selectedItems, 2);
        EXPECT_EQ(screen.ChoosePopupEntry("A"), one.chosen);
    }
    EXPECT_EQ(TakeProblems(), (Lines{"the popup menu \"Sel Obj Menu\" does not show \"A\"",
                                     "the popup menu \"Sel Obj Menu\" shows greyed: \"A\""}));
    EXPECT_EQ(TakeViolations(), Lines{});

    const ProPopupMenuId open = screen.CurrentPopup()->id;
    EXPECT_EQ(AddButton("C", PRO_VALUE_UNUSED, open - 1), PRO_TK_BAD_INPUTS)
        << "identifiers of closed menus are stale";
    EXPECT_EQ(AddButton("C", 3, open), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(AddButton("A", PRO_VALUE_UNUSED, open), PRO_TK_E_FOUND);
    const std::wstring longLabel(81, L'x');
    EXPECT_EQ(
        ProPopupmenuButtonAdd(open, -1, C("C"), W(longLabel.c_str()), W(L"help"), nullptr, nullptr, nullptr),
        PRO_TK_BAD_INPUTS);
    EXPECT_EQ(ProNotificationSet(static_cast<ProNotifyType>(1), handler), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(TakeViolations().size(), 5U);
    ProPopupMenuId other = 0;
    EXPECT_EQ(ProPopupmenuIdGet("Other Menu", &other), PRO_TK_E_NOT_FOUND);
    EXPECT_EQ(TakeViolations(), Lines{});
}

}  // namespace
