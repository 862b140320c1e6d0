// Scripts of the playing user: read strictly, played with the place of every step that goes wrong.

#include <deque>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include <ProUIDialog.h>
#include <ProUIPushbutton.h>

#include "simulator/report/utf8.h"
#include "simulator/session/session.h"
#include "simulator/ui/user_script.h"
#include "support/temp_directory.h"

namespace {

using namespace sim;
using Lines = std::vector<std::string>;

constexpr char kScriptedLayout[] = R"((Dialog D
  (Components (InputPanel Name) (RadioGroup Kind) (CheckButton Sort) (Table List) (PushButton Ok))
  (Resources
    (Kind.Names "all" "parts")
    (List.ColumnNames "num" "name")
    (List.RowNames "1" "2")
    (.Label "Title")
    (.DefaultButton "Ok")
    (.Layout (Grid (Rows 0 0 0 0 0) (Cols 1) Name Kind Sort List Ok)))))";

struct Desk {
    Desk() {
        std::filesystem::create_directories(folder / "text/resource");
        folder.Write("text/resource/D.res", kScriptedLayout);
    }
    Lines Arrange(std::string_view script) {
        return ArrangeUserScript(script, "u.txt", session.user, session.models);
    }

    test::TempDirectory folder;
    Session session{folder.Path(), folder.Path()};
};

char kName[] = "D";
char kOk[] = "Ok";

void OnOk(char*, char*, ProAppData) {
    Host().user.boxes.push_back({L"\tDone\t", L"", 0, false, 0});
}
void OnClose(char* dialog, char*, ProAppData) {
    ProUIDialogExit(dialog, 1);
}

// The problems that the user meets at the dialog with this script.
Lines Played(std::string_view script) {
    Desk desk;
    EXPECT_EQ(desk.Arrange(script), Lines{});
    EXPECT_EQ(ProUIDialogCreate(kName, kName), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProUIPushbuttonActivateActionSet(kName, kOk, OnOk, nullptr), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProUIDialogCloseActionSet(kName, OnClose, nullptr), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProUIDialogActivate(kName, nullptr), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProUIDialogDestroy(kName), PRO_TK_NO_ERROR);
    EXPECT_EQ(desk.session.report.Violations(), Lines{});
    return desk.session.user.problems;
}

TEST(UserScript, ArrangesEveryKindOfAnswer) {
    Desk desk;
    SimModel* bolt = desk.session.models.Create(L"BOLT", ModelKind::kPart);
    SimModel* pump = desk.session.models.Create(L"PUMP", ModelKind::kAssembly);
    ASSERT_EQ(desk.Arrange("\xEF\xBB\xBF# the user\r\n"
                           "folder \"C:\\\\备份\"   # with a comment\n"
                           "folder cancel\n\n"
                           "file \"a \\\"b\\\".drw\"\n"
                           "prompt \"\\tx\"\nprompt enter\nprompt escape\n"
                           "pick bolt.prt item surface 7 path 3 5 and PUMP\npick none\npick quit\n"
                           "answer no\nplacement ok\nplacement cancel\nactivated BOLT\n"
                           "selected BOLT path 3\nselected PUMP and BOLT item csys 4\nrightclick\n"
                           "dialog D\n  show\ndialog D\n"),
              Lines{});
    const User& user = desk.session.user;
    ASSERT_EQ(user.folders.size(), 2U);
    EXPECT_EQ(Utf8(*user.folders[0]), "C:\\备份");
    EXPECT_FALSE(user.folders[1].has_value());
    EXPECT_EQ(Utf8(*user.files[0]), "a \"b\".drw");
    ASSERT_EQ(user.prompts.size(), 3U);
    EXPECT_EQ(user.prompts[0].text, L"\tx");
    EXPECT_EQ(user.prompts[1].kind, PromptAnswer::Kind::kEnter);
    EXPECT_EQ(user.prompts[2].kind, PromptAnswer::Kind::kEscape);
    ASSERT_EQ(user.picks.size(), 3U);
    ASSERT_EQ(user.picks[0].picks.size(), 2U);
    EXPECT_EQ(user.picks[0].picks[0].model, bolt);
    EXPECT_EQ(user.picks[0].picks[0].type, 5);
    EXPECT_EQ(user.picks[0].picks[0].id, 7);
    EXPECT_EQ(user.picks[0].picks[0].path, (std::vector<int>{3, 5}));
    EXPECT_EQ(user.picks[0].picks[1].model, pump);
    EXPECT_TRUE(user.picks[1].picks.empty() && !user.picks[1].quit);
    EXPECT_TRUE(user.picks[2].quit);
    EXPECT_EQ(user.boxAnswers.front(), 7) << "IDNO";
    EXPECT_EQ(user.placements, (std::deque<bool>{true, false}));
    ASSERT_EQ(user.activated.size(), 1U);
    EXPECT_EQ(user.activated[0].model, bolt);
    EXPECT_EQ(user.dialogs.at("D").size(), 2U);
    ASSERT_EQ(user.selected.size(), 3U);
    EXPECT_EQ(user.selected[0].path, std::vector<int>{3});
    EXPECT_EQ(user.selected[1].model, pump);
    EXPECT_EQ(user.selected[2].type, 25);
    EXPECT_TRUE(user.rightClicks);
    EXPECT_EQ(ArrangeSelection("BOLT", desk.session.user, desk.session.models), Lines{});
    EXPECT_EQ(user.selected.size(), 4U);
    EXPECT_EQ(ArrangeSelection("NUT", desk.session.user, desk.session.models),
              Lines{"there is no model NUT"});
}

TEST(UserScript, IsFaultedAtTheExactPlaceAndThenArrangesNothing) {
    struct Case {
        std::string script, error;
    };
    const std::vector<Case> cases = {
        {"prompt enter\nfoldr cancel", "2:1: unknown step foldr"},
        {"folder C:\\backup", "1:8: expected a path in quotes or cancel"},
        {"folder", "1:1: expected: folder \"PATH\"|cancel"},
        {"folder \"C:\\backup\"", "1:11: expected \\\", \\\\, \\n or \\t after a backslash"},
        {"file \"a.drw", "1:6: expected a closing quote"},
        {"file \"a\"b", "1:9: expected a blank after the closing quote"},
        {"prompt ente", "1:8: expected a text in quotes, enter or escape"},
        {"answer maybe", "1:8: expected yes, no, ok or cancel"},
        {"placement yes", "1:11: expected ok or cancel"},
        {"activated BOLT path 3", "1:16: expected: activated MODEL"},
        {"pick NUT", "1:6: there is no model NUT"},
        {"pick BOLT item face 3", "1:16: expected a number"},
        {"pick BOLT path", "1:11: expected a number"},
        {"pick BOLT NUT", "1:11: expected item, path, or and with another model"},
        {"selected", "1:1: expected: selected MODEL [item TYPE ID] [path ID...] [and MODEL...]"},
        {"rightclick KvX", "1:12: expected: rightclick"},
        {"dialog D\n  show d.png", "2:8: expected a file FILE.svg"},
        {"press Ok", "1:1: expected an indented step below a dialog line"},
        {"  press Ok", "1:3: expected a dialog line before indented steps"},
        {"dialog D\n  pres Ok", "2:3: unknown step pres"},
        {"dialog D\n  press Ok now", "2:12: expected: press COMPONENT"},
        {"dialog D\n  check Sort yes", "2:14: expected on or off"},
        {"dialog D\n  sort List num up", "2:17: expected down"},
        {"dialog D\n  filter List num", "2:15: expected a text after it"},
        {"dialog D\n  expect rows List", "2:10: expected text, title, message, checked, cell or selected"},
        {"dialog D\n  expect cell List \"1\" \"x\"", "2:24: expected: expect cell TABLE ROW COLUMN \"TEXT\""},
        {"dialog", "1:1: expected: dialog NAME"},
        {"prompt \"\xB0\xA1\"", "1:9: expected UTF-8"},
    };
    for (const Case& fault : cases) {
        Desk desk;
        desk.session.models.Create(L"BOLT", ModelKind::kPart);
        EXPECT_EQ(desk.Arrange("prompt enter\n" + fault.script).size(), 1U) << fault.script;
        EXPECT_EQ(desk.Arrange(fault.script), Lines{"u.txt:" + fault.error});
        EXPECT_EQ(desk.session.user.UnusedAnswers(), Lines{}) << fault.script;
    }
}

TEST(UserScript, PlaysTheStepsAtTheDialog) {
    EXPECT_EQ(Played("dialog D\n"
                     "  expect title Title\n"
                     "  type Name \"螺栓 1\"\n"
                     "  expect text Name \"螺栓 1\"\n"
                     "  choose Kind parts\n"
                     "  expect text Kind parts\n"
                     "  check Sort\n"
                     "  expect checked Sort on\n"
                     "  select List 2\n"
                     "  expect cell List 2 name \"\"\n"
                     "  sort List num down\n"
                     "  filter List name \"x\"\n"
                     "  filter List\n"
                     "  doubleclick List 2 num\n"
                     "  return\n"
                     "  expect message \"\\tDone\\t\"\n"
                     "  close\n"),
              Lines{});
}

TEST(UserScript, NamesTheStepThatGoesWrong) {
    EXPECT_EQ(Played("dialog D\n"
                     "  press Apply\n"
                     "  expect text Name \"x\"\n"
                     "  expect message \"y\"\n"
                     "  close\n"
                     "  press Ok\n"),
              (Lines{"u.txt:2:9: dialog \"D\": cannot press \"Apply\": there is no such component",
                     "u.txt:3:10: expected text \"x\", found \"\"",
                     "u.txt:4:10: expected message \"y\", found \"\"",
                     "u.txt:6:9: dialog \"D\": cannot press \"Ok\": the dialog is closed"}));
}

}  // namespace
