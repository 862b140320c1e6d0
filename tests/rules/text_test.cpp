// Texts and name prefixes: pure rules.

#include "base/text.h"

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "model/prefix_list.h"

namespace {

using Pieces = std::vector<std::wstring>;

TEST(Text, UpperCaseKeepsTheLengthInEveryScript) {
    const std::vector<std::pair<std::wstring, std::wstring>> cases = {
        {L"", L""},           {L"bolt-8_a", L"BOLT-8_A"}, {L"istanbul", L"ISTANBUL"},
        {L"泵体a", L"泵体A"}, {L"größe", L"GRÖßE"},       {L"деталь", L"ДЕТАЛЬ"},
    };
    for (const auto& [text, upper] : cases) EXPECT_EQ(kv::UpperCase(text), upper);
}

TEST(Text, FitsIntoABufferWithItsEndMarkOrNotAtAll) {
    wchar_t buffer[4] = L"old";
    EXPECT_EQ(kv::CopyText(L"1234", buffer), PRO_TK_LINE_TOO_LONG);
    EXPECT_STREQ(buffer, L"old");
    EXPECT_EQ(kv::CopyText(L"123", buffer), PRO_TK_NO_ERROR);
    EXPECT_STREQ(buffer, L"123");
    EXPECT_EQ(kv::CopyText(L"", buffer), PRO_TK_NO_ERROR);
    EXPECT_STREQ(buffer, L"");
}

TEST(Text, TakesOutBlanksAndNothingElse) {
    EXPECT_EQ(kv::WithoutBlanks(L"  a b\tc\x3000 "), L"ab\tc\x3000");
    EXPECT_EQ(kv::WithoutBlanks(L"   "), L"");
}

TEST(Text, IsConvertedToEightBitsExactlyOrNotAtAll) {
    struct {
        std::wstring text;
        std::string bytes;  // in code page 936; empty: it has no place there
    } const cases[] = {
        {L"C:\\pump", "C:\\pump"},
        {L"图纸", "\xCD\xBC\xD6\xBD"},
        {L"\x20AC", "\x80"},  // the euro sign
        {L"도면", ""},
        {L"\xE9t\xE9 \xF8", ""},
        {L"\xD83D\xDE00", ""},  // a character of two halves
    };
    for (const auto& [text, bytes] : cases) {
        std::string encoded;
        EXPECT_EQ(kv::EncodeText(text, kv::CodePage::Chinese, encoded),
                  bytes.empty() ? PRO_TK_NOT_VALID : PRO_TK_NO_ERROR)
            << testing::PrintToString(text);
        if (bytes.empty()) continue;
        EXPECT_EQ(encoded, bytes);
        std::wstring decoded;
        EXPECT_EQ(kv::DecodeText(bytes, kv::CodePage::Chinese, decoded), PRO_TK_NO_ERROR);
        EXPECT_EQ(decoded, text);
    }
    std::wstring text = L"old";
    EXPECT_EQ(kv::DecodeText("", kv::CodePage::Chinese, text), PRO_TK_NO_ERROR);
    EXPECT_EQ(text, L"");
    // The first half of a character at the end.
    EXPECT_EQ(kv::DecodeText("C:\\\xCD", kv::CodePage::Chinese, text), PRO_TK_NOT_VALID);
}

TEST(PrefixList, SplitsAtBothCommasAndKeepsBlanks) {
    const std::vector<std::pair<std::wstring, Pieces>> cases = {
        {L"", {}},
        {L",，,,", {}},
        {L"abc", {L"ABC"}},
        {L"，abc,,Def，", {L"ABC", L"DEF"}},
        {L"a b, c ", {L"A B", L" C "}},
        {L"a;b、c", {L"A;B、C"}},
    };
    for (const auto& [text, prefixes] : cases) EXPECT_EQ(kv::PrefixListFromText(text), prefixes);
}

TEST(PrefixList, MatchesTheBeginningOfANameInAnyLetterCase) {
    const kv::PrefixList prefixes = kv::PrefixListFromText(L"abc,泵,STD_");
    for (const wchar_t* name : {L"abc", L"Abc1", L"泵体", L"std_bolt"})
        EXPECT_TRUE(kv::HasPrefix(prefixes, name));
    for (const wchar_t* name : {L"", L"AB", L"XABC", L"水泵", L"STDBOLT", L" ABC"})
        EXPECT_FALSE(kv::HasPrefix(prefixes, name));
    EXPECT_FALSE(kv::HasPrefix({}, L"ABC"));
}

TEST(Text, SplitsListsOfNamesAtCommasOfEitherWidth) {
    const std::vector<std::pair<std::wstring, Pieces>> cases = {
        {L"图号,名称,模型数量", {L"图号", L"名称", L"模型数量"}},
        {L"图号， 名称 ,模型 数量", {L"图号", L"名称", L"模型数量"}},
        {L",,图号,，名称,", {L"图号", L"名称"}},
        {L"图号,图号", {L"图号", L"图号"}},
        {L" ， , ", {}},
        {L"", {}},
        {L"图\t号、名称;材料", {L"图\t号、名称;材料"}},
    };
    for (const auto& [list, names] : cases) EXPECT_EQ(kv::SplitAtCommas(kv::WithoutBlanks(list)), names);
}

}  // namespace
