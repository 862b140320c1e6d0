// The exports without a table: the current drawing or model, and an assembly with its components.

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>

#include <shlobj.h>

#include "simulator/export/export_file.h"
#include "simulator/host/sim_host.h"
#include "simulator/windows/desktop.h"
#include "support/arrange.h"
#include "support/plugin_home.h"
#include "support/reports.h"

namespace {

namespace fs = std::filesystem;
using sim::ExportRecord;
using sim::Fault;
using sim::HostMode;
using sim::ModelKind;
using sim::SimDialog;
using sim::SimHost;
using sim::SimModel;
using test::ChangeSetting;
using test::Messages;
using test::Texts;

constexpr wchar_t kCommonSettings[] = L"KvConfig.ini";

// ---- The current drawing or model

class SingleExport : public testing::Test {
protected:
    void OpenDrawing(const std::vector<std::wstring>& sheets) {
        host.AddDrawingFile(L"轴", sheets);
        drawing = host.Retrieve(L"轴", ModelKind::kDrawing);
        host.Open(*drawing);
    }
    int SheetIn(const fs::path& file) {
        const std::optional<ExportRecord> record = host.Exported(file);
        return record && record->sheets.size() == 1 ? record->sheets[0].number : 0;
    }

    SimHost host;
    SimModel* drawing = nullptr;
};

TEST_F(SingleExport, WritesEachSheetOfTheDrawingIntoItsOwnFile) {
    OpenDrawing({L"A3", L"A4", L"A2"});
    drawing->SetCurrentSheet(2);
    EXPECT_EQ(host.Run("KvExportDwg"), PRO_TK_NO_ERROR);
    EXPECT_EQ(host.Run("KvExportPdf"), PRO_TK_NO_ERROR);
    EXPECT_EQ(host.ExportedFiles(),
              (Texts{L"轴-1.dwg", L"轴-1.pdf", L"轴-2.dwg", L"轴-2.pdf", L"轴-3.dwg", L"轴-3.pdf"}));
    for (int sheet = 1; sheet <= 3; ++sheet) {
        const std::wstring name = L"轴-" + std::to_wstring(sheet);
        EXPECT_EQ(SheetIn(name + L".dwg"), sheet);
        EXPECT_EQ(SheetIn(name + L".pdf"), sheet);
    }
    EXPECT_EQ(drawing->CurrentSheet(), 2);
    EXPECT_EQ(test::RecordOf(host, L"轴-1.dwg").options["VERSION"], "2000");
    EXPECT_EQ(test::RecordOf(host, L"轴-1.pdf").options["COLOR_DEPTH"], "2");
    EXPECT_EQ(test::RecordOf(host, L"轴-1.pdf").options["FONT_STROKE"], "0");
    EXPECT_EQ(Messages(host), Texts{});
}

TEST_F(SingleExport, NumbersNoSheetOfAOneSheetDrawing) {
    OpenDrawing({L"A3"});
    host.Run("KvExportDwg");
    host.Run("KvExportPdf");
    EXPECT_EQ(host.ExportedFiles(), (Texts{L"轴.dwg", L"轴.pdf"}));
}

TEST_F(SingleExport, GoesWhereTheSettingsSay) {
    OpenDrawing({L"A3"});
    const fs::path folder = test::MakeFolder(host, L"输出 1");
    struct Case {
        const char* command;
        const wchar_t* section;
        const wchar_t* title;
        const wchar_t* file;
    };
    const Case cases[] = {
        {"KvExportDwg", L"KvExportDwgDIr", L"请选择DWG文件导出位置", L"轴.dwg"},
        {"KvExportPdf", L"KvExportPdfDIr", L"请选择DWG文件导出位置", L"轴.pdf"},
        {"KvExportStp", L"KvExportStpDir", L"请选择STP文件导出位置", L"AXLE.stp"},
    };
    SimModel& axle = host.AddPart(L"AXLE");
    for (const Case& one : cases) {
        SCOPED_TRACE(one.command);
        if (one.command == std::string("KvExportStp")) host.Open(axle);
        ChangeSetting(kCommonSettings, one.section, L"value", L"byUser");
        host.AnswerFolder(std::nullopt);
        host.Run(one.command);
        EXPECT_TRUE(host.ExportedFiles().empty());
        EXPECT_EQ(host.State().user.questions.back(), one.title);
        host.AnswerFolder(folder.wstring());
        host.Run(one.command);
        EXPECT_EQ(host.ExportedFiles(), Texts{(fs::path(L"输出 1") / one.file).wstring()});
        fs::remove(folder / one.file);
        // Only the exact spelling means the desktop.
        ChangeSetting(kCommonSettings, one.section, L"value", L"desktop");
        host.Run(one.command);
        EXPECT_EQ(host.ExportedFiles(), Texts{one.file});
        fs::remove(host.WorkingDirectory() / one.file);
    }
    EXPECT_EQ(Messages(host), Texts{});
}

TEST_F(SingleExport, GoesToTheDesktop) {
    wchar_t desktop[MAX_PATH] = {};
    ASSERT_TRUE(SHGetSpecialFolderPathW(nullptr, desktop, CSIDL_DESKTOPDIRECTORY, TRUE));
    const std::wstring name = L"KV_TEST_" + std::to_wstring(GetCurrentProcessId());
    host.Open(host.AddPart(name));
    ChangeSetting(kCommonSettings, L"KvExportStpDir", L"value", L"deskTop");
    EXPECT_EQ(host.Run("KvExportStp"), PRO_TK_NO_ERROR);
    const fs::path file = fs::path(desktop) / (name + L".stp");
    EXPECT_TRUE(sim::ReadExport(file));
    fs::remove(file);
    EXPECT_TRUE(host.ExportedFiles().empty());
}

TEST_F(SingleExport, LeavesTheUsersTemporaryFileAlone) {
    OpenDrawing({L"A3", L"A4"});
    for (const char* name : {"temp.pdf", "temp1.pdf"})
        test::WriteBytes(host.WorkingDirectory() / name, "mine");
    host.Run("KvExportPdf");
    for (const char* name : {"temp.pdf", "temp1.pdf"})
        EXPECT_EQ(test::ReadBytes(host.WorkingDirectory() / name), "mine");
    EXPECT_EQ(host.ExportedFiles(), (Texts{L"轴-1.pdf", L"轴-2.pdf"}));

    // The second sheet cannot leave the temporary file, which goes all the same.
    test::WriteBytes(host.WorkingDirectory() / L"轴-2.pdf", "earlier");
    ASSERT_TRUE(sim::FailWindowsCall("MoveFileExW", 3, ERROR_ACCESS_DENIED));
    host.Run("KvExportPdf");
    sim::HealWindowsCalls();
    EXPECT_EQ(host.ExportedFiles(), Texts{L"轴-1.pdf"});
    EXPECT_EQ(test::ReadBytes(host.WorkingDirectory() / L"轴-2.pdf"), "earlier");
    EXPECT_FALSE(fs::exists(host.WorkingDirectory() / "temp2.pdf"));
    EXPECT_EQ(Messages(host), Texts{L"以下文件未能导出：\n轴-2.pdf"});
}

TEST_F(SingleExport, WritesTheModelAndSaysSo) {
    SimModel& mould = host.AddAssembly(L"MOULD");
    host.Open(host.AddManufacturing(L"MFG", mould));
    EXPECT_EQ(host.Run("KvExportStp"), PRO_TK_NO_ERROR);
    EXPECT_EQ(host.ExportedFiles(), Texts{L"MOULD.stp"});
    EXPECT_EQ(test::RecordOf(host, "MOULD.stp").format, "STEP");
    ASSERT_EQ(host.State().user.messageArea.size(), 1u);
    EXPECT_EQ(host.State().user.messageArea[0], L"STP模型已导出");

    host.State().disk.bytesLeft = 3;
    EXPECT_NE(host.Run("KvExportStp"), PRO_TK_NO_ERROR);
    EXPECT_EQ(host.ExportedFiles(), Texts{L"MOULD.stp"});
    EXPECT_EQ(host.State().user.messageArea.size(), 1u);
    EXPECT_EQ(Messages(host), Texts{L"以下文件未能导出：\nMOULD.stp"});
}

TEST_F(SingleExport, LeavesFoldersOfTheNameThatItUsesAlone) {
    const std::wstring name = L"~kv" + std::to_wstring(GetCurrentProcessId());
    const fs::path folder = test::MakeFolder(host, name);
    test::WriteBytes(folder / "mine.txt", "mine");
    host.Open(host.AddPart(L"=AXLE"));
    EXPECT_EQ(host.Run("KvExportStp"), PRO_TK_NO_ERROR);
    EXPECT_EQ(host.ExportedFiles(), Texts{L"=AXLE.stp"});
    EXPECT_EQ(test::ReadBytes(folder / "mine.txt"), "mine");
    EXPECT_EQ(test::LastReport(host).Done(L"文件"), Texts{L"'=AXLE.stp"}) << "no formula for a spreadsheet";
}

// ---- An assembly with its components

struct Family {
    std::string command;
    std::string format;
    std::wstring extension;
    std::wstring title;
    std::wstring done;
    std::wstring refusal;
};

class AssemblyExport : public testing::TestWithParam<Family> {
protected:
    AssemblyExport() : folder(test::MakeFolder(host, L"输出")) {
        sub.Place(bolt, 2);
        pump.Place(sub, 2).Place(bolt).Place(host.AddPart(L"SPARE"), {.status = 5});
    }
    // Runs the command; KvExIgs is run from its dialog.
    void Export() {
        if (GetParam().command == "KvExIgs")
            host.OnDialog("KvExIgs", [](SimDialog& dialog) {
                dialog.Check("datumsCheck").Check("facettedCheck").Press("KvExIgsAct");
            });
        host.Run(GetParam().command);
    }
    Texts Files(const std::vector<std::wstring>& names) {
        Texts files;
        for (const std::wstring& name : names) files.push_back(L"输出\\" + name + GetParam().extension);
        return files;
    }

    SimHost host;
    fs::path folder;
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& sub = host.AddAssembly(L"SUB");
    SimModel& bolt = host.AddPart(L"BOLT");
};

TEST_P(AssemblyExport, WritesEveryModelOnce) {
    host.Open(host.AddManufacturing(L"MFG", pump));
    host.AnswerFolder(folder.wstring());
    Export();
    EXPECT_EQ(host.ExportedFiles(), Files({L"BOLT", L"PUMP", L"SUB"}));
    EXPECT_EQ(host.Calls("ProOutputFileMdlnameWrite") + host.Calls("ProIntf3DFileWrite"), 3);
    const ExportRecord record = test::RecordOf(host, Files({L"BOLT"})[0]);
    EXPECT_EQ(record.format, GetParam().format);
    EXPECT_EQ(record.model, L"BOLT.prt");
    EXPECT_EQ(host.State().user.questions, Texts{GetParam().title});
    EXPECT_EQ(Messages(host), Texts{GetParam().done});
}

TEST_P(AssemblyExport, WritesOneOfAPartAndAnAssemblyOfOneNameAndNamesTheOther) {
    pump.Place(host.AddPart(L"SUB"));
    host.Open(pump);
    host.AnswerFolder(folder.wstring());
    Export();
    EXPECT_EQ(host.ExportedFiles(), Files({L"BOLT", L"PUMP", L"SUB"}));
    EXPECT_EQ(Messages(host), (Texts{L"以下模型未能导出：\nSUB" + GetParam().extension, GetParam().done}));
}

TEST_P(AssemblyExport, NamesTheModelsThatFail) {
    test::WriteBytes(folder / (L"BOLT" + GetParam().extension), "earlier");
    host.Open(pump);
    host.State().disk.bytesLeft = 2;
    host.AnswerFolder(folder.wstring());
    Export();
    EXPECT_EQ(test::ReadBytes(folder / (L"BOLT" + GetParam().extension)), "earlier");
    ASSERT_EQ(Messages(host).size(), 2u);
    EXPECT_EQ(host.LastMessage(), GetParam().done);
    EXPECT_NE(Messages(host)[0].find(L"\nPUMP" + GetParam().extension), std::wstring::npos);
}

TEST_P(AssemblyExport, WritesNothingWhereTheHostStaysInItsDirectory) {
    host.Open(pump);
    host.AnswerFolder(folder.wstring());
    host.State().report.Arm(Fault{"ProDirectoryChange", 1});
    Export();
    EXPECT_EQ(host.ExportedFiles(), Texts());
    EXPECT_EQ(Messages(host).size(), 2u);
}

// What stayed in the scratch folder does not come with the next file.
TEST_P(AssemblyExport, LeavesOutAFileThatCannotTakeItsPlace) {
    host.Open(pump);
    host.AnswerFolder(folder.wstring());
    ASSERT_TRUE(sim::FailWindowsCall("MoveFileExW", 1, ERROR_ACCESS_DENIED));
    Export();
    EXPECT_EQ(host.ExportedFiles().size(), 2u);
    EXPECT_TRUE(Messages(host)[0].starts_with(L"以下模型未能导出：\n"));
}

TEST_P(AssemblyExport, RefusesAPartAndEndsQuietlyWithoutAFolder) {
    host.Open(bolt, HostMode::kAssembly);
    host.Run(GetParam().command);
    EXPECT_EQ(Messages(host), Texts{GetParam().refusal});
    host.Open(pump);
    host.AnswerFolder(std::nullopt);
    Export();
    EXPECT_EQ(Messages(host).size(), 1u);
    EXPECT_TRUE(fs::is_empty(folder));
}

INSTANTIATE_TEST_SUITE_P(
    Commands, AssemblyExport,
    testing::Values(Family{"KvExStp", "STEP", L".stp", L"请选择stp导出目录", L"\tstp批量导出操作已完成\t",
                           L"此功能仅组件/制造环境可用！"},
                    Family{"KvExSat", "STEP", L".sat", L"请选择sat文件导出目录",
                           L"\t批量导出为sat操作已完成\t", L"此功能仅组件/模具环境可用！"},
                    Family{"KvExIgs", "IGES", L".igs", L"请选择igs导出目录", L"\tIGS批量导出操作已完成\t",
                           L"此功能仅组件/制造环境可用！"}),
    [](const auto& family) { return family.param.command; });

TEST(KvExIgs, AsksForWhatTheBoxesSay) {
    SimHost host;
    host.Open(host.AddAssembly(L"PUMP"));
    host.AnswerFolder(host.WorkingDirectory().wstring());
    host.OnDialog("KvExIgs",
                  [](SimDialog& dialog) { dialog.Check("blankedCheck").Press("KvExIgsAct").Press("Close"); });
    EXPECT_EQ(host.Run("KvExIgs"), PRO_TK_NO_ERROR);
    const ExportRecord record = test::RecordOf(host, "PUMP.igs");
    const std::map<std::string, std::string> expected = {
        {"ASSEMBLY", "2"}, {"BLANKED", "yes"}, {"DATUMS", "no"}, {"FACETTED", "no"}, {"LAYER_IDS", "yes"}};
    EXPECT_EQ(record.options, expected);
}

}  // namespace
