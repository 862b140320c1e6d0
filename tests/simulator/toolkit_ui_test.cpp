// The host's dialogs and messages, called as the plug-in calls them: what works, what is refused, and what
// counts as misuse.

#include <cwchar>
#include <string>
#include <vector>

#include <ProMessage.h>
#include <ProUICheckbutton.h>
#include <ProUIDialog.h>
#include <ProUIInputpanel.h>
#include <ProUIOptionmenu.h>
#include <ProUIPushbutton.h>
#include <ProUIRadiogroup.h>
#include <ProUtil.h>
#include <gtest/gtest.h>

#include "simulator/report/utf8.h"
#include "simulator/session/session.h"
#include "support/toolkit_ui.h"

namespace {

using namespace sim;
using namespace test;

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

TEST_F(ToolkitUi, UnknownChoicesLeaveTheOldOne) {
    ASSERT_EQ(ProUIDialogCreate(C("D"), C("D")), PRO_TK_NO_ERROR);
    for (const char* name : {"none", ""}) {
        char* names[] = {C(name)};
        EXPECT_EQ(ProUIRadiogroupSelectednamesSet(C("D"), C("Kind"), 1, names), PRO_TK_GENERAL_ERROR);
        EXPECT_EQ(TakeViolations().size(), 1U);
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
    EXPECT_EQ(TakeProblems(),
              Lines{"unexpected dialog \"E\": a block \"dialog E\" of the user script answers it"});

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
    EXPECT_EQ(ProMessageDisplay(W(L"kvmenu.txt"), C("Run")), PRO_TK_NO_ERROR);
    EXPECT_EQ(TakeViolations(), Lines{});
}

TEST_F(ToolkitUi, PromptIsReadAfterItWasShown) {
    using Kind = PromptAnswer::Kind;
    struct Case {
        PromptAnswer answer;
        ProError status;
        std::wstring read;
    };
    const std::wstring spoiled(5, L'\xCDCD');
    const std::vector<Case> cases = {
        {{Kind::kTyped, L"12345"}, PRO_TK_NO_ERROR, L"12345"},
        {{Kind::kEnter, L""}, PRO_TK_GENERAL_ERROR, spoiled},
        {{Kind::kTyped, L""}, PRO_TK_GENERAL_ERROR, spoiled},
        {{Kind::kEscape, L""}, PRO_TK_MSG_USER_QUIT, spoiled},
        {{Kind::kTyped, L"123456"}, PRO_TK_MSG_USER_QUIT, spoiled},
    };
    wchar_t buffer[6];
    wchar_t offered[] = L"BOLT";
    for (const Case& one : cases) {
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
