// The rules of a rename: faults of rows, the tree, files of tables, the way back, new names by rule.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "base/csv.h"
#include "base/text.h"
#include "rename/rename_plan.h"
#include "rename/rename_rule.h"

namespace {

using kv::RenameRow;
using kv::RowFault;
using Cells = std::vector<std::vector<std::wstring>>;

TEST(RenamePlan, TellsWhatIsWrongWithEachRow) {
    kv::NameSet inUse;
    for (const wchar_t* file :
         {L"bolt.prt.1", L"SUB.ASM", L"taken.prt.12", L"taken.drw.1", L"notes.txt", L"x"})
        inUse.AddFile(file);
    struct Case {
        RenameRow row;
        RowFault fault;
    };
    const std::vector<Case> cases = {
        {{L"A", L"prt", L"FREE"}, RowFault::None},
        {{L"B", L"prt", L"free"}, RowFault::Twice},
        {{L"C", L"asm", L"Free"}, RowFault::None},
        {{L"D", L"prt", L""}, RowFault::Empty},
        {{L"E", L"prt", L"e"}, RowFault::Unchanged},
        {{L"F", L"prt", std::wstring(31, L'F')}, RowFault::None},
        {{L"G", L"prt", std::wstring(32, L'G')}, RowFault::TooLong},
        {{L"H", L"prt", L"A.B"}, RowFault::Characters},
        {{L"I", L"prt", L"a"}, RowFault::SwapOrChain},
        {{L"J", L"asm", L"A"}, RowFault::None},
        {{L"K", L"prt", L"Taken"}, RowFault::Exists},
        {{L"L", L"asm", L"TAKEN"}, RowFault::None},
        {{L"M", L"", L"sub"}, RowFault::Exists},
        {{L"N", L"prt", L"轴承-1_b"}, RowFault::None},
    };
    std::vector<RenameRow> rows;
    for (const Case& one : cases) rows.push_back(one.row);
    const std::vector<RowFault> faults = kv::RowFaults(rows, inUse);
    for (std::size_t i = 0; i < cases.size(); ++i) EXPECT_EQ(faults[i], cases[i].fault) << "row " << i;
}

TEST(RenamePlan, FindsTheOwnersOfWhatWasChangedBottomUp) {
    // TOP 0 { SUB 1 { ARM 2 { BOLT 3 } BOLT 3 } ARM 2 { BOLT 3 } CAP 4 { NUT 5 } }
    const std::vector<kv::TreeEntry> entries = {{1, 1}, {2, 2}, {3, 3}, {2, 3},
                                                {1, 2}, {2, 3}, {1, 4}, {2, 5}};
    const std::vector<kv::TreeTie> ties = kv::TiesOf(entries);
    EXPECT_EQ(ties, (std::vector<kv::TreeTie>{{0, 1}, {0, 2}, {0, 4}, {1, 2}, {1, 3}, {2, 3}, {4, 5}}));
    using Models = std::vector<std::size_t>;
    EXPECT_EQ(kv::OwnersOf(ties, Models{3}), (Models{2, 1, 0}));
    EXPECT_EQ(kv::OwnersOf(ties, Models{2}), (Models{1, 0}));
    EXPECT_EQ(kv::OwnersOf(ties, Models{5, 2}), (Models{1, 4, 0}));
    EXPECT_EQ(kv::OwnersOf(ties, Models{0}), Models{});
    // An assembly that contains itself comes once.
    EXPECT_EQ(kv::OwnersOf(std::vector<kv::TreeTie>{{0, 1}, {1, 0}, {1, 1}}, Models{1}), (Models{1, 0}));
}

TEST(RenamePlan, ReadsTheRowsBelowTheTitles) {
    const Cells file = {{L"PUMP 重命名"},
                        {L"序号", L"原名称", L"类型", L"新名称", L"数量", L"工程图"},
                        {L"1", L"PUMP", L"asm", L"0012", L"", L"有"},
                        {L"", L"", L"", L"", L"7"},
                        {L"2", L"BOLT"}};
    const std::vector<kv::LoadedRow> rows = kv::RowsOfFile(file);
    ASSERT_EQ(rows.size(), 2U);
    EXPECT_EQ(rows[0].number, L"1");
    EXPECT_EQ(rows[0].row.newName, L"0012");
    EXPECT_EQ(rows[1].row.oldName, L"BOLT");
    EXPECT_EQ(rows[1].row.newName, L"");
    EXPECT_EQ(kv::RowsOfFile(Cells{{L"1", L"A", L"prt", L"B"}}).size(), 1U) << "without titles";
}

TEST(RenamePlan, LeadsBackThroughWhatWasDoneOrBegunLastFirst) {
    const Cells table = {{L"新名称", L"类型", L"旧名称", L"状态"}, {L"T1", L"prt", L"", L"removed "},
                         {L"B2", L"prt", L"B", L"done    "},       {L"C2", L"prt", L"C", L"failed  "},
                         {L"'-2", L"asm", L"'-1", L"        "},    {L"half", L"prt"}};
    const std::vector<kv::RenameChange> back = kv::ChangesBack(table);
    ASSERT_EQ(back.size(), 2U);
    EXPECT_EQ(back[0].from + L"." + back[0].type + L">" + back[0].to, L"-2.asm>-1");
    EXPECT_EQ(back[1].from + L"." + back[1].type + L">" + back[1].to, L"B2.prt>B");
}

TEST(RenameRule, ReplacesAddsAndNumbers) {
    kv::RenameRule rule;
    EXPECT_EQ(kv::NameByRule(rule, L"BOLT_bolt", 3), L"BOLT_bolt");
    rule.find = L"Bolt";
    rule.replacement = L"BOLTED";
    EXPECT_EQ(kv::NameByRule(rule, L"BOLT_bolt", 3), L"BOLTED_BOLTED") << "what was put in is not searched";
    rule = {L"", L"x", L"P_", L"_S", 8, 3};
    EXPECT_EQ(kv::NameByRule(rule, L"A", 0), L"P_A_S008");
    EXPECT_EQ(kv::NameByRule(rule, L"A", 1992), L"P_A_S2000");
    rule = {L"A", L"", L"", L"", {}, 3};
    EXPECT_EQ(kv::NameByRule(rule, L"AAA", 0), L"") << "a rule may leave nothing";
}

TEST(CsvRows, ReadsWhatCsvLineWritesAndWhatSpreadsheetsWrite) {
    const std::vector<std::wstring> odd = {L"a,b", L"say \"x\"", L" blank ", L"two\r\nlines",
                                           L"",    L"a;b",       L"'=A1"};
    const Cells read = kv::CsvRows(kv::CsvLine(odd) + kv::CsvLine(std::vector<std::wstring>{L"x"}));
    EXPECT_EQ(read, (Cells{odd, {L"x"}}));
    EXPECT_EQ(kv::CsvRows(L"a;b,c\n\n\"d;\";e"), (Cells{{L"a", L"b,c"}, {L"d;", L"e"}}));
    EXPECT_EQ(kv::CsvRows(L"\"\"\r"), (Cells{{L""}})) << "an empty text in quotes is a row";
    for (const wchar_t* text : {L"=A1", L"-1", L"'=A1", L"'x", L"", L"plain"})
        EXPECT_EQ(kv::CellAsWritten(kv::HarmlessCell(text)),
                  text[0] == L'\'' && text[1] == L'=' ? L"=A1" : text);
}

TEST(DecodeFile, KnowsTheFormsOfUnicode) {
    const auto decoded = [](std::string_view bytes) {
        std::wstring text = L"stale";
        return kv::DecodeFile(bytes, text) == PRO_TK_NO_ERROR ? text : L"refused";
    };
    EXPECT_EQ(decoded("\xEF\xBB\xBF\xE8\xBD\xB4,1"), L"轴,1");
    EXPECT_EQ(decoded("\xE8\xBD\xB4"), L"轴");
    EXPECT_EQ(decoded(std::string_view("\xFF\xFE\x74\x8F,\0", 6)), L"轴,");
    EXPECT_EQ(decoded(std::string_view("\xFE\xFF\x8F\x74", 4)), L"轴");
    EXPECT_EQ(decoded(""), L"");
    EXPECT_EQ(decoded("\xD6\xE1"), L"refused") << "another code page";
    EXPECT_EQ(decoded("\xFF\xFE\x74"), L"refused") << "half a character";
}

}  // namespace
