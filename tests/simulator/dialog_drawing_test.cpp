// The drawing of a dialog as it is filled in.

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "simulator/layout/picture.h"
#include "simulator/layout/res_file.h"
#include "support/toolkit_ui.h"

namespace {

using sim::SimDialog;

int Count(std::string_view text, std::string_view part) {
    int count = 0;
    for (std::size_t at = 0; (at = text.find(part, at)) != std::string_view::npos; at += part.size()) ++count;
    return count;
}

// The element that ends with `end`, from its bracket on.
std::string Element(const std::string& svg, std::string_view end) {
    const std::size_t at = svg.find(end);
    return at == std::string::npos ? "" : svg.substr(svg.rfind('<', at), at - svg.rfind('<', at));
}

constexpr char kDot[] = " class=\"dot\"";
constexpr char kLine[] = "class=\"line\"";

class DialogDrawing : public test::ToolkitUi {
protected:
    sim::Table& List() { return session.screen.FindDialog("D")->Find("List")->table; }
    void Fill(std::string_view row, const wchar_t* label) { List().Cell(row, "num")->label = label; }
};

TEST_F(DialogDrawing, HoldsTextsTicksAndChoices) {
    Play([](SimDialog& dialog) {
        const std::string before = dialog.Drawing();
        EXPECT_EQ(Count(before, ">integer</text>"), 1);
        dialog.Type("Name", L"a<b&c");
        dialog.Choose("Type", L"real");
        const std::string typed = dialog.Drawing();
        EXPECT_EQ(Count(typed, ">a&lt;b&amp;c</text>"), 1);
        EXPECT_EQ(Count(typed, ">integer</text>"), 0);
        EXPECT_EQ(Count(typed, ">real</text>"), 1);

        dialog.Check("Sort");
        EXPECT_EQ(Count(dialog.Drawing(), kLine), Count(typed, kLine) + 1) << "the tick";
        dialog.Check("Sort", false);
        EXPECT_EQ(dialog.Drawing(), typed);

        dialog.Choose("Kind", L"parts");
        EXPECT_EQ(Count(dialog.Drawing(), kDot), 1);
        EXPECT_NE(Element(dialog.Drawing(), kDot), Element(typed, kDot));
    });
}

TEST_F(DialogDrawing, HoldsTheRowsInSight) {
    Play([this](SimDialog& dialog) {
        Fill("1", L"M8");
        Fill("2", L"垫圈");
        const std::string filled = dialog.Drawing();
        EXPECT_LT(filled.find(">M8</text>"), filled.find(">垫圈</text>"));
        EXPECT_EQ(Count(filled, "class=\"chosen\""), 0);
        EXPECT_EQ(Count(filled, "class=\"thumb\""), 0) << "all rows fit";

        dialog.SelectRows("List", {"1"});
        List().Cell("2", "num")->background = 17;
        const std::string marked = dialog.Drawing();
        EXPECT_EQ(Count(marked, "class=\"chosen\""), 1);
        EXPECT_EQ(Count(marked, "class=\"tint\""), 1);

        dialog.FilterRows("List", "num", L"M8");
        EXPECT_EQ(Count(dialog.Drawing(), ">垫圈</text>"), 0);
        EXPECT_EQ(Count(dialog.Drawing(), ">M8</text>"), 1);
    });
}

TEST_F(DialogDrawing, ShowsThatATableHoldsMoreThanItShows) {
    Play([this](SimDialog& dialog) {
        std::vector<std::string> names;
        for (int i = 3; i < 30; ++i) names.push_back(std::to_string(i));
        ASSERT_TRUE(List().InsertRows("2", names));
        Fill("8", L"last");
        Fill("9", L"below");
        Fill("1", L"a text that is much longer than its column");
        const std::string drawing = dialog.Drawing();
        EXPECT_EQ(Count(drawing, ">last</text>"), 1);
        EXPECT_EQ(Count(drawing, ">below</text>"), 0);
        EXPECT_EQ(Count(drawing, "class=\"thumb\""), 1);
        EXPECT_EQ(Count(drawing, "…</text>"), 1);
        EXPECT_EQ(Count(drawing, "longer than its column</text>"), 0);
    });
}

TEST(DialogImages, StandInTheDrawingAsTheirBytes) {
    test::Lines errors;
    sim::Dialog dialog(
        "D", "D",
        sim::ParseResFile("(Dialog D (Components (DrawingArea A)) (Resources (A.Images \"a.gif\")"
                          "(.Layout (Grid (Rows 0) (Cols 0) A))))",
                          "D.res", errors));
    ASSERT_EQ(errors, test::Lines{});
    dialog.Find("A")->drawn = {"a.gif", "lost.gif", "b.gif", "c.gif"};
    const std::string drawing = sim::DialogSvg(dialog, [](const std::string& name) -> std::string {
        return name == "a.gif"   ? "GIF89a"
               : name == "b.gif" ? "GIF89a\x01"
               : name == "c.gif" ? "GIF89a\x01\xff"
                                 : "";
    });
    EXPECT_EQ(Count(drawing, "<image "), 3);
    for (const char* data : {"\"data:image/gif;base64,R0lGODlh\"", "R0lGODlhAQ==\"", "R0lGODlhAf8=\""})
        EXPECT_EQ(Count(drawing, data), 1) << data;
}

}  // namespace
