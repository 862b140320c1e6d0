// The folder commands: opening and setting the working directory, backing an assembly up, opening a model's
// drawing.

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>

#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/plugin_home.h"

namespace {

namespace fs = std::filesystem;
using sim::Fault;
using sim::HostMode;
using sim::ModelKind;
using sim::Pick;
using sim::SimHost;
using sim::SimModel;
using test::ItemOf;
using test::Messages;
using test::PathText;
using test::Texts;
using test::Whole;

// ---- KvOpenDir, KvSetDirectory

TEST(KvOpenDir, ShowsTheWorkingDirectoryInTheExplorer) {
    SimHost host;
    test::EnterFolder(host, L"图纸 一,二");
    EXPECT_EQ(host.Run("KvOpenDir"), PRO_TK_NO_ERROR);
    ASSERT_EQ(host.State().user.started.size(), 1u);
    const sim::StartedProgram& explorer = host.State().user.started[0];
    EXPECT_EQ(explorer.verb, L"");
    EXPECT_EQ(explorer.file, L"explorer");
    EXPECT_EQ(PathText(explorer.parameters), PathText(host.WorkingDirectory()));
    EXPECT_EQ(explorer.showMode, 5);
}

TEST(KvSetDirectory, GoesToTheFolderOfTheModelAndSaysSo) {
    SimHost host;
    SimModel& bolt = host.AddPart(L"BOLT");
    const fs::path folder = test::MakeFolder(host, L"零件 库");
    bolt.directory = folder;
    host.Open(bolt);
    host.AllowDirectoryChange();
    EXPECT_EQ(host.Run("KvSetDirectory"), PRO_TK_NO_ERROR);
    EXPECT_EQ(PathText(host.WorkingDirectory()), PathText(folder));
    ASSERT_EQ(host.State().user.messageArea.size(), 1u);
    EXPECT_NE(host.State().user.messageArea[0].find(PathText(folder)), std::wstring::npos);
    EXPECT_EQ(Messages(host), Texts{});
}

TEST(KvSetDirectory, LeavesTheDirectoryWithoutAModelOrItsFolder) {
    SimHost host;
    const fs::path before = host.WorkingDirectory();
    EXPECT_EQ(host.Run("KvSetDirectory"), PRO_TK_BAD_CONTEXT);
    SimModel& bolt = host.AddPart(L"BOLT");
    bolt.directory = before / "gone";
    host.Open(bolt);
    EXPECT_NE(host.Run("KvSetDirectory"), PRO_TK_NO_ERROR);
    EXPECT_EQ(host.WorkingDirectory(), before);
    EXPECT_TRUE(host.State().user.messageArea.empty());
}

// ---- KvBackup

class KvBackup : public testing::Test {
protected:
    KvBackup() { folder = test::MakeFolder(host, L"备份"); }

    bool IsBackedUp(std::wstring_view name, ModelKind kind) {
        return !host.State().models.NewestFile(name, kind, folder).path.empty();
    }
    // Runs the command with `folder` chosen; the message has to begin like this.
    void BackUp(std::wstring_view message) {
        host.AnswerFolder(folder.wstring());
        host.Run("KvBackup");
        ASSERT_EQ(Messages(host).size(), 1u);
        EXPECT_TRUE(Messages(host)[0].starts_with(message)) << testing::PrintToString(Messages(host)[0]);
        EXPECT_EQ(host.State().user.questions, Texts{L"请选择模型备份目录"});
    }

    SimHost host;
    fs::path folder;
};

TEST_F(KvBackup, CopiesEveryComponentModelOnceWithItsDrawing) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& sub = host.AddAssembly(L"SUB");
    SimModel& bolt = host.AddPart(L"BOLT");
    SimModel& seal = host.AddPart(L"SEAL");
    SimModel& spare = host.AddPart(L"SPARE");
    sub.Place(bolt, 3);
    pump.Place(sub, 2).Place(bolt).Place(seal).Place(spare, {.status = 5});
    host.AddDrawingFile(L"BOLT", {L"A4"});
    host.AddDrawingFile(L"SUB", {L"A3"});
    host.AddDrawingFile(L"PUMP", {L"A0"});
    host.Open(pump);
    const fs::path before = host.WorkingDirectory();
    BackUp(L"图纸备份操作已完成");

    EXPECT_TRUE(IsBackedUp(L"BOLT", ModelKind::kPart));
    EXPECT_TRUE(IsBackedUp(L"SEAL", ModelKind::kPart));
    EXPECT_TRUE(IsBackedUp(L"SUB", ModelKind::kAssembly));
    EXPECT_TRUE(IsBackedUp(L"BOLT", ModelKind::kDrawing));
    EXPECT_TRUE(IsBackedUp(L"SUB", ModelKind::kDrawing));
    EXPECT_FALSE(IsBackedUp(L"SPARE", ModelKind::kPart)) << "suppressed";
    EXPECT_FALSE(IsBackedUp(L"PUMP", ModelKind::kAssembly)) << "the top assembly";
    EXPECT_FALSE(IsBackedUp(L"PUMP", ModelKind::kDrawing));
    EXPECT_EQ(host.Calls("ProMdlnameBackup"), 5);
    EXPECT_EQ(host.WorkingDirectory(), before);
}

TEST_F(KvBackup, TellsWhatWentWhereAndWhichDrawingCouldNotBeRead) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    pump.Place(host.AddPart(L"BOLT")).Place(host.AddPart(L"SEAL"));
    host.AddDrawingFile(L"BOLT", {L"A4"});
    test::WriteBytes(host.WorkingDirectory() / "seal.drw.1", "damaged");
    host.Open(pump);
    BackUp(L"图纸备份操作已完成！\n模型 2 个，工程图 1 个，备份到：\n" + folder.wstring());
    EXPECT_TRUE(Messages(host)[0].ends_with(L"\n以下模型或其工程图未能备份：\nSEAL"));
}

TEST_F(KvBackup, RefusesTheFolderOfTheModels) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& bolt = host.AddPart(L"BOLT");
    pump.Place(bolt);
    bolt.directory = folder;
    host.Open(pump);
    BackUp(L"所选目录就是模型所在的目录，请选择其他目录");
    EXPECT_EQ(host.Calls("ProMdlnameBackup"), 0);
    // Another model lies elsewhere: there is something to back up.
    pump.Place(host.AddPart(L"SEAL"));
    host.State().user.boxes.clear();
    host.State().user.questions.clear();
    BackUp(L"图纸备份操作已完成");
    EXPECT_TRUE(IsBackedUp(L"SEAL", ModelKind::kPart));
}

TEST_F(KvBackup, TakesTheAssemblyOfAManufacturingModel) {
    SimModel& mould = host.AddAssembly(L"MOULD");
    mould.Place(host.AddPart(L"CAVITY"));
    host.Open(host.AddManufacturing(L"MFG", mould));
    BackUp(L"图纸备份操作已完成");
    EXPECT_TRUE(IsBackedUp(L"CAVITY", ModelKind::kPart));
    EXPECT_FALSE(IsBackedUp(L"MOULD", ModelKind::kAssembly));
}

TEST_F(KvBackup, GoesOnWhenOneModelCannotBeBackedUp) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    pump.Place(host.AddPart(L"BOLT")).Place(host.AddPart(L"SEAL")).Place(host.AddPart(L"RING"));
    host.Open(pump);
    host.State().report.Arm(Fault{"ProMdlnameBackup", 1, PRO_TK_CANT_WRITE});
    BackUp(L"图纸备份操作已完成！\n模型 2 个，工程图 0 个");
    EXPECT_EQ(IsBackedUp(L"BOLT", ModelKind::kPart) + IsBackedUp(L"SEAL", ModelKind::kPart) +
                  IsBackedUp(L"RING", ModelKind::kPart),
              2);
}

TEST_F(KvBackup, TellsOfAModelWhoseDrawingItCannotLookFor) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    pump.Place(host.AddPart(L"BOLT"));
    host.Open(pump);
    host.State().report.Arm(Fault{"ProMdlMdlnameGet", 0});
    BackUp(L"图纸备份操作已完成！\n模型 1 个，工程图 0 个");
    EXPECT_NE(Messages(host)[0].find(L"未能备份"), std::wstring::npos);
}

TEST_F(KvBackup, LooksForDrawingsInTheWorkingDirectoryAlone) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    pump.Place(host.AddPart(L"BOLT"));
    host.Open(pump);
    // An older backup lies in the chosen folder, with a drawing that the workspace no longer has.
    host.AddDrawingFile(L"BOLT", {L"A4"});
    const sim::ModelFile drawing =
        host.State().models.NewestFile(L"BOLT", ModelKind::kDrawing, host.WorkingDirectory());
    fs::rename(drawing.path, folder / drawing.path.filename());
    BackUp(L"图纸备份操作已完成");
    EXPECT_EQ(host.Calls("ProMdlnameBackup"), 1);
}

TEST_F(KvBackup, RefusesAPartWithoutAskingForAFolder) {
    host.Open(host.AddPart(L"BOLT"), HostMode::kAssembly);
    host.Run("KvBackup");
    EXPECT_EQ(Messages(host), Texts{L"当前环境不是组件/制造，无法进行备份操作"});
}

TEST_F(KvBackup, HasNothingToCopyInAnAssemblyWithoutComponents) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    pump.AddFeature(917).Place(host.AddPart(L"BOLT"), {.status = 5});
    host.Open(pump);
    BackUp(L"当前模型中没有子零件/组件");
    EXPECT_TRUE(fs::is_empty(folder));
}

TEST_F(KvBackup, EndsQuietlyWhenTheFolderChoiceIsCancelled) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    pump.Place(host.AddPart(L"BOLT"));
    host.Open(pump);
    host.AnswerFolder(std::nullopt);
    host.Run("KvBackup");
    EXPECT_EQ(Messages(host), Texts{});
    EXPECT_EQ(host.Calls("ProMdlnameBackup"), 0);
}

TEST_F(KvBackup, TellsThatTheHostHasNoMemoryForTheList) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    pump.Place(host.AddPart(L"BOLT"));
    host.Open(pump);
    host.State().report.Arm(Fault{"ProArrayAlloc", 0, PRO_TK_OUT_OF_MEMORY});
    BackUp(L"ProArray Alloc error");
    EXPECT_TRUE(fs::is_empty(folder));
}

// ---- KvOpenDrw

class KvOpenDrw : public testing::Test {
protected:
    KvOpenDrw() : host(test::Unstarted()) {
        test::StartWithRightClick(host);
        bolt.AddBlock(1, 1, 1);
        pump.Place(sub).Place(bolt);
        host.Open(pump);
    }
    // The user selects and takes the entry from the right-click menu.
    ProError Open(const std::vector<Pick>& picks) {
        host.Select(picks);
        return host.RunFromPopup("KvOpenDrw");
    }
    // Name of the drawing that the host shows; empty: another model is shown.
    std::wstring ShownDrawing() {
        const SimModel* current = host.State().models.current;
        return current != nullptr && current->Kind() == ModelKind::kDrawing ? current->Name() : L"";
    }

    SimHost host;
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& sub = host.AddAssembly(L"SUB");
    SimModel& bolt = host.AddPart(L"BOLT");
};

TEST_F(KvOpenDrw, ShowsTheDrawingOfTheSelectedModel) {
    host.AddDrawingFile(L"BOLT", {L"A4"});
    host.AddDrawingFile(L"SUB", {L"A4"});
    EXPECT_EQ(Open({Whole(bolt)}), PRO_TK_NO_ERROR);
    EXPECT_EQ(ShownDrawing(), L"BOLT");
    host.Open(pump);
    EXPECT_EQ(Open({Whole(sub)}), PRO_TK_NO_ERROR);
    EXPECT_EQ(ShownDrawing(), L"SUB");
    EXPECT_EQ(Messages(host), Texts{});
}

TEST_F(KvOpenDrw, ShowsTheDrawingOfTheModelThatOwnsTheItem) {
    host.AddDrawingFile(L"BOLT", {L"A4"});
    host.AddDrawingFile(L"PUMP", {L"A1"});
    EXPECT_EQ(Open({ItemOf(bolt, 5, bolt.Surfaces()[0]->id)}), PRO_TK_NO_ERROR);
    EXPECT_EQ(ShownDrawing(), L"BOLT");
}

TEST_F(KvOpenDrw, DeletesNoWindowOfTheUsersWhenTheHostShowsNothing) {
    host.AddDrawingFile(L"BOLT", {L"A4"});
    host.Open(*host.Retrieve(L"BOLT", ModelKind::kDrawing));
    host.Open(pump);
    host.State().report.Arm(Fault{"ProMdlDisplay", 1, PRO_TK_GENERAL_ERROR});
    EXPECT_NE(Open({Whole(bolt)}), PRO_TK_NO_ERROR);
    EXPECT_EQ(host.State().report.CallCount("ProWindowDelete"), 0);

    host.AddDrawingFile(L"SUB", {L"A4"});
    host.State().report.Arm(Fault{"ProMdlDisplay", 1, PRO_TK_GENERAL_ERROR});
    EXPECT_NE(Open({Whole(sub)}), PRO_TK_NO_ERROR);
    EXPECT_EQ(host.State().report.CallCount("ProWindowDelete"), 1) << "one of our own";
}

TEST_F(KvOpenDrw, TellsThatThereIsNoSuchDrawing) {
    EXPECT_NE(Open({Whole(bolt)}), PRO_TK_NO_ERROR);
    EXPECT_EQ(Messages(host), Texts{L"\t同名工程图打开失败，请确认该模型工程图在当前工作目录是否存在。\t"});
    EXPECT_EQ(ShownDrawing(), L"");
}

TEST_F(KvOpenDrw, DoesNothingWithoutExactlyOneSelection) {
    host.AddDrawingFile(L"BOLT", {L"A4"});
    test::RightClick(host);  // registers the command
    for (const std::vector<Pick>& picks : {std::vector<Pick>{}, std::vector<Pick>{Whole(bolt), Whole(sub)}}) {
        host.Select(picks);
        host.Run("KvOpenDrw");
        EXPECT_EQ(ShownDrawing(), L"");
        EXPECT_EQ(Messages(host), Texts{});
    }
}

}  // namespace
