// Files of runs: which may go, and what their cells look like.

#include "base/run_file.h"

#include <array>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "base/csv.h"
#include "base/file.h"

namespace {

using Names = std::vector<std::wstring>;

TEST(CsvLine, QuotesWhatAReaderWouldTakeApart) {
    const std::array<std::wstring, 6> cells = {L"PUMP", L"a,b", L"say \"x\"", L"", L"two\nlines", L" blank"};
    EXPECT_EQ(kv::CsvLine(cells), L"PUMP,\"a,b\",\"say \"\"x\"\"\",,\"two\nlines\",\" blank\"\r\n");
}

TEST(HarmlessCell, LeavesNoFormula) {
    for (const wchar_t* text : {L"=1+1", L"+1", L"-1", L"@SUM(A1)", L"\tx"})
        EXPECT_EQ(kv::HarmlessCell(text), L"'" + std::wstring(text));
    for (const wchar_t* text : {L"", L"PUMP", L"1=1", L"'x"}) EXPECT_EQ(kv::HarmlessCell(text), text);
}

TEST(RunFilesToDelete, KeepsTheNewestAndEverythingElse) {
    const Names names = {
        L"KvParams_20260102-030405-678_4711.csv",
        L"KvExport_20260102-030405-677_99999.csv",
        L"KvParams_20251231-235959-999_1.csv",
        L"ZZ_20240101-000000-000_1.csv",
        // Files of the user, however much they look like ours.
        L"KvParams_20200101-000000-000_1.csv.bak",
        L"KvParams_2020-01-01_1.csv",
        L"KvParams_20200101-000000-000.csv",
        L"KvParams_20200101-000000-000_1x.csv",
        L"my notes_20200101-000000-000_1.csv",
        L"_20200101-000000-000_1.csv",
        L"notes.csv",
    };
    EXPECT_EQ(kv::RunFilesToDelete(names, 2),
              (Names{L"KvParams_20251231-235959-999_1.csv", L"ZZ_20240101-000000-000_1.csv"}));
    EXPECT_TRUE(kv::RunFilesToDelete(names, 4).empty());
}

TEST(Paths, AreTheSameInAnySpelling) {
    EXPECT_TRUE(kv::IsSamePath(L"C:/models/轴/", L"c:\\MODELS\\轴"));
    EXPECT_FALSE(kv::IsSamePath(L"C:\\models\\a", L"C:\\models"));
}

}  // namespace
