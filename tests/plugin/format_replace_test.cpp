// KvFrmReplace: another format for the sheets of many drawings.

#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

#include <gtest/gtest.h>

#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/drawings.h"
#include "support/reports.h"

namespace {

using sim::ModelKind;
using sim::SimDialog;
using sim::SimHost;
using sim::SimModel;
using test::DrawingOf;
using test::LastReport;

constexpr char kDrawingList[] = "drw_list";
constexpr wchar_t kUsersPlan[] = L"已打开、已修改或来自其他文件夹，跳过";

// In the working directory: BOLT with a sheet A3 of OLD_A3 and a sheet A4 of OLD_A4 with a table of it and
// one of the user's; NUT with a sheet A4 without a format. The new format NEW is of A2 and brings a table.
class FormatReplace : public testing::TestWithParam<bool> {
protected:
    static sim::HostSetup HostOfKind() {
        sim::HostSetup setup;
        setup.asDocumented = GetParam();
        return setup;
    }
    FormatReplace() {
        SimModel& bolt = host.AddDrawing(L"BOLT", {L"A3", L"A4"}, {&part});
        bolt.Sheets()[0].format = L"OLD_A3";
        bolt.Sheets()[1].format = L"OLD_A4";
        bolt.AddTable(2, L"typed", true).AddTable(2, L"of the user").SetCurrentSheet(2);
        host.Store(bolt);
        host.Store(host.AddDrawing(L"NUT", {L"A4"}, {&part}));
        const std::filesystem::path folder = test::MakeFolder(host, "formats");
        std::ofstream(folder / "new.frm.1")
            << R"({"format":"hostsim model","version":1,"kind":"format","name":"NEW","sheets":[{"size":"A2"}],)"
            << R"("tables":[{"id":1,"sheet":1,"text":"title"}]})";
        formatFile = (folder / "new.frm.1").wstring();
        host.AnswerFile(formatFile);
    }
    void Run(const std::function<void(SimDialog&)>& user) {
        host.OnDialog("KvFrmReplace", [&](SimDialog& dialog) {
            dialog.Press("KvChooseFormat").Press("selAll");
            user(dialog);
        });
        EXPECT_EQ(host.Run("KvFrmReplace"), PRO_TK_NO_ERROR);
    }
    bool HasFile(const wchar_t* name) const {
        return std::filesystem::exists(host.WorkingDirectory() / name);
    }

    SimHost host{HostOfKind()};
    SimModel& part = host.AddPart(L"PART");
    std::wstring formatFile;
};

INSTANTIATE_TEST_SUITE_P(Hosts, FormatReplace, testing::Bool(),
                         [](const auto& documented) { return documented.param ? "AsDocumented" : "AsItIs"; });

TEST_P(FormatReplace, TellsWhatWouldHappenAndChangesNothing) {
    Run([](SimDialog& dialog) {
        dialog.Press("KvLoadFormats");
        EXPECT_EQ(dialog.Cell(kDrawingList, "1", "formats"), L"OLD_A3,OLD_A4");
        EXPECT_EQ(dialog.Cell(kDrawingList, "1", "sheet_size"), L"A3,A4");
        EXPECT_EQ(dialog.Cell(kDrawingList, "2", "formats"), L"(无)");
        dialog.Press("KvPlan");
        EXPECT_EQ(dialog.Cell(kDrawingList, "1", "plan"),
                  GetParam() ? L"第1页：OLD_A3 → NEW；第2页：有图框表格，跳过"
                             : L"第1页：OLD_A3 → NEW，图幅 A3 → A2；第2页：有图框表格，跳过");
    });
    EXPECT_FALSE(HasFile(L"bolt.drw.2"));
    EXPECT_EQ(DrawingOf(host, L"BOLT"), nullptr) << "it was not in memory before";
    EXPECT_EQ(host.State().models.Find(L"NEW", ModelKind::kFormat), nullptr);
}

TEST_P(FormatReplace, ReplacesAndSavesWhatIsOnDisk) {
    Run([](SimDialog& dialog) { dialog.Press("ApplyBt"); });
    EXPECT_EQ(DrawingOf(host, L"BOLT"), nullptr);
    EXPECT_TRUE(HasFile(L"nut.drw.2"));
    const SimModel* bolt = host.Retrieve(L"BOLT", ModelKind::kDrawing);
    ASSERT_NE(bolt, nullptr);
    EXPECT_EQ(bolt->Sheets()[0].format, L"NEW");
    EXPECT_EQ(bolt->Sheets()[0].size, L"A2");
    EXPECT_EQ(bolt->Sheets()[1].format, L"OLD_A4") << "its table may hold what a user typed";
    EXPECT_EQ(bolt->Tables().size(), 3U);
    EXPECT_EQ(bolt->CurrentSheet(), 2);
    EXPECT_EQ(LastReport(host).Count(L"完成"), 2U);
    EXPECT_EQ(LastReport(host).Count(L"跳过"), 1U);
}

TEST_P(FormatReplace, TakesTheOldTablesAwayWhenTold) {
    Run([](SimDialog& dialog) {
        dialog.Check("ReplaceTables").Choose("SheetScope", L"现有图框为").Type("ScopeText", L"old_a4");
        dialog.Press("ApplyBt");
    });
    const SimModel* bolt = host.Retrieve(L"BOLT", ModelKind::kDrawing);
    ASSERT_NE(bolt, nullptr);
    EXPECT_EQ(bolt->Sheets()[0].format, L"OLD_A3") << "another format was asked for";
    EXPECT_EQ(bolt->Sheets()[1].format, L"NEW");
    ASSERT_EQ(bolt->Tables().size(), 2U);
    EXPECT_EQ(bolt->Tables()[0].text, L"of the user");
    EXPECT_EQ(bolt->Tables()[1].text, L"title");
    EXPECT_FALSE(HasFile(L"nut.drw.2")) << "none of its sheets was asked for";
}

TEST_P(FormatReplace, AFailingStepLeavesTheFileAndNothingElse) {
    for (const char* function :
         {"ProDrawingFormatAdd", "ProDwgSheetRegenerate", "ProDwgtableDelete", "ProMdlSave"}) {
        SCOPED_TRACE(function);
        host.State().report.Arm({function, 1, PRO_TK_GENERAL_ERROR});
        Run([](SimDialog& dialog) {
            dialog.Check("ReplaceTables").Choose("SheetScope", L"图幅为").Type("ScopeText", L"A4");
            dialog.Press("ApplyBt");
        });
        host.State().report.DisarmAll();
        EXPECT_EQ(DrawingOf(host, L"BOLT"), nullptr) << "half changed";
        EXPECT_FALSE(HasFile(L"bolt.drw.2"));
        EXPECT_TRUE(HasFile(L"nut.drw.2")) << "the others go on";
        EXPECT_EQ(host.LastMessage(), L"以下工程图未能更换图框，文件未改动：\nbolt");
        host.AnswerFile(formatFile);
    }
    host.ForgetAnswers();
}

TEST_P(FormatReplace, LeavesTheUsersDrawingsToTheUser) {
    SimModel& bolt = *host.Retrieve(L"BOLT", ModelKind::kDrawing);
    SimModel& nut = *host.Retrieve(L"NUT", ModelKind::kDrawing);
    host.Open(bolt);
    nut.SetParameter(L"NOTE", L"changed");
    Run([&](SimDialog& dialog) {
        dialog.Press("KvPlan");
        EXPECT_EQ(dialog.Cell(kDrawingList, "1", "plan"), kUsersPlan);
        EXPECT_EQ(dialog.Cell(kDrawingList, "2", "plan"), kUsersPlan);
        dialog.Press("ApplyBt");
        EXPECT_EQ(nut.Sheets()[0].format, L"");
        dialog.Check("TakeOpen").Press("ApplyBt");
    });
    EXPECT_EQ(bolt.Sheets()[0].format, L"NEW");
    EXPECT_EQ(nut.Sheets()[0].format, L"NEW");
    EXPECT_EQ(bolt.CurrentSheet(), 2);
    EXPECT_FALSE(HasFile(L"bolt.drw.2"));
    EXPECT_FALSE(HasFile(L"nut.drw.2"));
    EXPECT_EQ(host.State().models.current, &bolt);
}

TEST_P(FormatReplace, DrawingsOfOtherFoldersAreNotSavedThere) {
    SimModel& bolt = *host.Retrieve(L"BOLT", ModelKind::kDrawing);
    bolt.directory = test::MakeFolder(host, "elsewhere");
    host.Retrieve(L"NUT", ModelKind::kDrawing);
    Run([](SimDialog& dialog) {
        dialog.Press("KvPlan");
        EXPECT_EQ(dialog.Cell(kDrawingList, "1", "plan"), kUsersPlan);
        dialog.Press("ApplyBt");
    });
    EXPECT_EQ(bolt.Sheets()[0].format, L"OLD_A3");
    EXPECT_TRUE(HasFile(L"nut.drw.2")) << "it was in memory as it is on disk";
    EXPECT_NE(DrawingOf(host, L"NUT"), nullptr) << "and stays there";
}

TEST_P(FormatReplace, TellsWhatIsMissing) {
    host.OnDialog("KvFrmReplace", [&](SimDialog& dialog) {
        dialog.Press("ApplyBt");
        EXPECT_EQ(host.LastMessage(), L"\t请先选择需要更换图框的工程图\t");
        dialog.Press("selAll").Press("KvPlan");
        EXPECT_EQ(host.LastMessage(), L"\t请先选择新图框\t");
        dialog.Press("KvChooseFormat").Choose("SheetScope", L"图幅为").Press("ApplyBt");
        EXPECT_EQ(host.LastMessage(), L"\t请填写原图框名称或图幅\t");
        dialog.Choose("SheetScope", L"所有页").Type("FormatSheet", L"0").Press("ApplyBt");
        EXPECT_EQ(host.LastMessage(), L"\t图框页号必须是大于0的整数，且不超过图框的页数\t");
        dialog.Type("FormatSheet", L"1");
        std::filesystem::remove(formatFile);
        dialog.Press("ApplyBt");
        EXPECT_EQ(host.LastMessage(), L"\t新图框无法打开：\t\n" + formatFile);
    });
    EXPECT_EQ(host.Run("KvFrmReplace"), PRO_TK_NO_ERROR);
    EXPECT_FALSE(HasFile(L"nut.drw.2"));
}

}  // namespace
