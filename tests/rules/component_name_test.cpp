// Names of new components.

#include <string>
#include <utility>

#include <gtest/gtest.h>

#include "assembly/component_name.h"

namespace {

TEST(ComponentName, SeriesBaseLosesOneEndingOnly) {
    const struct {
        const wchar_t* assembly;
        const wchar_t* base;
    } kCases[] = {{L"PUMP_00", L"PUMP"},
                  {L"PUMP", L"PUMP"},
                  {L"PUMP_00_00", L"PUMP_00"},
                  {L"_00", L""},
                  {L"PUMP_000", L"PUMP_000"},
                  {L"PUMP00", L"PUMP00"},
                  {L"_00PUMP", L"_00PUMP"},
                  {L"00", L"00"},
                  {L"", L""}};
    for (const auto& [assembly, base] : kCases) EXPECT_EQ(kv::SeriesBase(assembly), base);
}

TEST(ComponentName, AssembliesKeepTwoDigits) {
    EXPECT_EQ(kv::NumberedName(L"PUMP", 9), L"PUMP-9");
    EXPECT_EQ(kv::NumberedName(L"PUMP", 10), L"PUMP-10");
    EXPECT_EQ(kv::NumberedAssemblyName(L"PUMP", 9), L"PUMP_09");
    EXPECT_EQ(kv::NumberedAssemblyName(L"PUMP", 10), L"PUMP_10");
    EXPECT_EQ(kv::NumberedAssemblyName(L"PUMP", 100), L"PUMP_100");
}

TEST(ComponentName, MergesAreNumberedOnlyByTheWholeName) {
    EXPECT_EQ(kv::MergeName(12), L"合并12");
    const std::pair<const wchar_t*, int> kCases[] = {{L"合并1", 1},  {L"合并012", 12},       {L"合并", 0},
                                                     {L"合并1a", 0}, {L"合并-1", 0},         {L"合并 1", 0},
                                                     {L"MERGE1", 0}, {L"合并99999999999", 0}};
    for (const auto& [name, number] : kCases) EXPECT_EQ(kv::MergeNumber(name), number);
}

}  // namespace
