// Message files: groups of four lines, conversions, and how their values are shown.

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>

#include "simulator/layout/message_file.h"
#include "simulator/report/utf8.h"
#include "simulator/session/session.h"
#include "simulator/ui/text_tree_check.h"
#include "support/temp_directory.h"

namespace {

using namespace sim;
using Lines = std::vector<std::string>;

constexpr std::string_view kMark = "\xEF\xBB\xBF";

MessageFile Parse(std::string_view text, Lines& errors) {
    return ParseMessageFile(std::string(kMark) + std::string(text), "m.txt", errors);
}

TEST(MessageFile, GivesKeysTheirClassTextAndTranslation) {
    Lines errors;
    const MessageFile file = Parse(
        "%CPUSER Enter a new name:|||%0w\nEnter a new name:|||%0w\n请输入名称:|||%0w\n\n"
        "Scale: \nScale\n\n\n",
        errors);
    EXPECT_EQ(errors, Lines{});
    const MessageText& prompt = file.texts.at("USER Enter a new name:|||%0w");
    EXPECT_EQ(prompt.kind, MessageClass::kPrompt);
    EXPECT_EQ(Utf8(prompt.Shown()), "请输入名称:|||%0w");
    EXPECT_EQ(Utf8(file.texts.at("Scale: ").Shown()), "Scale") << "blanks belong to the key; no translation";
}

TEST(MessageFile, IsFaultedAtTheExactPlace) {
    struct Case {
        std::string text;
        Lines errors;
        std::size_t usable;  // groups that can still be used
    };
    const std::string good = "Good\nGood\n好\n\n";
    const std::vector<Case> cases = {
        {good + "Key\nText\n", {"7:1: expected groups of four lines: key, text, translation, blank line"}, 1},
        {good + "Key\nText\n文\nKey2\nText\n文\n\n", {"8:1: expected a blank line after the translation"}, 1},
        {"\nKey\nText\n\n", {"1:1: expected a key"}, 0},
        {"Key\n\n文\n\n" + good, {"2:1: expected the text of Key"}, 2},
        {"%CXKey\nText\n\n\n" + good, {"1:3: expected P, I, W, E or C after %C"}, 1},
        {"%C\nText\n\n\n", {"1:3: expected P, I, W, E or C after %C"}, 0},
        {"%CI Key\nText\n\n\n", {"1:4: expected a key directly after the class"}, 0},
        {good + "%CIGood\nText\n\n\n", {"5:1: expected a key that is new, Good stands in line 1"}, 1},
        {std::string(81, 'k') + "\nText\n\n\n", {"1:81: expected a key of at most 80 characters"}, 1},
        {"Key\n" + std::string(4097, 'x') + "\n\n\n",
         {"2:4097: expected at most 4096 characters in a line"},
         1},
        {"Key\n50% of %0d\n\n\n", {"2:4: expected an argument number from 0 to 9 after %"}, 1},
        {"Key\nA %0(8.)f\n\n\n", {"2:8: expected a precision from 0 to 255 after the point"}, 1},
        {"Key\nA %0(256)d\n\n\n", {"2:9: expected a width from 0 to 255 after ("}, 1},
        {"Key\nA %0(8d\n\n\n", {"2:7: expected ) after the width"}, 1},
        {"Key\nA %0x\n\n\n", {"2:5: expected d, f, s or w as the conversion's type"}, 1},
        {"Key\nA %0w\n甲 %0d %1w\n\n",
         {"3:3: expected the arguments of the line above", "3:7: expected the arguments of the line above"},
         1},
        {"Key\nA %0w %0d\n\n\n", {"2:7: expected one type for argument 0"}, 1},
        {"Key\nA|||1|||2\n\n\n", {"2:6: expected one ||| a text"}, 1},
    };
    for (const Case& fault : cases) {
        Lines expected, errors;
        for (const std::string& error : fault.errors) expected.push_back("m.txt:" + error);
        const MessageFile file = Parse(fault.text, errors);
        EXPECT_EQ(errors, expected) << fault.text;
        EXPECT_EQ(file.texts.size(), fault.usable) << fault.text;
    }
    Lines errors;
    ParseMessageFile("Key\n文\n\n\n", "m.txt", errors);
    EXPECT_EQ(errors, Lines{"m.txt:2:1: expected ASCII characters only, the file has no byte-order mark"});
}

TEST(MessageFile, ShowsValuesByTheirConversions) {
    const std::map<int, MessageValue> values = {{0, std::wstring(L"螺栓")}, {1, 42}, {2, 2.5}};
    struct Case {
        std::wstring text;
        std::string shown, offered;
    };
    const std::vector<Case> cases = {
        {L"%0w: %1d of %2(6.2)f|||%1d", "螺栓: 42 of   2.50", "42"},
        {L"%2f %1(5)d|%0(4)w|%0(4.1)s", "2.500000    42|  螺栓|   螺", ""},
        {L"no value|||", "no value", ""},
    };
    for (const Case& one : cases) {
        FormattedMessage message;
        ASSERT_TRUE(ComposeMessage(one.text, values, message)) << one.shown;
        EXPECT_EQ(Utf8(message.text), one.shown);
        EXPECT_EQ(Utf8(message.defaultText), one.offered);
        EXPECT_EQ(message.hasDefault, one.text.find(L"|||") != std::wstring::npos);
    }
    FormattedMessage message;
    EXPECT_FALSE(ComposeMessage(L"%3w", values, message)) << "no such argument";
    EXPECT_FALSE(ComposeMessage(L"%0d", values, message)) << "another type";
}

TEST(MessageFile, HasANameThatTheHostTakes) {
    EXPECT_EQ(MessageFileNameFault(L"kvmsg_display.txt", false), "");
    EXPECT_EQ(MessageFileNameFault(L"kvMenu.txt", true), "");
    EXPECT_EQ(MessageFileNameFault(L"kvMenu.txt", false), "with capital letters");
    EXPECT_EQ(MessageFileNameFault(L"menu", false), "without a three-character extension");
    EXPECT_EQ(MessageFileNameFault(L"sub/menu.txt", false), "with a path");
    EXPECT_EQ(MessageFileNameFault(std::wstring(27, L'm') + L".txt", false), "longer than 30 characters");
}

// A text tree in a folder of its own, and the session that reads it.
struct WrittenTree {
    WrittenTree() {
        std::filesystem::create_directories(folder / "text/chinese_cn/resource");
        std::filesystem::create_directories(folder / "text/resource");
    }
    void Write(const char* file, std::string_view text) const {
        folder.Write(std::filesystem::path("text") / file, std::string(kMark) + std::string(text));
    }

    test::TempDirectory folder;
    Session session{folder.Path(), folder.Path()};
};

TEST(MessageFile, IsLookedUpInTheLanguageFirst) {
    WrittenTree tree;
    tree.Write("both.txt", "Key\nEnglish\nEnglish\n\n");
    tree.Write("chinese_cn/both.txt", "Key\nEnglish\n中文\n\n");
    tree.Write("neutral.txt", "Other\nEnglish\n\n\n");
    tree.Write("again.txt", "Key\nA second owner\n\n\n");
    TextTree& texts = tree.session.texts;
    EXPECT_EQ(Utf8(texts.FindMessage(L"both.txt", "Key")->Shown()), "中文");
    EXPECT_EQ(Utf8(texts.FindMessage(L"neutral.txt", "Other")->Shown()), "English");
    EXPECT_EQ(texts.FindMessage(L"both.txt", "key"), nullptr) << "keys compare exactly";
    EXPECT_EQ(tree.session.report.Violations(), Lines{});

    EXPECT_NE(texts.Messages(L"again.txt"), nullptr);
    EXPECT_EQ(texts.Messages(L"none.txt"), nullptr);
    EXPECT_EQ(texts.Messages(L"none.txt"), nullptr);
    EXPECT_EQ(tree.session.report.Violations(),
              (Lines{"the message key \"Key\" is in both.txt and in again.txt",
                     "there is no message file \"none.txt\""}))
        << "each fault once";
}

TEST(TextTreeCheck, NamesEveryFault) {
    WrittenTree tree;
    tree.Write("menu.txt", "Menu\nMenu\n\n\nA\nA\n\n\nB %0d\nB %0d\n\n\n");
    tree.Write("chinese_cn/menu.txt", "Menu\nMenu\n菜单\n\n%CIA\nA\n甲\n\nB %0d\nB %0w\n乙 %0w\n\n");
    tree.Write("extra.txt", "A\nA\n\n\n");
    tree.Write("resource/D.res",
               "(Dialog E (Components (Label L)) (Resources (.Layout (Grid (Rows 0) (Cols 0) L))))");
    Command& command = *tree.session.screen.AddCommand("Run");
    command.designated = true;
    command.labelKey = "A";
    command.helpKey = "Run_Help";
    command.descriptionKey = "A";
    command.messageFile = L"menu.txt";
    command.icon = "Run.png";
    tree.folder.Write("text/resource/Run.png", "GIF89a, which is no PNG file at all");

    const std::string text = Utf8((tree.folder.Path() / "text").wstring());
    const auto at = [&](const std::string& file) { return text + "\\" + file + ": "; };
    Lines expected = {
        text + "\\resource\\D.res:1:1: expected a dialog named as the file, D, found E",
        at("menu.txt") + "the key \"A\" is in " + text + "\\extra.txt as well",
        at("chinese_cn\\extra.txt") + "the file is missing",
        at("chinese_cn\\menu.txt") + "the key \"A\" has another class than in the other language",
        at("chinese_cn\\menu.txt") + "the key \"B %0d\" takes other arguments than in the other language",
        at("menu.txt") + "the key \"A\" has another class than in the other language",
        at("menu.txt") + "the key \"B %0d\" takes other arguments than in the other language",
        "command Run: the icon file Run.png is no PNG file",
        "command Run: the icon file Run_large.png is missing",
        at("menu.txt") + "the key \"Run_Help\" of command Run is missing",
        at("chinese_cn\\menu.txt") + "the key \"Run_Help\" of command Run is missing",
    };
    EXPECT_EQ(CheckTextTree(tree.session.screen, tree.session.texts), expected);
}

}  // namespace
