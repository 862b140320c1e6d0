// Lists of what a batch could not do.

#include <string>

#include <gtest/gtest.h>

#include "model/run_record.h"

namespace {

using kv::FailureLines;
using kv::FailureList;
using kv::RunRecord;

// As many failures of different models.
RunRecord Failures(int count) {
    RunRecord record;
    for (int i = 1; i <= count; ++i) record.push_back({std::to_wstring(i), L"write", PRO_TK_CANT_WRITE});
    return record;
}

TEST(FailureLines, NamesTheFileOrElseTheModelOfEachFailure) {
    const RunRecord record = {
        {L"BOLT", L"write", PRO_TK_NO_ERROR, L"bolt.dwg"},
        {L"BOLT", L"write", PRO_TK_CANT_WRITE, L"bolt_2.dwg"},
        {L"RING", L"back up the model", PRO_TK_CANT_WRITE},
        {L"RING", L"back up the drawing", PRO_TK_CANT_WRITE},
        {L"SEAL", kv::kStepExcluded, PRO_TK_NO_ERROR, L"", false, true},
        {L"", kv::kStepReadName, PRO_TK_GENERAL_ERROR},
    };
    EXPECT_EQ(FailureLines(record), L"\nbolt_2.dwg\nRING\n");
    EXPECT_EQ(FailureLines(record, FailureList::Complete), L"\nbolt_2.dwg\nRING\nRING\n");
    EXPECT_EQ(FailureLines({record[0], record[4]}), L"");
}

TEST(FailureLines, CutsTheShortListOnly) {
    std::wstring twenty;
    for (int i = 1; i <= 20; ++i) twenty += L"\n" + std::to_wstring(i);
    EXPECT_EQ(FailureLines(Failures(20)), twenty);
    EXPECT_EQ(FailureLines(Failures(21)), twenty + L"\n……");
    EXPECT_EQ(FailureLines(Failures(21), FailureList::Complete), twenty + L"\n21");

    RunRecord repeated = Failures(20);
    repeated.push_back(repeated.back());
    EXPECT_EQ(FailureLines(repeated), twenty) << "nothing is left out";
}

}  // namespace
