// Dialog layouts: what a well-formed file becomes, and where a damaged one is faulted.

#include <cstdio>
#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "simulator/layout/dialog.h"
#include "simulator/layout/picture.h"
#include "simulator/layout/res_attributes.h"
#include "simulator/layout/res_file.h"
#include "simulator/report/utf8.h"

namespace {

using namespace sim;
using Lines = std::vector<std::string>;

constexpr std::string_view kLayoutMark = "\xEF\xBB\xBF";

constexpr std::string_view kLayout = R"((Dialog D
  (Components
    (InputPanel Name)
    (RadioGroup Kind)
    (Table List)
    (SubLayout Row)
  )
  (Resources
    (Name.MaxLen 5)
    (Name.Value "abc")
    (Kind.Names "a" "b")
    (Kind.Labels "甲" "乙")
    (Kind.SelectedNames "b")
    (List.ColumnNames "num" "name")
    (List.ColumnLabels "序号" "名称")
    (List.SelectionPolicy 3)
    (.Label "标题")
    (.DefaultButton "Ok")
    (.Layout
      (Grid (Rows 0 1) (Cols 1)
        Name
        (Grid (Rows 0) (Cols 0 1 0) Kind List Row)
      )
    )
  )
)
(Layout Row
  (Components
    (PushButton Ok)
    (OptionMenu Type)
  )
  (Resources
    (Ok.Label "a \"b\"\\\n")
    (Ok.Sensitive False)
    (Type.Names "x" "y")
    (Type.Labels "整数" "实数")
    (Type.SelectedNames "y")
    (.Decorated True)
    (.Label "框")
    (.Layout (Grid (Rows 0 0) (Cols 0) (Pos 2 1) Ok (Pos 1 1) Type))
  )
)
! the (end
)";

Lines Errors(std::string_view bytes, const char* file = "D.res") {
    Lines errors;
    ParseResFile(bytes, file, errors);
    return errors;
}

std::string Marked(std::string_view text) {
    return std::string(kLayoutMark) + std::string(text);
}

// The layout with one piece replaced.
std::string Changed(std::string_view piece, std::string_view by) {
    std::string text(kLayout);
    const std::size_t at = text.find(piece);
    EXPECT_NE(at, std::string::npos) << piece;
    return at == std::string::npos ? text : text.replace(at, piece.size(), by);
}

TEST(ResFile, BecomesADialogWithTheValuesOfTheFile) {
    Lines errors;
    const Dialog dialog("session", "D", ParseResFile(Marked(kLayout), "D.res", errors));
    ASSERT_EQ(errors, Lines{});

    EXPECT_EQ(Utf8(dialog.title), "标题");
    EXPECT_EQ(dialog.defaultButton, "Ok");
    EXPECT_EQ(dialog.Find("Name")->value, L"abc");
    EXPECT_EQ(dialog.Find("Name")->maxLength, 5);
    EXPECT_EQ(Utf8(dialog.Find("Ok")->label), "a \"b\"\\\n");
    EXPECT_FALSE(dialog.Find("Ok")->sensitive);
    EXPECT_EQ(SelectedName(*dialog.Find("Kind")), "b");
    EXPECT_EQ(Utf8(dialog.Find("Type")->value), "实数") << "the label of the selected name is shown";
    EXPECT_EQ(Utf8(dialog.Find("List")->table.Columns()[1].label), "名称");
    EXPECT_EQ(dialog.Find("List")->table.policy, SelectionPolicy::kMultiple);
    EXPECT_EQ(DialogText(dialog),
              "== 标题 == (session)\n"
              "  Name [abc]\n"
              "  Kind  ( ) 甲  (o) 乙\n"
              "  List | 序号 | 名称 |\n"
              "  -- 框 --\n"
              "    Type [实数 v]\n"
              "    Ok <<a \"b\"\\\\n>> (greyed)\n");
}

TEST(ResFile, IsFaultedAtTheExactPlace) {
    struct Case {
        std::string piece, by;
        Lines errors;
    };
    const std::vector<Case> cases = {
        // Syntax: one finding ends the reading.
        {"(Dialog D",
         "(Window D",
         {"1:2: expected Dialog, Layout, TableLayout, MenuPane, CascadeButton or Tree, found Window"}},
        {"(InputPanel Name)",
         "(InputPanel Name]x)",
         {"3:17: expected a component name of letters, digits and underscores, found Name]x"}},
        {"(Table List)", "(Grid List)", {"5:6: expected a component type, found Grid"}},
        {"(Table List)", "(Table List extra)", {"5:17: expected ) after List, found extra"}},
        {"\"标题\")", "\"标题)", {"17:13: expected a closing quote on the same line"}},
        {"\"abc\"", "\"a\\qc\"", {"10:19: expected \\\", \\\\ or \\n after a backslash"}},
        {"(Name.MaxLen 5)",
         "(Name.MaxLen 5,)",
         {"9:18: expected a number, True, False, a text in quotes or a name, found 5,"}},
        {"(Name.MaxLen 5)",
         "! five\n",
         {"9:5: expected ) after the resources; .Layout is the last of them, found !"}},
        {"(Rows 0 1)", "(Rows 0 2)", {"20:21: expected 0 or 1, found 2"}},
        {"Kind List Row", "Kind List", {"22:10: expected 3 cells, found 2"}},
        {"Kind List Row", "Kind List Row Name", {"22:51: expected ) after 3 cells, found Name"}},
        {"(Pos 1 1)", "(Pos 3 1)", {"40:58: expected 1 to 2, found 3"}},
        {"(Pos 1 1)", "(Pos 2 1)", {"40:63: expected a free cell, found Type"}},
        {"(Pos 1 1)", "", {"40:54: expected ) after 2 cells, found Type"}},
        {"(Pos 1 1) Type", "(Pos 1 1)", {"40:62: expected a cell after Pos, found )"}},
        {"(.Label \"框\")\n    (.Layout (Grid (Rows 0 0) (Cols 0) (Pos 2 1) Ok (Pos 1 1) Type))",
         "(.Layout (Grid (Rows 0 0) (Cols 0) Ok Type)) (.Label \"框\")",
         {"39:50: expected ) after the resources; .Layout is the last of them, found ("}},
        // Names and values: every finding counts.
        {"(Dialog D", "(Dialog E", {"1:1: expected a dialog named as the file, D, found E"}},
        {"(Name.MaxLen 5)", "(Nam.MaxLen 5)", {"9:6: expected a component of D, found Nam"}},
        {"(Name.MaxLen 5)", "(Name.MaxLen 2)", {"10:17: expected at most MaxLen characters"}},
        {"(Name.MaxLen 5)", "(Name.Maxlen -5)", {"9:6: expected an attribute of a InputPanel, found Maxlen"}},
        {"(Name.MaxLen 5)", "(Name.MaxLen -5)", {"9:18: expected one integer from 0 on for MaxLen"}},
        {"(Name.MaxLen 5)",
         "(Name.Value \"x\")",
         {"10:6: expected one value a component and attribute, Name.Value has been given already"}},
        {"(List.SelectionPolicy 3)",
         "(List.SelectionPolicy 5)",
         {"16:27: expected one integer from 0 to 4 for SelectionPolicy"}},
        {"(Ok.Sensitive False)", "(Ok.Sensitive 0)", {"34:19: expected True or False for Sensitive"}},
        {"(Kind.Names \"a\" \"b\")",
         "(Kind.Names \"a\" \"a\" \"b\")",
         {"11:21: expected different names, found a again",
          "12:6: expected 3 values, as many as Names, found 2"}},
        {"(Kind.SelectedNames \"b\")",
         "(Kind.SelectedNames \"c\" \"a\")",
         {"13:6: expected one selected name", "13:25: expected one of Names, found c"}},
        {"\"序号\" \"名称\"", "\"序号\"", {"15:6: expected 2 values, as many as ColumnNames, found 1"}},
        {"(.DefaultButton \"Ok\")",
         "(.DefaultButton \"Kind\")",
         {"18:21: expected a push button of the dialog"}},
        {"        Name\n",
         "        Nam\n",
         {"3:17: expected Name placed in the grid", "21:9: expected a component of D, found Nam"}},
        {"Kind List Row",
         "Kind Kind Row",
         {"5:12: expected List placed in the grid", "22:42: expected Kind placed once only"}},
        {"(PushButton Ok)",
         "(PushButton Name)",
         {"18:21: expected a push button of the dialog",
          "29:17: expected a name that is free in the dialog, found Name again",
          "29:17: expected Name placed in the grid", "33:6: expected a component of Row, found Ok",
          "34:6: expected a component of Row, found Ok", "40:50: expected a component of Row, found Ok"}},
        {"(Layout Row",
         "(Layout Raw",
         {"6:16: expected a Layout statement for Row", "27:1: expected a Layout component named Raw"}},
    };
    for (const Case& fault : cases) {
        Lines expected;
        for (const std::string& error : fault.errors) expected.push_back("D.res:" + error);
        EXPECT_EQ(Errors(Marked(Changed(fault.piece, fault.by))), expected) << fault.by;
    }
}

// Where cells have sources, these stand in a statement of their own; a cell may be left out behind Pos.
TEST(ResFile, ReadsWhatFilesInUseHold) {
    Lines errors;
    const Dialog dialog("D", "D",
                        ParseResFile(R"(! A dialog with a table of ticks.
(Dialog D
  (Components (Table List) (Label L))
  (Resources
    (List.ColumnNames "tick")
    (List.SelectedNames "1" "tick")
    (.Unknown 1)
    (.Layout (Grid (Rows 0 0) (Cols 0 0) (Pos 1 2) L (Pos 2 1) List))))
(TableLayout List
  (Components (CheckButton Tick))
  (Resources (Tick.Set True))))",
                                     "D.res", errors));
    EXPECT_EQ(errors, Lines{"D.res:7:6: expected an attribute of a dialog, found Unknown"});
    ASSERT_NE(dialog.Find("Tick"), nullptr);
    EXPECT_TRUE(dialog.Find("Tick")->checked);
    EXPECT_FALSE(dialog.IsShown(*dialog.Find("Tick")));
    const std::vector<ResCell>& cells = dialog.Layout().containers[0].grid->cells;
    EXPECT_EQ(cells[0].column, 1);
    EXPECT_EQ(cells[1].row, 1);

    const ResFindings unmet = UnmetAttributes(dialog.Layout());
    ASSERT_EQ(unmet.size(), 2U);
    EXPECT_EQ(unmet[1].second, "SelectedNames");
    EXPECT_EQ(unmet[1].first.line, 6);
}

TEST(ResFile, NeedsTheEncodingThatTheHostReads) {
    EXPECT_EQ(Errors(kLayout),
              Lines{"D.res:12:19: expected ASCII characters only, the file has no byte-order mark"});
    EXPECT_EQ(Errors(Marked(Changed("甲", "\xB0\xA1"))), Lines{"D.res:12:19: expected UTF-8"});
    EXPECT_EQ(Errors("(Dialog D (Components (Label L)) (Resources (.Layout (Grid (Rows 0) (Cols 0) L))))"),
              Lines{})
        << "plain ASCII needs no mark";
    EXPECT_EQ(Errors(""),
              Lines{"D.res:1:1: expected ( before a container statement, found the end of the file"});
}

TEST(ResFile, IsFaultedForWhatWouldNotEnd) {
    const std::string dialog = "(Dialog D (Components) (Resources (.Layout (Grid (Rows 0) (Cols 0)))))\n";
    EXPECT_EQ(Errors(dialog), Lines{});
    EXPECT_EQ(
        Errors(dialog +
               "(Layout R (Components (SubLayout R)) (Resources (.Layout (Grid (Rows 0) (Cols 0) R))))"),
        Lines{"D.res:2:1: expected a place in the dialog for R"});
    std::string deep = "(Dialog D (Components) (Resources (.Layout ";
    for (int i = 0; i < 10000; ++i) deep += "(Grid (Rows 0) (Cols 0) ";
    EXPECT_EQ(Errors(deep).size(), 1U);
    EXPECT_EQ(Errors("(Dialog D (Components) (Resources (.Width 2147483648)"),
              Lines{"D.res:1:43: expected a number, found 2147483648"});
}

TEST(ResFile, SurvivesBeingCutAnywhere) {
    const std::string whole = Marked(kLayout);
    const std::size_t end = whole.rfind(')');
    for (std::size_t length = 0; length < end; ++length)
        EXPECT_FALSE(Errors(whole.substr(0, length)).empty()) << length;
}

// The drawing stays inside its window, whatever the texts are.
TEST(DialogSvg, DrawsEveryComponentInsideTheWindow) {
    Lines errors;
    Dialog dialog("D", "D", ParseResFile(Marked(kLayout), "D.res", errors));
    dialog.Find("List")->table.InsertRows(std::nullopt, {"1", "2"});
    dialog.Find("List")->table.SetColumnLabels({L"a very long title of a column", L"b"});
    const std::string svg = DialogSvg(dialog);
    for (const char* text : {">标题<", ">甲<", ">乙<", ">abc<", ">实数<", ">框<", "a &quot;b&quot;\\"})
        EXPECT_NE(svg.find(text), std::string::npos) << text;

    double windowWidth = 0, windowHeight = 0;
    int boxes = 0;
    for (std::size_t at = 0; (at = svg.find("<rect", at)) != std::string::npos; ++at, ++boxes) {
        double x = -1, y = -1, width = -1, height = -1;
        ASSERT_EQ(std::sscanf(svg.c_str() + at, "<rect x=\"%lf\" y=\"%lf\" width=\"%lf\" height=\"%lf\"", &x,
                              &y, &width, &height),
                  4);
        if (boxes == 0) {
            windowWidth = x + width;
            windowHeight = y + height;
        }
        EXPECT_TRUE(x >= 0 && y >= 0 && width > 0 && height > 0) << svg.substr(at, 80);
        EXPECT_TRUE(x + width <= windowWidth + 0.5 && y + height <= windowHeight + 0.5) << svg.substr(at, 80);
    }
    EXPECT_GE(boxes, 6);
}

// Tables answer by name; a refused change leaves them as they were.
TEST(Table, KeepsRowsColumnsAndSelectionTogether) {
    Table table;
    ASSERT_TRUE(table.InsertColumns(std::nullopt, {"a", "b"}));
    ASSERT_TRUE(table.InsertRows(std::nullopt, {"1", "2"}));
    ASSERT_TRUE(table.InsertRows("1", {"x"}));
    ASSERT_TRUE(table.InsertRows(std::nullopt, {"0"}));
    EXPECT_FALSE(table.InsertRows("9", {"y"})) << "no such row";
    EXPECT_FALSE(table.InsertRows("2", {"y", "x"})) << "a name is taken";
    EXPECT_FALSE(table.InsertRows("2", {"y", "y"}));
    std::string order;
    for (const Table::Line& row : table.Rows()) order += row.name;
    EXPECT_EQ(order, "01x2");

    table.Cell("x", "b")->label = L"text";
    ASSERT_TRUE(table.SelectRowCells({"2", "x"}));
    ASSERT_TRUE(table.SelectRowCells({"x"}));
    EXPECT_EQ(table.SelectedCells().size(), 4U) << "no cell twice";
    EXPECT_EQ(table.SelectedRows(), (Lines{"x", "2"})) << "in row order";
    EXPECT_FALSE(table.SelectRowCells({"1", "9"}));
    EXPECT_FALSE(table.SetColumnLabels({L"one"})) << "as many labels as columns";

    table.focus = CellName{"x", "a"};
    EXPECT_FALSE(table.DeleteRows({"x", "9"}));
    ASSERT_TRUE(table.DeleteRows({"x"}));
    EXPECT_FALSE(table.focus.has_value());
    EXPECT_EQ(table.SelectedRows(), Lines{"2"});
    ASSERT_TRUE(table.InsertRows("1", {"x"}));
    EXPECT_EQ(table.Cell("x", "b")->label, L"") << "a new row of an old name is empty";
    ASSERT_TRUE(table.DeleteColumns({"a"}));
    EXPECT_EQ(table.SelectedCells().size(), 1U);
    EXPECT_EQ(table.Cell("2", "a"), nullptr);
}

}  // namespace
