// The host's dialogs, commands, menus, popup menus and messages, called as the plug-in calls them: what
// works, what is refused, and what counts as misuse.

#include <cstring>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include <ProArray.h>
#include <ProMenuBar.h>
#include <ProMessage.h>
#include <ProNotify.h>
#include <ProPopupmenu.h>
#include <ProUICheckbutton.h>
#include <ProUICmd.h>
#include <ProUIDialog.h>
#include <ProUIInputpanel.h>
#include <ProUIOptionmenu.h>
#include <ProUIPushbutton.h>
#include <ProUIRadiogroup.h>
#include <ProUtil.h>

#include "simulator/report/utf8.h"
#include "simulator/session/session.h"
#include "simulator/ui/sim_dialog.h"
#include "support/temp_directory.h"

namespace {

using namespace sim;
using Lines = std::vector<std::string>;

constexpr char kLayout[] = R"((Dialog D
  (Components (InputPanel Name) (RadioGroup Kind) (OptionMenu Type) (OptionMenu Free) (CheckButton Sort)
    (Table List) (PushButton Ok) (PushButton Idle) (InputPanel Off) (InputPanel Hidden))
  (Resources
    (Name.MaxLen 5)
    (Kind.Names "all" "parts")
    (Kind.SelectedNames "all")
    (Type.Names "i" "r")
    (Type.Labels "integer" "real")
    (Type.SelectedNames "i")
    (Free.Editable True)
    (List.ColumnNames "num")
    (List.RowNames "1" "2")
    (Off.Sensitive False)
    (Hidden.Visible False)
    (.Layout (Grid (Rows 0 0 0 0 0 0 0 0 0 0) (Cols 1) Name Kind Type Free Sort List Ok Idle Off Hidden)))))";

constexpr char kMessages[] =
    "\xEF\xBB\xBFMenu\nMenu\n菜单\n\nRun\nRun\n运行\n\nRun_Help\nRuns.\n运行一次。\n\n"
    "Now %0w, %1d\nNow %0w, %1d\n%0w 现为 %1d\n\nNew name\nNew name:|||%0w\n新名称:|||%0w\n\n";

std::string Png(char side) {
    std::string png("\x89PNG\r\n\x1A\n\0\0\0\rIHDR\0\0\0\0\0\0\0\0\x08\x06\0\0\0\0\0\0\0", 33);
    png[19] = png[23] = side;
    return png;
}

// Inputs of the host are not const.
char* C(const char* text) {
    return const_cast<char*>(text);
}
wchar_t* W(const wchar_t* text) {
    return const_cast<wchar_t*>(text);
}
wchar_t* File() {
    return W(L"kvMenu.txt");
}

class ToolkitUi : public testing::Test {
protected:
    ToolkitUi() {
        std::filesystem::create_directories(folder_ / "text/resource");
        Write("resource/D.res", kLayout);
        Write("resource/Broken.res", "(Dialog Broken");
        Write("kvMenu.txt", kMessages);
        Write("resource/Run.png", Png(16));
        Write("resource/Run_large.png", Png(32));
        Write("resource/Small.png", Png(16));
        Write("resource/Small_large.png", Png(16));
    }
    ~ToolkitUi() override { EXPECT_EQ(session.report.OpenItems(), Lines{}); }

    void Write(const char* file, const std::string& bytes) {
        folder_.Write(std::filesystem::path("text") / file, bytes);
    }

    Lines TakeViolations() {
        Lines violations = session.report.Violations();
        session.report.ClearViolations();
        return violations;
    }
    Lines TakeProblems() { return std::exchange(session.user.problems, {}); }

    // Opens D with these actions at Ok and the close box, lets the user play, and destroys it.
    void Play(std::function<void(SimDialog&)> user, ProUIAction onOk = Nothing, ProUIAction onClose = Exit) {
        session.user.dialogs["D"].push_back(std::move(user));
        ASSERT_EQ(ProUIDialogCreate(C("D"), C("D")), PRO_TK_NO_ERROR);
        ASSERT_EQ(ProUIPushbuttonActivateActionSet(C("D"), C("Ok"), onOk, this), PRO_TK_NO_ERROR);
        ASSERT_EQ(ProUIDialogCloseActionSet(C("D"), onClose, this), PRO_TK_NO_ERROR);
        ASSERT_EQ(ProUIDialogActivate(C("D"), nullptr), PRO_TK_NO_ERROR);
        ASSERT_EQ(ProUIDialogDestroy(C("D")), PRO_TK_NO_ERROR);
    }

    static void Nothing(char*, char*, ProAppData) {}
    static void Exit(char* dialog, char*, ProAppData) { ProUIDialogExit(dialog, 3); }

    uiCmdCmdId AddRun(uiCmdAccessFn access = nullptr) {
        uiCmdCmdId id = nullptr;
        EXPECT_EQ(
            ProCmdActionAdd(C("Run"), RunAction, uiProeImmediate, access, PRO_B_FALSE, PRO_B_FALSE, &id),
            PRO_TK_NO_ERROR);
        return id;
    }
    static int RunAction(uiCmdCmdId, uiCmdValue*, void*) {
        Host().screen.loadedMacros = {L"first", L"last"};
        return PRO_TK_E_BUSY;
    }

    test::TempDirectory folder_;

public:
    Session session{folder_.Path(), folder_.Path()};
    Lines log;
    std::pair<const char*, const char*> kept = {};
};

TEST_F(ToolkitUi, DialogLivesFromCreateToDestroy) {
    ASSERT_EQ(ProUIDialogCreate(C("session"), C("D")), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProUIInputpanelValueSet(C("session"), C("Name"), W(L"螺栓")), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProUICheckbuttonSet(C("session"), C("Sort")), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProUIPushbuttonActivateActionSet(C("session"), C("Ok"), Exit, nullptr), PRO_TK_NO_ERROR);
    session.user.dialogs["session"].push_back([](SimDialog& dialog) {
        EXPECT_EQ(Utf8(dialog.Text("Name")), "螺栓");
        EXPECT_TRUE(dialog.IsChecked("Sort"));
        dialog.Choose("Kind", L"parts").Choose("Type", L"real").Type("Free", L"7").Press("Ok");
        EXPECT_FALSE(dialog.IsOpen());
    });
    int status = 0;
    ASSERT_EQ(ProUIDialogActivate(C("session"), &status), PRO_TK_NO_ERROR);
    EXPECT_EQ(status, 3);

    int count = 0;
    char** names = nullptr;
    wchar_t* type = nullptr;
    wchar_t* free = nullptr;
    ASSERT_EQ(ProUIRadiogroupSelectednamesGet(C("session"), C("Kind"), &count, &names), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProUIOptionmenuValueGet(C("session"), C("Type"), &type), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProUIOptionmenuValueGet(C("session"), C("Free"), &free), PRO_TK_NO_ERROR);
    ASSERT_EQ(count, 1);
    EXPECT_STREQ(names[0], "parts");
    EXPECT_EQ(Utf8(type), "real");
    EXPECT_EQ(Utf8(free), "7");
    ProStringarrayFree(names, count);
    ProWstringFree(type);
    ProWstringFree(free);
    EXPECT_EQ(session.report.OpenCount(Account::kDialog), 1U);
    EXPECT_EQ(ProUIDialogDestroy(C("session")), PRO_TK_NO_ERROR);
    EXPECT_EQ(TakeViolations(), Lines{});
    EXPECT_EQ(TakeProblems(), Lines{});
}

TEST_F(ToolkitUi, DialogMisuseIsAViolation) {
    ASSERT_EQ(ProUIDialogCreate(C("D"), C("D")), PRO_TK_NO_ERROR);
    wchar_t* value = nullptr;
    ProBoolean state = PRO_B_FALSE;
    char* twice[] = {C("all"), C("parts")};
    struct Case {
        ProError answered, expected;
        std::string violation;
    };
    const std::vector<Case> cases = {
        {ProUIDialogCreate(C("D"), C("D")), PRO_TK_GENERAL_ERROR,
         "ProUIDialogCreate: the dialog \"D\" exists already"},
        {ProUIDialogCreate(C("E"), C("E")), PRO_TK_GENERAL_ERROR,
         "ProUIDialogCreate: there is no layout \"E.res\""},
        {ProUIDialogCreate(C("d"), C("d")), PRO_TK_GENERAL_ERROR,
         "ProUIDialogCreate: there is no layout \"d.res\""},
        {ProUIInputpanelValueGet(C("E"), C("Name"), &value), PRO_TK_GENERAL_ERROR,
         "ProUIInputpanelValueGet: there is no dialog \"E\""},
        {ProUIInputpanelValueGet(C("D"), C("name"), &value), PRO_TK_GENERAL_ERROR,
         "ProUIInputpanelValueGet: the dialog \"D\" has no component \"name\""},
        {ProUIInputpanelValueGet(C("D"), C("Free"), &value), PRO_TK_GENERAL_ERROR,
         "ProUIInputpanelValueGet: the component \"Free\" of \"D\" is a OptionMenu"},
        {ProUIInputpanelValueSet(C("D"), C("Name"), nullptr), PRO_TK_GENERAL_ERROR,
         "ProUIInputpanelValueSet: the value is null"},
        {ProUICheckbuttonGetState(C("D"), nullptr, &state), PRO_TK_GENERAL_ERROR,
         "ProUICheckbuttonGetState: the dialog \"D\" has no component null"},
        {ProUIRadiogroupSelectednamesSet(C("D"), C("Kind"), 2, twice), PRO_TK_GENERAL_ERROR,
         "ProUIRadiogroupSelectednamesSet: a radio group takes exactly one name"},
        {ProUIPushbuttonActivateActionSet(C("D"), C("Ok"), nullptr, nullptr), PRO_TK_GENERAL_ERROR,
         "ProUIPushbuttonActivateActionSet: the action of \"Ok\" is null"},
        {ProUIDialogExit(C("D"), 0), PRO_TK_GENERAL_ERROR,
         "ProUIDialogExit: the dialog \"D\" is not on the screen"},
        {ProUIDialogActivate(C("E"), nullptr), PRO_TK_BAD_INPUTS,
         "ProUIDialogActivate: there is no dialog \"E\""},
        {ProUIDialogDestroy(C("D")), PRO_TK_NO_ERROR, ""},
        {ProUICheckbuttonSet(C("D"), C("Sort")), PRO_TK_GENERAL_ERROR,
         "ProUICheckbuttonSet: there is no dialog \"D\""},
        {ProUIDialogDestroy(C("D")), PRO_TK_GENERAL_ERROR, "ProUIDialogDestroy: there is no dialog \"D\""},
    };
    Lines expected;
    for (const Case& one : cases) {
        EXPECT_EQ(one.answered, one.expected) << one.violation;
        if (!one.violation.empty()) expected.push_back(one.violation);
    }
    EXPECT_EQ(TakeViolations(), expected);

    EXPECT_EQ(ProUIDialogCreate(C("B"), C("Broken")), PRO_TK_GENERAL_ERROR);
    ASSERT_EQ(session.report.Violations().size(), 1U);
    EXPECT_NE(TakeViolations()[0].find("Broken.res:1:15: expected ( before Components"), std::string::npos);
}

TEST_F(ToolkitUi, UnknownChoicesAreRefusedWithoutAViolation) {
    ASSERT_EQ(ProUIDialogCreate(C("D"), C("D")), PRO_TK_NO_ERROR);
    for (const char* name : {"none", ""}) {
        char* names[] = {C(name)};
        EXPECT_EQ(ProUIRadiogroupSelectednamesSet(C("D"), C("Kind"), 1, names), PRO_TK_GENERAL_ERROR);
    }
    EXPECT_EQ(ProUIOptionmenuValueSet(C("D"), C("Type"), W(L"text")), PRO_TK_GENERAL_ERROR);
    EXPECT_EQ(ProUIOptionmenuValueSet(C("D"), C("Free"), W(L"text")), PRO_TK_NO_ERROR);
    const Dialog& dialog = *session.screen.FindDialog("D");
    EXPECT_EQ(SelectedName(*dialog.Find("Kind")), "all");
    EXPECT_EQ(dialog.Find("Type")->value, L"integer");
    EXPECT_EQ(dialog.Find("Free")->value, L"text");
    EXPECT_EQ(ProUIDialogDestroy(C("D")), PRO_TK_NO_ERROR);
    EXPECT_EQ(TakeViolations(), Lines{});
}

TEST_F(ToolkitUi, UserCanOnlyDoWhatTheScreenAllows) {
    Play([](SimDialog& dialog) {
        dialog.Type("Name", L"123456")
            .Type("Name", L"12345")
            .Type("Off", L"x")
            .Type("Hidden", L"x")
            .Type("Type", L"x");
        dialog.Choose("Kind", L"drawings").Press("Idle").Press("Sort").PressReturn();
        dialog.SelectRows("List", {"1", "2"}).SelectRows("List", {"3"}).DoubleClick("List", "1", "name");
        EXPECT_EQ(dialog.Text("Name"), L"12345");
        dialog.Close();
        dialog.Press("Ok");
    });
    const std::string cannot = "dialog \"D\": cannot ";
    EXPECT_EQ(TakeProblems(),
              (Lines{cannot + "type \"123456\" into \"Name\": it takes 5 characters at most",
                     cannot + "type \"x\" into \"Off\": it is greyed",
                     cannot + "type \"x\" into \"Hidden\": it is not visible",
                     cannot + "type \"x\" into \"Type\": it takes no text",
                     cannot + "choose \"drawings\" in \"Kind\": it shows \"all\", \"parts\"",
                     cannot + "press \"Idle\": nothing happens, the button has no action",
                     cannot + "press \"Sort\": it is a CheckButton",
                     cannot + "press Return: the dialog has no default button",
                     cannot + "select rows of \"List\": it lets 1 rows be selected",
                     cannot + "select rows of \"List\": there is no row \"3\"",
                     cannot + "double-click \"1\", \"name\" of \"List\": there is no such cell",
                     cannot + "press \"Ok\": the dialog is closed"}));
    EXPECT_EQ(TakeViolations(), Lines{});
}

TEST_F(ToolkitUi, DialogHasToEndByItsOwnActions) {
    Play([](SimDialog&) {}, Nothing, Nothing);
    EXPECT_EQ(TakeViolations(), Lines{"ProUIDialogActivate: the dialog \"D\" cannot be closed"});

    const auto destroy = [](char* dialog, char*, ProAppData) {
        EXPECT_EQ(ProUIDialogDestroy(dialog), PRO_TK_GENERAL_ERROR);
        EXPECT_EQ(ProUIDialogExit(dialog, 1), PRO_TK_NO_ERROR);
        EXPECT_EQ(ProUIDialogExit(dialog, 2), PRO_TK_NO_ERROR);
    };
    Play([](SimDialog& dialog) { dialog.Press("Ok"); }, destroy);
    EXPECT_EQ(TakeViolations(), Lines{"ProUIDialogDestroy: the dialog \"D\" is still on the screen"});

    session.user.dialogs.clear();
    ASSERT_EQ(ProUIDialogCreate(C("E"), C("D")), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProUIDialogCloseActionSet(C("E"), Exit, nullptr), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProUIDialogActivate(C("E"), nullptr), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProUIDialogDestroy(C("E")), PRO_TK_NO_ERROR);
    EXPECT_EQ(TakeProblems(), Lines{"unexpected dialog \"E\""});

    const auto throwing = [](char*, char*, ProAppData) { throw 1; };
    session.user.dialogs["E"].push_back([](SimDialog& dialog) { dialog.Press("Ok"); });
    ASSERT_EQ(ProUIDialogCreate(C("E"), C("D")), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProUIPushbuttonActivateActionSet(C("E"), C("Ok"), throwing, nullptr), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProUIDialogActivate(C("E"), nullptr), PRO_TK_GENERAL_ERROR);
    EXPECT_EQ(ProUIDialogDestroy(C("E")), PRO_TK_NO_ERROR) << "it is off the screen again";
    EXPECT_EQ(TakeViolations().size(), 1U);
}

TEST_F(ToolkitUi, NestedDialogCoversTheOuterOneAndActionsLoseTheirStrings) {
    const auto openInner = [](char* dialog, char* component, ProAppData data) {
        auto& test = *static_cast<ToolkitUi*>(data);
        ProUIDialogCreate(C("Inner"), C("D"));
        ProUIDialogCloseActionSet(C("Inner"), Exit, data);
        ProUIDialogActivate(C("Inner"), nullptr);
        EXPECT_EQ(std::string(dialog) + component, "DOk") << "an inner action leaves them alone";
        ProUIDialogDestroy(C("Inner"));
        test.kept = {dialog, component};
    };
    SimDialog* outer = nullptr;
    session.user.dialogs["Inner"].push_back([&](SimDialog& inner) {
        outer->Press("Ok");
        inner.Close();
    });
    Play(
        [&](SimDialog& dialog) {
            outer = &dialog;
            dialog.Press("Ok");
        },
        openInner);
    EXPECT_EQ(TakeProblems(),
              Lines{"dialog \"D\": cannot press \"Ok\": the dialog \"Inner\" is open above it"});
    ASSERT_NE(kept.first, nullptr);
    EXPECT_STRNE(kept.first, "D");
    EXPECT_STRNE(kept.second, "Ok");
}

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
    EXPECT_EQ(again, untouched);
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
        {action("A234567890123456789012345678901", 2), PRO_TK_NO_ERROR, ""},
        {action("A2345678901234567890123456789012", 2), PRO_TK_GENERAL_ERROR,
         "the command name \"A2345678901234567890123456789012\" is longer than 31 characters"},
        {action("Walk", 4), PRO_TK_GENERAL_ERROR, "there is no priority 4"},
        {action("\xB0\xA1", 2), PRO_TK_GENERAL_ERROR, "the command name \"\xB0\xA1\" is no UTF-8"},
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
    EXPECT_EQ(TakeViolations().size(), 1U);
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

// ---- Messages

TEST_F(ToolkitUi, MessagesAreTranslatedAndFormatted) {
    wchar_t name[] = L"螺栓";
    int count = 3;
    EXPECT_EQ(ProMessageDisplay(File(), C("Now %0w, %1d"), name, &count), PRO_TK_NO_ERROR);
    ASSERT_EQ(session.user.messageArea.size(), 1U);
    EXPECT_EQ(Utf8(session.user.messageArea[0]), "螺栓 现为 3");

    ProLine line;
    EXPECT_EQ(ProMessageToBuffer(line, File(), C("Run_Help")), PRO_TK_NO_ERROR);
    EXPECT_EQ(Utf8(line), "运行一次。");
    EXPECT_EQ(TakeViolations(), Lines{});

    const std::wstring tooLong(100, L'x');
    EXPECT_EQ(ProMessageToBuffer(line, File(), C("New name"), tooLong.c_str()), PRO_TK_NO_ERROR)
        << "only the default is long";
    EXPECT_EQ(ProMessageToBuffer(line, File(), C("Now %0w, %1d"), tooLong.c_str(), &count),
              PRO_TK_MSG_TOO_LONG);
    EXPECT_EQ(std::wstring(line), tooLong.substr(0, 80));
    EXPECT_EQ(ProMessageDisplay(File(), C("Now %0w, %1d"), nullptr, &count), PRO_TK_MSG_FMT_ERROR);
    EXPECT_EQ(ProMessageDisplay(File(), C("Now")), PRO_TK_MSG_NOT_FOUND);
    EXPECT_EQ(ProMessageDisplay(W(L"none.txt"), C("Now")), PRO_TK_E_NOT_FOUND);
    EXPECT_EQ(TakeViolations().size(), 4U);
    session.texts.upperCaseMessageFileRefused = true;
    EXPECT_EQ(ProMessageDisplay(W(L"KvMenu.txt"), C("Run")), PRO_TK_E_NOT_FOUND);
    EXPECT_EQ(TakeViolations().size(), 1U);
}

TEST_F(ToolkitUi, PromptIsReadAfterItWasShown) {
    using Kind = PromptAnswer::Kind;
    struct Case {
        PromptAnswer answer;
        ProError status;
        std::wstring read;
    };
    const std::vector<Case> cases = {
        {{Kind::kTyped, L"12345"}, PRO_TK_NO_ERROR, L"12345"},
        {{Kind::kEnter, L""}, PRO_TK_GENERAL_ERROR, L"kept"},
        {{Kind::kTyped, L""}, PRO_TK_GENERAL_ERROR, L"kept"},
        {{Kind::kEscape, L""}, PRO_TK_MSG_USER_QUIT, L"kept"},
        {{Kind::kTyped, L"123456"}, PRO_TK_MSG_USER_QUIT, L"kept"},
    };
    wchar_t buffer[6];
    wchar_t offered[] = L"BOLT";
    for (const Case& one : cases) {
        std::wcscpy(buffer, L"kept");
        session.user.prompts.push_back(one.answer);
        ASSERT_EQ(ProMessageDisplay(File(), C("New name"), offered), PRO_TK_NO_ERROR);
        EXPECT_EQ(session.screen.prompt->defaultText, L"BOLT");
        EXPECT_EQ(ProMessageStringRead(5, buffer), one.status);
        EXPECT_EQ(std::wstring(buffer), one.read);
    }
    EXPECT_EQ(TakeProblems(), Lines{"the prompt \"新名称:\" takes 5 characters at most"});
    EXPECT_EQ(TakeViolations(), Lines{});

    ASSERT_EQ(ProMessageDisplay(File(), C("New name"), offered), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProMessageStringRead(5, buffer), PRO_TK_MSG_USER_QUIT);
    EXPECT_EQ(TakeProblems(), Lines{"unexpected prompt \"新名称:\""});
    EXPECT_EQ(ProMessageStringRead(5, buffer), PRO_TK_GENERAL_ERROR) << "every read has its own prompt";
    EXPECT_EQ(ProMessageStringRead(128, buffer), PRO_TK_GENERAL_ERROR);
    EXPECT_EQ(TakeViolations(), (Lines{"ProMessageStringRead: no prompt has been shown",
                                       "ProMessageStringRead: the buffer takes 1 to 127 characters"}));
}

}  // namespace
