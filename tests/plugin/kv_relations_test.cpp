// KvRelations: one text of relations for many models.

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>

#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/plugin_home.h"
#include "support/reports.h"

namespace {

namespace fs = std::filesystem;

using sim::RelationKind;
using sim::SimDialog;
using sim::SimModel;
using test::Messages;
using test::Texts;

using Lines = std::vector<std::wstring>;

constexpr wchar_t kAppended[] = L"\t批量关系创建操作已完成\t";
constexpr wchar_t kReplaced[] = L"\t批量关系覆盖操作已完成\t";
constexpr wchar_t kRestored[] = L"\t关系备份恢复操作已完成\t";
constexpr wchar_t kNoBackup[] = L"\t没有可恢复的关系备份！\t";

// PUMP holds SUB, SUB holds BOLT; every one has the dimension d1 and PUMP no relations.
class KvRelations : public testing::Test {
protected:
    KvRelations() {
        sub.Place(bolt);
        pump.Place(sub);
        for (SimModel* model : {&pump, &sub, &bolt}) model->AddDimension(L"d1", 5);
        sub.SetRelations({L"a = 1"});
        bolt.SetRelations({L"d1 = 10", L"b = 2"});
        host.Open(pump);
    }
    void Use(const std::function<void(SimDialog&)>& script) {
        host.OnDialog("Relations", script);
        EXPECT_EQ(host.Run("KvRelations"), PRO_TK_NO_ERROR);
    }
    void Press(const std::string& button, std::wstring_view text, std::wstring_view set = L"init") {
        Use([&](SimDialog& dialog) {
            dialog.Type("RelTxtarea", text).Choose("OptionRadio", set).Press(button).Press("Close");
        });
    }
    const Lines& Of(const SimModel& model, RelationKind kind = RelationKind::kOrdinary) {
        return model.Relations(kind).lines;
    }
    fs::path BackupFolder() { return host.State().user.localData / "Korvane" / "relations"; }
    std::size_t BackupCount() {
        std::error_code error;
        std::size_t count = 0;
        for (fs::directory_iterator file(BackupFolder(), error), end; !error && file != end; ++file) ++count;
        return count;
    }

    sim::SimHost host;
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& sub = host.AddAssembly(L"SUB");
    SimModel& bolt = host.AddPart(L"BOLT");
};

TEST_F(KvRelations, WritesByTheRuleOfTheButton) {
    Press("AddRels", L"d1 = 10\n\nc = a\r");
    // BOLT has no "a", and is left as it was; PUMP gets a set.
    EXPECT_EQ(Of(bolt), (Lines{L"d1 = 10", L"b = 2"}));
    EXPECT_EQ(Of(sub), (Lines{L"a = 1", L"d1 = 10", L"c = a\r"}));
    Press("AddRelsAndNoRepeat", L"d1 = 10\nd1 = 11");
    EXPECT_EQ(Of(bolt), (Lines{L"d1 = 10", L"b = 2", L"d1 = 11"}));
    EXPECT_EQ(Of(pump), (Lines{L"d1 = 10", L"d1 = 11"}));
    Press("CoverRels", L"d1 = 12");
    for (const SimModel* model : {&pump, &sub, &bolt}) EXPECT_EQ(Of(*model), Lines{L"d1 = 12"});
    EXPECT_EQ(Messages(host), (Texts{kAppended, L"\t批量关系追加操作已完成\t", kReplaced}));
    EXPECT_EQ(host.Boxes().back().flags & MB_ICONINFORMATION, static_cast<unsigned>(MB_ICONINFORMATION));
    EXPECT_EQ(pump.TreeRefreshes(), 3);
    EXPECT_EQ(pump.Regenerations(), 0);
}

TEST_F(KvRelations, TellsWhatTheHostRefused) {
    bolt.SetReadOnly();
    sub.SetRelations({L"d1 = 3"});
    Press("AddRels", L"d1 = (1");
    EXPECT_EQ(test::LastReport(host).Count(L"失败"), 3u);
    EXPECT_EQ(test::LastReport(host).Reason(L"SUB"),
              L"主程序不接受这些关系：语法有误，或用到了模型中没有的参数或尺寸");
    EXPECT_EQ(test::LastReport(host).Reason(L"BOLT"), L"模型只读或被锁定");
    EXPECT_EQ(host.State().user.messageArea, Texts{L"模型：完成 0，失败 3"});
    EXPECT_EQ(Messages(host), Texts{kAppended});
}

TEST_F(KvRelations, KeepsRelationsThatCannotBeRead) {
    host.State().report.Arm({"ProRelsetRelationsGet", 0, PRO_TK_GENERAL_ERROR});
    Press("CoverRels", L"d1 = 1");
    host.State().report.DisarmAll();
    EXPECT_EQ(Of(bolt), (Lines{L"d1 = 10", L"b = 2"}));
    EXPECT_EQ(test::LastReport(host).Count(L"失败"), 3u);
    EXPECT_EQ(BackupCount(), 0u);
}

TEST_F(KvRelations, HasNoWayToANewSetAfterRegeneration) {
    bolt.SetRelations({L"b = 1"}, RelationKind::kPost);
    Press("AddRels", L"d1 = 20", L"after");
    EXPECT_EQ(Of(bolt, RelationKind::kPost), (Lines{L"b = 1", L"d1 = 20"}));
    EXPECT_EQ(Of(bolt), (Lines{L"d1 = 10", L"b = 2"}));
    // The host makes ordinary sets only, and SUB has one.
    EXPECT_EQ(Of(pump), Lines{L"d1 = 20"});
    EXPECT_EQ(Of(sub), Lines{L"a = 1"});
    EXPECT_EQ(test::LastReport(host).Reason(L"SUB"), L"模型已有初始关系，主程序不能新建再生后关系");
    // Nothing is made for lines that are to replace others.
    SimModel& nut = host.AddPart(L"NUT");
    sub.Place(nut);
    for (const wchar_t* set : {L"after", L"init"}) Press("CoverRels", L"n = 1", set);
    EXPECT_FALSE(nut.Relations().exists);
    EXPECT_EQ(test::LastReport(host).Reason(L"NUT"), L"模型中没有所选类型的关系，或主程序不接受这些关系");
    EXPECT_EQ(test::LastReport(host).Count(L"失败"), 1u);
}

TEST_F(KvRelations, EmptyTextTakesAllRelationsAwayEvenFromAHostThatTakesNoEmptyList) {
    for (const bool refuses : {false, true}) {
        host.State().strict.emptyRelationsRefused = refuses;
        bolt.SetRelations({L"d1 = 10"});
        Press("CoverRels", L"\n");
        EXPECT_EQ(Of(bolt), Lines{});
        EXPECT_TRUE(bolt.Relations().exists);
    }
    Press("AddRels", L"");
    EXPECT_EQ(test::LastReport(host).Count(L"跳过"), 2u + 1u);
}

TEST_F(KvRelations, WithoutAChoiceOfTheSetSkipsEveryModel) {
    Use([&](SimDialog& dialog) {
        host.State().screen.FindDialog("Relations")->Find("OptionRadio")->selected.clear();
        dialog.Type("RelTxtarea", L"d1 = 1").Press("CoverRels").Press("ReadCurrent");
        EXPECT_EQ(dialog.Text("RelTxtarea"), L"d1 = 1");
    });
    EXPECT_EQ(Of(bolt), (Lines{L"d1 = 10", L"b = 2"}));
    EXPECT_EQ(test::LastReport(host).Count(L"跳过"), 3u);
    EXPECT_EQ(Messages(host), (Texts{kReplaced, L"\t当前模型中没有所选类型的关系，或无法读取！\t"}));
}

TEST_F(KvRelations, WorksOnTheChosenModelsAndTellsTheirNumber) {
    sub.Place(host.AddPart(L"STD_NUT")).Place(host.AddSheetmetal(L"PLATE"), 3);
    Use([&](SimDialog& dialog) {
        EXPECT_EQ(dialog.Text("ModelCount"), L"5 个模型");
        dialog.Choose("TypeRadio", L"Part").Type("InputKeyWords", L"std_，").Press("CountModels");
        EXPECT_EQ(dialog.Text("ModelCount"), L"2 个模型，排除 1 个");
        dialog.Type("RelTxtarea", L"n = 1").Press("AddRels").Choose("TypeRadio", L"Smt");
        EXPECT_EQ(dialog.Text("ModelCount"), L"1 个模型");
    });
    EXPECT_EQ(host.State().user.messageArea, Texts{L"模型：完成 2，跳过 1"});
    EXPECT_EQ(Of(sub), Lines{L"a = 1"});
    EXPECT_EQ(Of(bolt).back(), L"n = 1");

    host.Open(bolt, sim::HostMode::kAssembly);
    host.State().user.boxes.clear();
    Press("CoverRels", L"");
    EXPECT_EQ(Messages(host), Texts{L"当前模型中没有合适的子零件/组件"});
    EXPECT_FALSE(Of(bolt).empty());
}

TEST_F(KvRelations, ReadsTheCurrentModelsLines) {
    pump.SetRelations({L"d1 = 1", L"", L"/* end"});
    host.Open(host.AddManufacturing(L"MFG", pump));
    Use([&](SimDialog& dialog) {
        dialog.Type("RelTxtarea", L"mine").Choose("OptionRadio", L"after").Press("ReadCurrent");
        EXPECT_EQ(dialog.Text("RelTxtarea"), L"mine");
        dialog.Choose("OptionRadio", L"init").Press("ReadCurrent");
        EXPECT_EQ(dialog.Text("RelTxtarea"), L"d1 = 1\n\n/* end");
    });
}

TEST_F(KvRelations, TakesTheLastRunBackAlsoInALaterDialog) {
    bolt.SetRelations({L"d1 = 10", L"t = \"a, b\"", L""});
    Press("CoverRels", L"d1 = 1");
    host.AnswerBox(IDNO);
    host.AnswerBox(IDYES);
    Use([](SimDialog& dialog) { dialog.Press("RestoreRels").Press("RestoreRels"); });
    EXPECT_EQ(host.LastMessage(), kRestored);
    EXPECT_EQ(Of(bolt), (Lines{L"d1 = 10", L"t = \"a, b\"", L""}));
    EXPECT_EQ(Of(sub), Lines{L"a = 1"});
    // A restore can be taken back like any run; a run that changes nothing is none.
    host.AnswerBox(IDYES);
    Use([](SimDialog& dialog) { dialog.Press("AddRels").Press("RestoreRels").Press("KvShowReport"); });
    EXPECT_EQ(Of(bolt), Lines{L"d1 = 1"});
    EXPECT_EQ(BackupCount(), 3u);
    EXPECT_EQ(host.State().user.started.size(), 1u);
}

TEST_F(KvRelations, RestoresOnlyWhatIsBelowTheCurrentModel) {
    Press("CoverRels", L"d1 = 1");
    host.Open(host.AddAssembly(L"OTHER").Place(sub));
    host.AnswerBox(IDYES);
    Use([](SimDialog& dialog) { dialog.Press("RestoreRels"); });
    EXPECT_EQ(Of(sub), Lines{L"a = 1"});
    EXPECT_EQ(test::LastReport(host).Count(L"完成"), 2u);
}

TEST_F(KvRelations, GoesOnWithoutABackupAndSaysSo) {
    fs::create_directories(BackupFolder().parent_path());
    test::WriteBytes(BackupFolder(), "in the way");
    Use([](SimDialog& dialog) {
        dialog.Press("RestoreRels").Type("RelTxtarea", L"d1 = 1").Press("CoverRels").Press("RestoreRels");
    });
    EXPECT_EQ(Of(bolt), Lines{L"d1 = 1"});
    EXPECT_EQ(host.State().user.messageArea.front(), L"未能保存原有关系的备份，本次操作不能恢复");
    EXPECT_EQ(Messages(host), (Texts{kNoBackup, kReplaced, kNoBackup}));
}

long long CostOfOne(int models, const std::string& button) {
    sim::SimHost host;
    SimModel& pump = host.AddAssembly(L"PUMP");
    for (int i = 0; i < models; ++i)
        pump.Place(host.AddPart(L"PLATE" + std::to_wstring(i)).SetRelations({L"a=1"}));
    host.Open(pump);
    long long cost = 0;
    host.OnDialog("Relations", [&](SimDialog& dialog) {
        dialog.Type("RelTxtarea", L"b=1").Type("InputKeyWords", L"std_");
        const long long before = host.Calls();
        dialog.Press(button);
        cost = host.Calls() - before;
    });
    EXPECT_EQ(host.Run("KvRelations"), PRO_TK_NO_ERROR);
    return cost;
}

// Each model is placed once; a placement costs the walk at most 6 calls.
TEST(KvRelationsCost, IsAtMostTenHostCallsAModelBesidesTheWalk) {
    for (const char* button : {"AddRels", "AddRelsAndNoRepeat", "CoverRels"})
        EXPECT_LE(CostOfOne(110, button) - CostOfOne(10, button), 100 * (6 + 10));
}

}  // namespace
