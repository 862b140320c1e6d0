// Lines of relations, and backups of them: pure rules.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "params/relation_backup.h"
#include "params/relation_lines.h"

namespace {

using kv::RelationLines;
using enum kv::RelationRule;

TEST(RelationLines, AreDividedByLineFeedsAlone) {
    const RelationLines lines = {L"d1 = 10", L"\td2=1 ", L"a=1\r"};
    EXPECT_EQ(kv::LinesOfText(L"\n\nd1 = 10\n\n\td2=1 \na=1\r\n"), lines);
    EXPECT_EQ(kv::LinesOfText(L"d1 = 10\n\td2=1 \na=1\r"), lines);
    EXPECT_EQ(kv::LinesOfText(L""), RelationLines{});
    EXPECT_EQ(kv::LinesOfText(L"\n\n"), RelationLines{});
    EXPECT_EQ(kv::TextOfLines({L"a", L"", L"b"}), L"a\n\nb");
}

TEST(NewRelations, FollowTheRuleOfTheButton) {
    struct Case {
        RelationLines old, typed, appended, newAppended;
    };
    const Case cases[] = {
        {{}, {}, {}, {}},
        {{L"d1=10"}, {}, {L"d1=10"}, {L"d1=10"}},
        {{}, {L"b", L"a"}, {L"b", L"a"}, {L"b", L"a"}},
        {{L"d1=10"}, {L"d1=10"}, {L"d1=10", L"d1=10"}, {L"d1=10"}},
        {{L"d1=10"}, {L"D1=10"}, {L"d1=10", L"D1=10"}, {L"d1=10", L"D1=10"}},
        {{L"d1=10"}, {L"d1=10 "}, {L"d1=10", L"d1=10 "}, {L"d1=10", L"d1=10 "}},
        // Only what was there before counts, and that stays as it is.
        {{L"x", L"x"}, {L"n", L"x", L"n"}, {L"x", L"x", L"n", L"x", L"n"}, {L"x", L"x", L"n", L"n"}},
    };
    for (const Case& one : cases) {
        EXPECT_EQ(kv::NewRelations(one.old, one.typed, Append), one.appended);
        EXPECT_EQ(kv::NewRelations(one.old, one.typed, AppendNew), one.newAppended);
        EXPECT_EQ(kv::NewRelations(one.old, one.typed, Replace), one.typed);
    }
}

constexpr wchar_t kFile[] =
    L"模型,类型,关系集,行数\r\n'BOLT,零件,初始,2\r\n,'d1 = 10\r\n,\"'n = \"\"a\"\", "
    L"'b'\"\r\n'PUMP,组件,再生后,0\r\n";

TEST(RelationBackup, GivesWholeBlocksOnly) {
    const auto blocks = kv::RelationBlocksFromText(kFile);
    ASSERT_EQ(blocks.size(), 2u);
    EXPECT_EQ(blocks[0].model, L"BOLT");
    EXPECT_EQ(blocks[0].type, PRO_MDL_PART);
    EXPECT_EQ(blocks[0].kind, kv::RelationKind::Initial);
    EXPECT_EQ(blocks[0].lines, (RelationLines{L"d1 = 10", L"n = \"a\", 'b'"}));
    EXPECT_EQ(blocks[1].type, PRO_MDL_ASSEMBLY);
    EXPECT_EQ(blocks[1].kind, kv::RelationKind::AfterRegeneration);
    EXPECT_TRUE(blocks[1].lines.empty());
}

// Wherever the disk was full, or whatever was cut away since.
TEST(RelationBackup, TakesNoLineOfABlockThatWasCut) {
    const std::wstring file = kFile;
    const std::size_t end = file.find(L"'PUMP");
    for (std::size_t length = 0; length < file.size(); ++length) {
        const auto blocks = kv::RelationBlocksFromText(file.substr(0, length));
        EXPECT_EQ(blocks.size(), length >= end ? 1u : 0u) << length;
    }
    for (const wchar_t* damaged :
         {L"'BOLT,零件,初始,2\r\n,'d1\r\n'NUT,零件,初始,0\r\n", L"'B,零件,初始,1\r\n,d1\r\n",
          L"'B,图纸,初始,0\r\n", L"'B,零件,其他,0\r\n", L"'B,零件,初始,-1\r\n", L"B,零件,初始,0\r\n"}) {
        for (const kv::RelationBlock& block : kv::RelationBlocksFromText(damaged))
            EXPECT_EQ(block.model, L"NUT") << testing::PrintToString(damaged);
    }
}

}  // namespace
