// The export of a table: what the workbook holds, what it costs, and how it ends when the application fails.

#include "office/spreadsheet.h"

#include <optional>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>

#include "simulator/host/sim_host.h"
#include "simulator/report/utf8.h"
#include "simulator/spreadsheet/xlsx.h"
#include "simulator/windows/automation.h"
#include "support/cell_by_cell.h"
#include "support/spreadsheet_program.h"
#include "support/temp_directory.h"

namespace {

using kv::SheetExport;
using kv::SheetTable;
using sim::CellKind;
using sim::CellStyle;
using sim::Sheet;

// An export that no cell is refused in.
SheetExport SheetTableWrite(const SheetTable& table, const std::wstring& path) {
    std::vector<kv::RefusedCell> refused;
    const SheetExport result = kv::SheetTableWrite(table, path, refused);
    EXPECT_TRUE(refused.empty());
    return result;
}

constexpr unsigned kYellow = 0x00FFFF;      // 0xBBGGRR
constexpr unsigned kLightGreen = 0xCCFFCC;  // place 35 of the palette
constexpr unsigned kNoFill = 0xFF000000;

// A host with the application, for code of this program instead of the plug-in's.
class Office : public testing::Test {
protected:
    Office() {
        sim::PatchAutomation(host_.State(), GetModuleHandleW(nullptr), patches_);
        host_.Spreadsheet().Install();
    }
    ~Office() override { sim::Restore(patches_); }

    sim::AutomationServer& Server() { return host_.Spreadsheet().Server(); }
    std::wstring File(const wchar_t* name = L"表.xlsx") { return (folder_ / name).wstring(); }
    // Everything released, the application quit, COM left as it was found.
    void ExpectClean(const std::string& where) {
        EXPECT_EQ(host_.Spreadsheet().TakeLeftovers(), std::vector<std::string>()) << where;
        EXPECT_EQ(Server().RunningApplications(), 0) << where;
    }

    sim::SimHost host_;
    test::TempDirectory folder_;

private:
    std::vector<sim::ImportPatch> patches_;
};

// Texts that a cell without text format would change, two assembly rows together, one apart with a gap.
SheetTable OddTable() {
    return {L"泵体_A BOM",
            {L"序号", L"0012", L"名称"},
            {
                {{L"1", true}, {L"=1+1", true}, {L"PUMP", true}},
                {{L"2", true}, {L"0012", true}, {L"SUB", true}},
                {{L"3", false}, {L"2024-01-02", false}, {L"1234567890123456", false}},
                {{L"4", true}, {L"", false}, {L"含有\n<两行>&\"引号\"", true}},
                {{L"5", false}, {L" -1.50 ", false}, {L"=SUM(", false}},
            }};
}

SheetTable PlainTable(std::size_t rows) {
    SheetTable table = {L"T", {L"a", L"b"}, {}};
    table.rows.assign(rows, {{L"x", false}, {L"y", false}});
    return table;
}

std::string Described(const Sheet& sheet, int row, int column) {
    const sim::CellValue& value = sheet.Value(row, column);
    const CellStyle& style = sheet.Style(row, column);
    return std::to_string(static_cast<int>(value.kind)) + " " + std::to_string(value.number) + " '" +
           sim::Utf8(value.text) + "' " + sim::Utf8(style.numberFormat) + (style.bold ? " bold " : " ") +
           std::to_string(style.size) + " fill " + std::to_string(style.fill.value_or(kNoFill)) + " align " +
           std::to_string(style.alignment);
}

void ExpectEqual(const Sheet& actual, const Sheet& expected) {
    ASSERT_EQ(actual.LastRow(), expected.LastRow());
    // One row and column more than there are: whole columns are centred.
    for (int row = 1; row <= expected.LastRow() + 1; ++row)
        for (int column = 1; column <= 4; ++column)
            EXPECT_EQ(Described(actual, row, column), Described(expected, row, column))
                << "row " << row << ", column " << column;
    EXPECT_EQ(actual.Merged(), expected.Merged());
    EXPECT_EQ(actual.columnWidths, expected.columnWidths);
    EXPECT_EQ(actual.rowHeights, expected.rowHeights);
}

TEST_F(Office, BlocksGiveTheWorkbookThatSingleCellsGive) {
    const SheetTable table = OddTable();
    ASSERT_EQ(SheetTableWrite(table, File()), SheetExport::Written);
    ExpectClean("blocks");
    ASSERT_TRUE(test::WriteCellByCell(table, File(L"slow.xlsx")));
    Server().TakeProblems();  // this way of merging asks a question
    const std::optional<Sheet> sheet = sim::ReadXlsx(File());
    const std::optional<Sheet> slow = sim::ReadXlsx(File(L"slow.xlsx"));
    ASSERT_TRUE(sheet && slow);
    ExpectEqual(*sheet, *slow);
}

TEST_F(Office, CellsStayTextAndMarkedOnesAreGreen) {
    const SheetTable table = OddTable();
    ASSERT_EQ(SheetTableWrite(table, File()), SheetExport::Written);
    const std::optional<Sheet> sheet = sim::ReadXlsx(File());
    ASSERT_TRUE(sheet);
    EXPECT_EQ(sheet->Merged(), std::vector<sim::CellArea>({{1, 1, 1, 3}}));
    EXPECT_EQ(sheet->Value(1, 1), (sim::CellValue{CellKind::kText, 0, table.title}));
    EXPECT_EQ(sheet->Style(1, 3), (CellStyle{L"General", true, 16, kYellow, -4108}));
    EXPECT_EQ(sheet->Value(2, 3), (sim::CellValue{CellKind::kText, 0, L"名称"}));
    EXPECT_EQ(sheet->Style(2, 1), (CellStyle{L"@", true, 11, std::nullopt, -4108}));
    for (int row = 0; row < 5; ++row) {
        for (int column = 0; column < 3; ++column) {
            const kv::SheetCell& cell =
                table.rows[static_cast<std::size_t>(row)][static_cast<std::size_t>(column)];
            const sim::CellValue& value = sheet->Value(row + 3, column + 1);
            EXPECT_EQ(value.kind, cell.text.empty() ? CellKind::kEmpty : CellKind::kText);
            EXPECT_EQ(sim::Utf8(value.text), sim::Utf8(cell.text));
            const auto fill = cell.marked ? std::optional<unsigned>(kLightGreen) : std::nullopt;
            EXPECT_EQ(sheet->Style(row + 3, column + 1), (CellStyle{L"@", false, 11, fill, -4108}));
        }
    }
}

TEST_F(Office, OneColumnAndTwentySixAndShortRows) {
    SheetTable table = {L"N", {L"only"}, {{{L"1", false}}}};
    EXPECT_EQ(SheetTableWrite(table, File()), SheetExport::Written);
    ExpectClean("one column");
    table.columns.assign(26, L"c");
    table.rows.push_back({});
    table.rows.push_back(std::vector<kv::SheetCell>(26, {L"", true}));
    ASSERT_EQ(SheetTableWrite(table, File()), SheetExport::Written);
    ExpectClean("26 columns");
    const std::optional<Sheet> sheet = sim::ReadXlsx(File());
    ASSERT_TRUE(sheet);
    EXPECT_EQ(sheet->Merged(), std::vector<sim::CellArea>({{1, 1, 1, 26}}));
    EXPECT_EQ(sheet->Value(3, 1).text, L"1");
    EXPECT_EQ(sheet->Style(4, 26).numberFormat, L"@");
    EXPECT_TRUE(sheet->Style(5, 26).fill);
    table.rows.clear();
    EXPECT_EQ(SheetTableWrite(table, File()), SheetExport::Written);
    ExpectClean("no rows");
}

TEST_F(Office, CallsGrowWithMarkedBlocksOnly) {
    const auto callsFor = [&](const SheetTable& table) {
        Server().Reset();
        EXPECT_EQ(SheetTableWrite(table, File()), SheetExport::Written);
        return Server().Calls();
    };
    const long long plain = callsFor(PlainTable(1));
    EXPECT_EQ(callsFor(PlainTable(500)), plain);
    SheetTable marked = PlainTable(500);
    for (const std::size_t row : {0U, 1U, 2U, 100U, 499U})
        for (kv::SheetCell& cell : marked.rows[row]) cell.marked = true;
    // The three blocks fit into one address: a range, its interior, the colour.
    EXPECT_EQ(callsFor(marked), plain + 3);

    // 250 blocks, whose names and commas take 2393 characters: ten addresses of up to 255.
    for (std::size_t row = 0; row < marked.rows.size(); ++row)
        for (kv::SheetCell& cell : marked.rows[row]) cell.marked = row % 2 == 0;
    EXPECT_EQ(callsFor(marked), plain + 30);
    const std::optional<Sheet> sheet = sim::ReadXlsx(File());
    ASSERT_TRUE(sheet);
    for (int row = 3; row <= 502; ++row)
        EXPECT_EQ(sheet->Style(row, 2).fill.has_value(), row % 2 == 1) << "row " << row;

    // Blocks whose address takes 256 characters, one too many: rows 3, 5, 7, 9 with 10, then 12, 14 to 68.
    for (std::size_t row = 0; row < marked.rows.size(); ++row) {
        const std::size_t shown = row + 3;
        const bool marks = shown < 10 ? shown % 2 == 1 : shown % 2 == 0 && shown <= 68;
        for (kv::SheetCell& cell : marked.rows[row]) cell.marked = marks;
    }
    EXPECT_EQ(callsFor(marked), plain + 6);
}

TEST_F(Office, ABlockHasAHundredThousandCellsAtMost) {
    ASSERT_EQ(SheetTableWrite(PlainTable(50'000), File()), SheetExport::Written);
    const long long blocks = Server().Calls("Range.Value2");
    Server().Reset();
    ASSERT_EQ(SheetTableWrite(PlainTable(50'001), File()), SheetExport::Written);
    EXPECT_EQ(Server().Calls("Range.Value2"), blocks + 1);
}

TEST_F(Office, AnyFailingCallEndsTheApplication) {
    const SheetTable table = OddTable();
    ASSERT_EQ(SheetTableWrite(table, File()), SheetExport::Written);
    const long long calls = Server().Calls();
    ASSERT_GT(calls, 30);
    const std::optional<Sheet> whole = sim::ReadXlsx(File());
    ASSERT_TRUE(whole);
    // The last calls: SaveCopyAs, Saved, Quit.
    const long long save = calls - 2;
    for (const HRESULT how : {sim::kApplicationError, E_OUTOFMEMORY, RPC_E_DISCONNECTED}) {
        for (long long nth = 1; nth <= calls; ++nth) {
            const std::string where = std::to_string(how) + " from call " + std::to_string(nth);
            DeleteFileW(File().c_str());
            Server().Reset();
            Server().Fail({nth, how == RPC_E_DISCONNECTED ? 0 : 1, how});
            std::vector<kv::RefusedCell> refused;
            const SheetExport result = kv::SheetTableWrite(table, File(), refused);
            // One refusal while texts go over is got over by halves: nothing is missing then.
            const bool gotOver = how == sim::kApplicationError && refused.empty() && nth < save;
            const bool mayFail = nth <= save && !(gotOver && result == SheetExport::Written);
            EXPECT_EQ(result, mayFail ? SheetExport::Failed : SheetExport::Written) << where;
            EXPECT_TRUE(refused.empty()) << where;
            const std::optional<Sheet> sheet = sim::ReadXlsx(File());
            EXPECT_EQ(sheet.has_value(), result == SheetExport::Written) << where;
            // What is called written lacks nothing.
            if (sheet) ExpectEqual(*sheet, *whole);
            ExpectClean(where);
        }
    }
}

TEST_F(Office, LeavesOutTheCellsThatAreRefused) {
    Server().RefuseText(L"=(");
    SheetTable table = PlainTable(3);
    table.columns[0] = L"=(";
    table.rows[1][0].text = L"=(";
    std::vector<kv::RefusedCell> refused;
    ASSERT_EQ(kv::SheetTableWrite(table, File(), refused), SheetExport::Written);
    ASSERT_EQ(refused.size(), 2u);
    EXPECT_EQ(refused[0].row, 0u);
    EXPECT_EQ(refused[1].row, 2u);
    const std::optional<Sheet> sheet = sim::ReadXlsx(File());
    ASSERT_TRUE(sheet);
    EXPECT_EQ(sheet->Value(4, 1).kind, CellKind::kEmpty);
    EXPECT_EQ(sheet->Value(3, 1).text, table.rows[0][0].text);
    EXPECT_EQ(sheet->Value(5, 1).text, table.rows[2][0].text);
}

TEST_F(Office, WaitsForABusyApplication) {
    for (const HRESULT busy : {RPC_E_CALL_REJECTED, RPC_E_SERVERCALL_RETRYLATER}) {
        Server().Reset();
        Server().Fail({2, 2, busy});
        EXPECT_EQ(SheetTableWrite(PlainTable(2), File()), SheetExport::Written);
        ExpectClean("busy");
    }
}

TEST_F(Office, TellsAMissingApplicationFromARefusal) {
    Server().RefuseCreation(CO_E_SERVER_EXEC_FAILURE);
    EXPECT_EQ(SheetTableWrite(PlainTable(1), File()), SheetExport::NotCreated);
    host_.Spreadsheet().Remove();
    EXPECT_EQ(SheetTableWrite(PlainTable(1), File()), SheetExport::NotCreated);
    host_.Spreadsheet().Install();
    Server().Reset();
    SheetTable wide = PlainTable(1);
    wide.columns.assign(27, L"c");
    EXPECT_EQ(SheetTableWrite(wide, File()), SheetExport::Failed);
    EXPECT_EQ(SheetTableWrite({}, File()), SheetExport::Failed);
    EXPECT_EQ(Server().Calls(), 0);
    ExpectClean("nothing started");
}

TEST_F(Office, AFileThatCannotBeWrittenIsAFailure) {
    EXPECT_EQ(SheetTableWrite(PlainTable(1), File(L"gone\\a.xlsx")), SheetExport::Failed);
    ExpectClean("no folder");
    const HANDLE held =
        CreateFileW(File().c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, CREATE_NEW, 0, nullptr);
    ASSERT_NE(held, INVALID_HANDLE_VALUE);
    EXPECT_EQ(SheetTableWrite(PlainTable(1), File()), SheetExport::Failed);
    CloseHandle(held);
    ExpectClean("locked");
    EXPECT_EQ(SheetTableWrite(PlainTable(1), File()), SheetExport::Written);
}

TEST_F(Office, WorksHoweverComWasInitialised) {
    for (const DWORD model : {COINIT_APARTMENTTHREADED, COINIT_MULTITHREADED}) {
        std::thread([&] {
            // Past the redirected imports, as the host itself would.
            const HMODULE com = GetModuleHandleW(L"ole32.dll");
            using Enter = HRESULT(WINAPI*)(LPVOID, DWORD);
            using Leave = void(WINAPI*)();
            const auto enter =
                reinterpret_cast<Enter>(reinterpret_cast<void*>(GetProcAddress(com, "CoInitializeEx")));
            const auto leave =
                reinterpret_cast<Leave>(reinterpret_cast<void*>(GetProcAddress(com, "CoUninitialize")));
            ASSERT_EQ(enter(nullptr, model), S_OK);
            EXPECT_EQ(SheetTableWrite(PlainTable(1), File()), SheetExport::Written);
            ExpectClean("thread");
            // Still in the caller's hands.
            EXPECT_EQ(enter(nullptr, model), S_FALSE);
            leave();
            leave();
        }).join();
    }
}

// ---- Out of process, as the original runs

TEST_F(Office, WorksAcrossProcesses) {
    if (sim::Spreadsheet::IsRegistered()) GTEST_SKIP() << "an application is registered and stays alone";
    ASSERT_EQ(test::RunSpreadsheetProgram(L"--register"), 0);
    host_.Spreadsheet().UseRegistered();
    const SheetTable table = OddTable();
    EXPECT_EQ(SheetTableWrite(table, File()), SheetExport::Written);
    EXPECT_EQ(SheetTableWrite(table, File(L"gone\\a.xlsx")), SheetExport::Failed);
    EXPECT_EQ(test::RunSpreadsheetProgram(L"--unregister"), 0);
    EXPECT_FALSE(sim::Spreadsheet::IsRegistered());
    ExpectClean("across processes");

    host_.Spreadsheet().Install();
    ASSERT_EQ(SheetTableWrite(table, File(L"here.xlsx")), SheetExport::Written);
    const std::optional<Sheet> there = sim::ReadXlsx(File());
    const std::optional<Sheet> here = sim::ReadXlsx(File(L"here.xlsx"));
    ASSERT_TRUE(there && here);
    ExpectEqual(*there, *here);
}

TEST_F(Office, ReadsWhatItWroteAndEndsTheApplicationWhateverFails) {
    SheetTable table = PlainTable(300);
    table.rows[7] = {{L"0012", false}, {L"=A1", false}};
    std::vector<kv::RefusedCell> refused;
    ASSERT_EQ(kv::SheetFileWrite(table, File(L"t.xls"), refused, {true, true}), SheetExport::Written);
    EXPECT_TRUE(sim::ReadXlsx(File(L"t.xls")).has_value());
    std::vector<std::vector<std::wstring>> rows;
    Server().Reset();
    ASSERT_EQ(kv::SheetTableRead(File(L"t.xls"), 2, 302, rows), kv::SheetImport::Read);
    const long long calls = Server().Calls();
    EXPECT_LT(calls, 20);
    ASSERT_EQ(rows.size(), 302U);
    EXPECT_EQ(rows[9], (std::vector<std::wstring>{L"0012", L"=A1"}));
    EXPECT_EQ(kv::SheetTableRead(File(L"t.xls"), 2, 301, rows), kv::SheetImport::TooMany);
    EXPECT_EQ(kv::SheetTableRead(File(L"none.xls"), 2, 301, rows), kv::SheetImport::Failed);
    ExpectClean("reading");
    for (long long nth = 1; nth <= calls; ++nth) {
        Server().Reset();
        Server().Fail({nth, 1, sim::kApplicationError});
        const kv::SheetImport result = kv::SheetTableRead(File(L"t.xls"), 2, 302, rows);
        EXPECT_EQ(rows.empty(), result != kv::SheetImport::Read) << nth;
        ExpectClean("call " + std::to_string(nth) + " fails");
    }
}

}  // namespace
