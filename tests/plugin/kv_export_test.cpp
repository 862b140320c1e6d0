// KvExport: many drawings, each to any of five formats.

#include <algorithm>
#include <filesystem>
#include <functional>
#include <iterator>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>

#include "simulator/host/sim_host.h"
#include "simulator/windows/desktop.h"
#include "support/arrange.h"
#include "support/plugin_home.h"
#include "support/reports.h"

namespace {

namespace fs = std::filesystem;
using sim::ExportRecord;
using sim::Fault;
using sim::ModelKind;
using sim::SimDialog;
using sim::SimHost;
using sim::SimModel;
using test::ChangeSetting;
using test::Messages;
using test::Texts;

constexpr wchar_t kFile[] = L"KvDrawingsIni.ini";
constexpr wchar_t kDone[] = L"\t工程图批量导出已完成\t";
constexpr wchar_t kNothingSelected[] = L"\t\t请先选择需要导出的工程图\t\t";

const std::vector<std::string> kFormats = {"DWGCheck", "DXFCheck", "PDFCheck", "STPCheck", "IGSCheck"};

// "3m 1p 2p": the sheets of an export and where they went.
std::string Sheets(const std::optional<ExportRecord>& record) {
    if (!record) return "no file";
    std::string text;
    for (const sim::ExportedSheet& sheet : record->sheets)
        text += (text.empty() ? "" : " ") + std::to_string(sheet.number) + sheet.space.substr(0, 1);
    return text;
}

class KvExport : public testing::Test {
protected:
    KvExport() { host.Store(bolt); }

    // Ticks these formats and no other.
    static void Tick(SimDialog& dialog, const std::vector<std::string>& formats) {
        for (const std::string& format : kFormats)
            dialog.Check(format, std::find(formats.begin(), formats.end(), format) != formats.end());
    }
    void Use(const std::function<void(SimDialog&)>& script) {
        host.OnDialog("KvExport", script);
        EXPECT_EQ(host.Run("KvExport"), PRO_TK_NO_ERROR);
    }
    // Exports every drawing of the table.
    void ExportAll(const std::vector<std::string>& formats, bool oneFile = false, bool profile = false) {
        Use([&](SimDialog& dialog) {
            Tick(dialog, formats);
            dialog.Check("MultiSheetCheck", oneFile).Check("PDFOptionCheck", profile);
            dialog.Type("Export_name", tokens).Type("separator", separator);
            dialog.Press("selAll").Press("ApplyBt");
        });
    }
    Texts TableNames(const SimDialog& dialog) {
        Texts names;
        for (const std::string& row : dialog.Rows("drw_list"))
            names.push_back(dialog.Cell("drw_list", row, "drw_name"));
        std::sort(names.begin(), names.end());
        return names;
    }
    // What failed is told just before the end is.
    Texts LastTwo() {
        const Texts all = Messages(host);
        return all.size() < 2 ? all : Texts(all.end() - 2, all.end());
    }
    SimModel& Bolt() { return *host.Retrieve(L"BOLT", ModelKind::kPart); }
    fs::path Output(const fs::path& file) { return host.WorkingDirectory() / file; }

    SimHost host;
    SimModel& bolt = host.AddPart(L"BOLT");
    std::wstring tokens = L"图纸名称";
    std::wstring separator = L"_";
};

// ---- Files and sheets

TEST_F(KvExport, WritesAFileForEachSheet) {
    host.AddDrawingFile(L"BOLT", {L"A3", L"A4", L"A2"}, {&Bolt()});
    host.AddDrawingFile(L"ONE", {L"A1"}, {&Bolt()});
    host.Open(host.AddPart(L"OTHER"));
    ExportAll(kFormats);
    EXPECT_EQ(host.ExportedFiles(),
              (Texts{L"DWG\\BOLT-1.dwg", L"DWG\\BOLT-2.dwg", L"DWG\\BOLT-3.dwg", L"DWG\\ONE.dwg",
                     L"DXF\\BOLT-1.dxf", L"DXF\\BOLT-2.dxf", L"DXF\\BOLT-3.dxf", L"DXF\\ONE.dxf",
                     L"IGS\\BOLT.igs", L"IGS\\ONE.igs", L"PDF\\BOLT-1.pdf", L"PDF\\BOLT-2.pdf",
                     L"PDF\\BOLT-3.pdf", L"PDF\\ONE.pdf", L"STP\\BOLT.stp", L"STP\\ONE.stp"}));
    for (const char sheet : {'1', '2', '3'}) {
        const std::string name = std::string("BOLT-") + sheet;
        EXPECT_EQ(Sheets(host.Exported("DWG/" + name + ".dwg")), std::string(1, sheet) + "m");
        EXPECT_EQ(Sheets(host.Exported("DXF/" + name + ".dxf")), std::string(1, sheet) + "m");
        EXPECT_EQ(Sheets(host.Exported("PDF/" + name + ".pdf")), std::string(1, sheet));
    }
    EXPECT_EQ(test::RecordOf(host, "DXF/ONE.dxf").format, "DXF");
    EXPECT_EQ(test::RecordOf(host, "STP/ONE.stp").format, "STEP");
    EXPECT_EQ(test::RecordOf(host, "IGS/ONE.igs").format, "IGES");
    EXPECT_EQ(test::RecordOf(host, "IGS/ONE.igs").model, L"BOLT.prt");
    EXPECT_EQ(Messages(host), Texts{kDone});
    EXPECT_EQ(host.State().models.current->Name(), L"OTHER");

    EXPECT_EQ(host.Calls("ProMdlnameRetrieve"), 2);
    EXPECT_EQ(host.Calls("ProObjectwindowMdlnameCreate"), 2);
    EXPECT_EQ(host.Calls("ProFilesList"), 2);
}

TEST_F(KvExport, PutsAllSheetsIntoOneFile) {
    host.AddDrawingFile(L"BOLT", {L"A3", L"A4", L"A2"}, {&Bolt()});
    ExportAll({"DWGCheck", "DXFCheck", "PDFCheck"}, true);
    EXPECT_EQ(host.ExportedFiles(), (Texts{L"DWG\\BOLT.dwg", L"DXF\\BOLT.dxf", L"PDF\\BOLT.pdf"}));
    EXPECT_EQ(Sheets(host.Exported("DWG/BOLT.dwg")), "3m 1p 2p");
    EXPECT_EQ(Sheets(host.Exported("DXF/BOLT.dxf")), "3m 1p 2p");
    EXPECT_EQ(Sheets(host.Exported("PDF/BOLT.pdf")), "1 2 3");
}

// One file is named by the current sheet; a size that cannot be read is left out of its file's name.
TEST_F(KvExport, NamesFilesByTheirSheetsSize) {
    host.AddDrawingFile(L"BOLT", {L"A3", L"A4", L"A2"}, {&Bolt()});
    host.Open(*host.Retrieve(L"BOLT", ModelKind::kDrawing));
    host.State().models.current->SetCurrentSheet(2);
    tokens = L"sheetsize,图纸名称";
    ExportAll({"DWGCheck"}, true);
    EXPECT_EQ(host.ExportedFiles(), Texts{L"DWG\\A4_BOLT.dwg"});
    EXPECT_EQ(host.Calls("ProObjectwindowMdlnameCreate"), 0);
    fs::remove_all(Output("DWG"));
    host.State().report.Arm(Fault{"ProDrawingSheetTrfGet", 2});
    ExportAll({"DWGCheck"});
    EXPECT_EQ(host.ExportedFiles(),
              (Texts{L"DWG\\A2_BOLT-3.dwg", L"DWG\\A3_BOLT-1.dwg", L"DWG\\BOLT-2.dwg"}));
    EXPECT_EQ(host.Calls("ProObjectwindowMdlnameCreate"), 1) << "sheets are turned in a window";

    // Without a window no PDF can be right.
    host.State().report.Arm(Fault{"ProObjectwindowMdlnameCreate", 1});
    ExportAll({"PDFCheck"}, true);
    EXPECT_EQ(host.ExportedFiles().size(), 3u);
    EXPECT_EQ(LastTwo(), (Texts{L"以下工程图或文件未能导出：\nA4_BOLT.pdf", kDone}));
}

// There are hosts that have the choice of sheets under another number.
TEST_F(KvExport, ChoosesTheSheetOfAPdfEitherWay) {
    host.AddDrawingFile(L"BOLT", {L"A3", L"A4"}, {&Bolt()});
    host.State().strict.pdfSheetRangeIsText = true;
    ExportAll({"PDFCheck"});
    EXPECT_EQ(Sheets(host.Exported("PDF/BOLT-1.pdf")), "1");
    EXPECT_EQ(Sheets(host.Exported("PDF/BOLT-2.pdf")), "2");
}

TEST_F(KvExport, WritesNoPdfWithHalfItsOptions) {
    for (const wchar_t* name : {L"BOLT", L"NUT"}) host.AddDrawingFile(name, {L"A3"}, {&Bolt()});
    host.State().report.Arm(Fault{"ProPDFoptionsBoolpropertySet", 1});
    ExportAll({"PDFCheck"});
    ASSERT_EQ(host.ExportedFiles().size(), 1u);
    const auto record = host.Exported(host.ExportedFiles()[0]);
    ASSERT_TRUE(record);
    EXPECT_EQ(record->options.count("PENTABLE"), 1u);
}

TEST_F(KvExport, ExportsTheModelOfTheFirstViewOrNone) {
    SimModel& nut = host.AddPart(L"NUT");
    host.Store(host.AddDrawing(L"LOST", {L"A4"}).AddMissingView(L"gone.prt", 1).AddView(Bolt(), 1));
    host.Store(host.AddDrawing(L"TWO", {L"A4"}).AddView(nut, 1).AddView(Bolt(), 1));
    SimModel& sheetless = host.AddDrawing(L"SHEETLESS", {L"A4"}).AddView(nut, 1);
    host.Store(sheetless);
    host.Open(*host.Retrieve(L"SHEETLESS", ModelKind::kDrawing));
    host.State().models.current->SetCurrentSheet(0);
    ExportAll({"STPCheck"});
    ASSERT_EQ(host.ExportedFiles(), Texts{L"STP\\TWO.stp"});
    EXPECT_EQ(test::RecordOf(host, "STP/TWO.stp").model, L"NUT.prt");
    EXPECT_NE(LastTwo().front().find(L"LOST.stp"), std::wstring::npos);
    EXPECT_NE(LastTwo().front().find(L"sheetless"), std::wstring::npos);
}

TEST_F(KvExport, TakesWhatAnExportLeavesBesideItsFile) {
    host.AddDrawingFile(L"BOLT", {L"A3"}, {&Bolt()});
    host.AddDrawingFile(L"NUT", {L"A3"}, {&Bolt()});
    host.State().strict.exportsLeaveLog = true;
    ExportAll({"DWGCheck", "STPCheck"});
    const auto count = [this](const char* folder) {
        return std::distance(fs::directory_iterator(Output(folder)), fs::directory_iterator());
    };
    EXPECT_EQ(host.ExportedFiles().size(), 4u);
    EXPECT_EQ(count("DWG"), 2) << "logs of a name of our own";
    EXPECT_EQ(count("STP"), 4);
}

TEST_F(KvExport, SetsTheDwgVersionOnlyWhereThereIsNone) {
    host.AddDrawingFile(L"BOLT", {L"A3"});
    ExportAll({"PDFCheck"});
    EXPECT_FALSE(host.State().configOptions.contains(L"DWG_EXPORT_FORMAT"));
    ExportAll({"DXFCheck"});
    EXPECT_EQ(host.State().configOptions[L"DWG_EXPORT_FORMAT"], Texts{L"2000"});
    host.State().configOptions[L"DWG_EXPORT_FORMAT"] = {L"2013"};
    ExportAll({"DWGCheck"});
    EXPECT_EQ(test::RecordOf(host, "DWG/BOLT.dwg").options["VERSION"], "2013");
}

TEST_F(KvExport, AsksForPdfFilesAsTheBoxesSay) {
    host.AddDrawingFile(L"BOLT", {L"A3"});
    for (const bool black : {true, false}) {
        Use([&](SimDialog& dialog) {
            Tick(dialog, {"PDFCheck"});
            dialog.Check("PDFBlackCheck", black).Check("PDFOptionCheck", false);
            dialog.Press("selAll").Press("ApplyBt");
        });
        const ExportRecord record = test::RecordOf(host, "PDF/BOLT.pdf");
        EXPECT_EQ(record.options.contains("COLOR_DEPTH") ? record.options.at("COLOR_DEPTH") : "unset",
                  black ? "2" : "unset");
        EXPECT_EQ(record.options.at("FONT_STROKE"), "0");
        EXPECT_EQ(record.options.at("PENTABLE"), "1");
    }
    EXPECT_TRUE(host.State().user.started.empty()) << "a viewer was started";
}

TEST_F(KvExport, BorrowsTheProfileForTheRun) {
    host.AddDrawingFile(L"BOLT", {L"A3", L"A4"});
    test::WriteBytes(test::SettingsFile(L"kvdop.dop"), "COLOR MONO");
    ExportAll({"PDFCheck"}, true, true);
    ASSERT_TRUE(host.Exported("PDF/BOLT.pdf"));
    EXPECT_EQ(test::RecordOf(host, "PDF/BOLT.pdf").options["PROFILE"], "kvdop.dop");
    EXPECT_FALSE(fs::exists(Output("kvdop.dop")));

    test::WriteBytes(Output("kvdop.dop"), "SHEETS CURRENT");
    ExportAll({"PDFCheck"}, true, true);
    EXPECT_EQ(Sheets(host.Exported("PDF/BOLT.pdf")), "1");
    EXPECT_EQ(test::ReadBytes(Output("kvdop.dop")), "SHEETS CURRENT") << "the user's own";
    fs::remove(test::SettingsFile(L"kvdop.dop"));
    ExportAll({"PDFCheck"}, true, true);
    EXPECT_EQ(Messages(host), (Texts{kDone, kDone, kDone})) << "the user's own is enough";
    fs::remove(Output("kvdop.dop"));

    // A copy of a read-only profile can be deleted all the same.
    const fs::path readOnly = test::SettingsFile(L"kvdop.dop");
    test::WriteBytes(readOnly, "COLOR MONO");
    ASSERT_TRUE(SetFileAttributesW(readOnly.c_str(), FILE_ATTRIBUTE_READONLY));
    ExportAll({"PDFCheck"}, true, true);
    SetFileAttributesW(readOnly.c_str(), FILE_ATTRIBUTE_NORMAL);
    EXPECT_FALSE(fs::exists(Output("kvdop.dop")));
}

TEST_F(KvExport, TellsThatThereIsNoProfileAndWritesTheOtherFormats) {
    host.AddDrawingFile(L"BOLT", {L"A3"});
    ExportAll({"PDFCheck", "DWGCheck"}, true, true);
    EXPECT_EQ(host.ExportedFiles(), Texts{L"DWG\\BOLT.dwg"});
    ASSERT_EQ(Messages(host).size(), 2u);
    EXPECT_TRUE(Messages(host)[0].starts_with(L"\t未找到PDF打印配置文件 kvdop.dop"));
    EXPECT_EQ(Messages(host)[1], kDone);

    ExportAll({"PDFCheck"}, true, true);
    EXPECT_EQ(Messages(host).size(), 3u) << "nothing was done, and nothing is called done";
}

// ---- Names

TEST_F(KvExport, ComposesNamesFromTheDrawing) {
    SimModel& drawing = host.AddDrawing(L"BOLT", {L"A3", L"A4"});
    drawing.SetParameter(L"图号", std::wstring(L"K/7")).SetParameter(L"REV", 4).SetParameter(L"MASS", 2.5);
    drawing.SetParameter(L"OK", true).SetParameter(L"OLD", false);
    host.Store(drawing);
    tokens = L"图号，sheetsize, rev,MASS ,OK,OLD,NOT THERE,图纸名称";
    ExportAll({"DWGCheck"});
    EXPECT_EQ(host.ExportedFiles(),
              (Texts{L"DWG\\K_7_A3_4_2.500_是_否_BOLT-1.dwg", L"DWG\\K_7_A4_4_2.500_是_否_BOLT-2.dwg"}));
}

TEST_F(KvExport, NeverLetsTwoFilesOfARunTakeOnePlace) {
    for (const wchar_t* name : {L"FLANGE", L"RING"})
        host.Store(host.AddDrawing(name, {L"A4"}).SetParameter(L"NO", std::wstring(L"k-7")));
    tokens = L"NO";
    ExportAll({"DWGCheck"});
    EXPECT_EQ(host.ExportedFiles(), Texts{L"DWG\\k-7.dwg"});
    EXPECT_EQ(LastTwo(), (Texts{L"以下工程图或文件未能导出：\nk-7.dwg", kDone}));
    const test::Report report = test::LastReport(host);
    EXPECT_EQ(report.Count(L"完成"), 1u);
    EXPECT_EQ(report.Count(L"失败"), 1u);
    for (const auto& row : report.rows) EXPECT_EQ(row.at(L"替换"), L"");

    // What an earlier run wrote is replaced, and the report says so.
    ExportAll({"DWGCheck"});
    const test::Report again = test::LastReport(host);
    ASSERT_EQ(again.rows.size(), 2u);
    EXPECT_EQ(again.rows[0].at(L"替换") + again.rows[1].at(L"替换"), L"是");
}

TEST_F(KvExport, TakesLongNamesAndLongLists) {
    const std::wstring longest(31, L'图');
    SimModel& drawing = host.AddDrawing(longest, {L"A3"});
    drawing.SetParameter(L"P", std::wstring(80, L'x'));
    host.Store(drawing);
    tokens.clear();
    for (int i = 0; i < 50; ++i) tokens += L"图号12,";
    tokens.resize(254, L',');
    ExportAll(kFormats);
    EXPECT_EQ(host.ExportedFiles(), (Texts{L"DWG\\" + longest + L".dwg", L"DXF\\" + longest + L".dxf",
                                           L"PDF\\" + longest + L".pdf"}));
    // A name that no path has room for.
    tokens = L"P,P,P,P";
    ExportAll({"PDFCheck"});
    EXPECT_EQ(host.ExportedFiles().size(), 3u);
    EXPECT_EQ(LastTwo().front(), L"以下工程图或文件未能导出：\n" + std::wstring(80, L'x') + L"_" +
                                     std::wstring(80, L'x') + L"_" + std::wstring(80, L'x') + L"_" +
                                     std::wstring(80, L'x') + L".pdf");
    EXPECT_EQ(test::LastReport(host).Reason(longest), L"名称、文字或路径过长");
}

TEST_F(KvExport, SaysSoWhenTheWorkingDirectoryIsTooDeep) {
    const std::size_t room = 250 - host.WorkingDirectory().wstring().size();
    test::EnterFolder(host, std::wstring((room - 2) / 2, L'a') + L"\\" + std::wstring((room - 1) / 2, L'b'));
    ASSERT_EQ(test::PathText(host.WorkingDirectory()).size(), 250u);
    host.Store(host.AddPart(L"N"));
    host.AddDrawingFile(L"N", {L"A3"});
    ExportAll(kFormats);
    EXPECT_EQ(host.ExportedFiles(), Texts{});
    ASSERT_EQ(Messages(host).size(), 2u);
    EXPECT_EQ(host.LastMessage(), kDone);
    EXPECT_NE(Messages(host)[0].find(L"N.pdf"), std::wstring::npos);
}

// ---- Table and settings

TEST_F(KvExport, ListsAndSelectsDrawings) {
    SimModel& pump = host.AddAssembly(L"pump");
    SimModel& sub = host.AddAssembly(L"SUB");
    sub.Place(Bolt());
    pump.Place(sub);
    for (const wchar_t* name : {L"BOLT", L"PUMP", L"NUT", L"SUB"}) host.AddDrawingFile(name, {L"A4"});
    host.Open(pump);
    Use([&](SimDialog& dialog) {
        EXPECT_EQ(TableNames(dialog), (Texts{L"bolt", L"nut", L"pump", L"sub"}));
        EXPECT_EQ(dialog.Cell("drw_list", "4", "num"), L"4");
        dialog.SelectRows("drw_list", {"2"}).Press("reverseSel");
        EXPECT_EQ(dialog.SelectedRows("drw_list"), (std::vector<std::string>{"1", "3", "4"}));
        dialog.Press("selAll");
        EXPECT_EQ(dialog.SelectedRows("drw_list").size(), 4u);
        dialog.Press("reverseSel");
        EXPECT_TRUE(dialog.SelectedRows("drw_list").empty());

        dialog.Choose("SelDirRadio", L"curMdl");
        EXPECT_EQ(TableNames(dialog), (Texts{L"bolt", L"pump", L"sub"}));
        dialog.Choose("SelDirRadio", L"workDir");
        EXPECT_EQ(TableNames(dialog).size(), 4u);
    });
    EXPECT_EQ(Messages(host), Texts{});
}

TEST_F(KvExport, ListsTheDrawingsOfAPartOrManufacturingModelAndOfNothingElse) {
    host.AddDrawingFile(L"BOLT", {L"A4"});
    host.AddDrawingFile(L"NUT", {L"A4"});
    SimModel& mould = host.AddAssembly(L"MOULD").Place(Bolt());
    SimModel& manufacturing = host.AddManufacturing(L"MFG", mould);
    for (SimModel* model : {&Bolt(), &manufacturing}) {
        host.Open(*model);
        Use([&](SimDialog& dialog) {
            dialog.Choose("SelDirRadio", L"curMdl");
            EXPECT_EQ(TableNames(dialog), Texts{L"bolt"});
        });
    }
    host.Open(*host.Retrieve(L"NUT", ModelKind::kDrawing));
    Use([&](SimDialog& dialog) {
        dialog.Choose("SelDirRadio", L"curMdl");
        EXPECT_EQ(TableNames(dialog).size(), 2u);
        EXPECT_EQ(dialog.Chosen("SelDirRadio"), "workDir");
    });
    EXPECT_EQ(Messages(host), Texts{L"当前模型不是组件/制造或零件，无法获取工程图"});
}

TEST_F(KvExport, LoadsParametersAndSheets) {
    SimModel& drawing = host.AddDrawing(L"BOLT", {L"A3", L"A4"});
    host.Store(drawing.SetParameter(L"图号", std::wstring(L"K-7")).SetParameter(L"REV", 4));
    test::WriteBytes(Output("EMPTY.drw.1"), "");
    ChangeSetting(kFile, L"tableCols", L"content", L"图号, REV");
    Use([&](SimDialog& dialog) {
        EXPECT_EQ(dialog.ColumnTitles("drw_list"),
                  (Texts{L"序号", L"工程图名称", L"图号", L"REV", L"页数", L"图幅"}));
        const std::string row = dialog.Cell("drw_list", "1", "drw_name") == L"bolt" ? "1" : "2";
        dialog.Press("KvLoadParams").Press("KvLoadDrwInfo");
        EXPECT_EQ(dialog.Cell("drw_list", row, "param_1"), L"K-7");
        EXPECT_EQ(dialog.Cell("drw_list", row, "param_2"), L"4");
        EXPECT_EQ(dialog.Cell("drw_list", row, "sheets"), L"2");
        EXPECT_EQ(dialog.Cell("drw_list", row, "sheet_size"), L"A3,A4");
        const std::string damaged = row == "1" ? "2" : "1";
        EXPECT_EQ(dialog.Cell("drw_list", damaged, "param_1"), L"无法读取");
        EXPECT_EQ(dialog.Cell("drw_list", damaged, "sheets"), L"无法读取");
        EXPECT_EQ(host.State().user.messageArea.back(), L"工程图：完成 1，失败 1");
        EXPECT_EQ(host.State().report.CallCount("ProMdlEraseNotDisplayed"), 0);

        ChangeSetting(kFile, L"tableCols", L"content", L"REV");
        ChangeSetting(kFile, L"drwNames", L"content", L"REV,图号");
        ChangeSetting(kFile, L"Separator", L"content", L"NULL");
        ChangeSetting(kFile, L"DXFCheck", L"value", L"1");
        const std::string before = test::ReadBytes(test::SettingsFile(kFile));
        dialog.Press("KvUpdateIni").Press("KvLoadParams");
        EXPECT_EQ(dialog.ColumnTitles("drw_list"), (Texts{L"序号", L"工程图名称", L"REV", L"页数", L"图幅"}));
        EXPECT_EQ(dialog.Cell("drw_list", row, "param_1"), L"4");
        EXPECT_EQ(dialog.Text("Export_name"), L"REV,图号");
        EXPECT_EQ(dialog.Text("separator"), L"NULL");
        EXPECT_FALSE(dialog.IsChecked("DXFCheck"));
        EXPECT_EQ(test::ReadBytes(test::SettingsFile(kFile)), before);
        dialog.Press("KvOpenDrwIni").Press("Close");
        EXPECT_FALSE(dialog.IsOpen());
    });
    ASSERT_EQ(host.State().user.started.size(), 1u);
    EXPECT_EQ(host.State().user.started[0].file, L"notepad.exe " + test::SettingsFile(kFile).wstring());
}

TEST_F(KvExport, RestoresTheBoxesExceptTheOneForPdf) {
    host.AddDrawingFile(L"BOLT", {L"A3"});
    const std::vector<std::string> boxes = {"DWGCheck",       "DXFCheck",      "STPCheck",       "IGSCheck",
                                            "PDFOptionCheck", "PDFBlackCheck", "MultiSheetCheck"};
    for (const wchar_t* value : {L"1", L"0"}) {
        for (const std::string& box : boxes)
            ChangeSetting(kFile, std::wstring(box.begin(), box.end()), L"value", value);
        for (const wchar_t* section : {L"PDFCheck", L"PDFCheck]"})
            ChangeSetting(kFile, section, L"value", value);
        Use([&](SimDialog& dialog) {
            for (const std::string& box : boxes) EXPECT_EQ(dialog.IsChecked(box), value[0] == L'1') << box;
            EXPECT_TRUE(dialog.IsChecked("PDFCheck"));
        });
    }
    // Anything else leaves the layout's state.
    ChangeSetting(kFile, L"DWGCheck", L"value", L"yes");
    Use([&](SimDialog& dialog) { EXPECT_FALSE(dialog.IsChecked("DWGCheck")); });
}

// ---- Long runs and other people's windows

TEST_F(KvExport, ErasesWhatIsNotShownAfterEveryThirtiethDrawing) {
    for (int i = 1; i <= 61; ++i) host.AddDrawingFile(L"D" + std::to_wstring(i), {L"A4"});
    host.Open(host.AddPart(L"OTHER"));
    ExportAll({"DWGCheck"});
    EXPECT_EQ(host.Calls("ProMdlEraseNotDisplayed"), 2);
    EXPECT_EQ(host.ExportedFiles().size(), 61u);
    EXPECT_LE(host.State().models.All().size(), 3u);
}

TEST_F(KvExport, LeavesTheUsersWindowsOpen) {
    host.AddDrawingFile(L"BOLT", {L"A3", L"A4"}, {&Bolt()});
    host.AddDrawingFile(L"NUT", {L"A3"}, {&Bolt()});
    SimModel& open = *host.Retrieve(L"NUT", ModelKind::kDrawing);
    SimModel& current = *host.Retrieve(L"BOLT", ModelKind::kDrawing);
    host.Open(current);
    // A long session: of many windows two are left, with a gap between their numbers.
    std::vector<int> closed;
    for (int i = 0; i < 12; ++i)
        closed.push_back(host.State().desk.Open(host.AddPart(L"P" + std::to_wstring(i))));
    host.Open(open);
    for (const int window : closed) EXPECT_TRUE(host.State().desk.Delete(window));
    host.Open(current);
    current.SetCurrentSheet(2);
    ExportAll({"DWGCheck", "PDFCheck"});
    EXPECT_EQ(host.State().models.current, &current);
    EXPECT_EQ(current.CurrentSheet(), 2);
    EXPECT_TRUE(host.State().desk.IsShown(open));
    EXPECT_EQ(host.ExportedFiles().size(), 6u);
}

// ---- Trouble

TEST_F(KvExport, GoesOnAfterDrawingsThatFailAndNamesThem) {
    host.AddDrawingFile(L"BOLT", {L"A3"}, {&Bolt()});
    test::WriteBytes(Output("EMPTY.drw.1"), "");
    SimModel& lost = host.AddPart(L"LOST");
    host.AddDrawingFile(L"NOMODEL", {L"A4"}, {&lost});
    for (const fs::directory_entry& file : fs::directory_iterator(host.WorkingDirectory()))
        if (file.path().filename().wstring().starts_with(L"lost")) fs::remove(file.path());
    host.State().desk.EraseNotShown();
    test::WriteBytes(Output("DXF"), "a file");
    ExportAll({"DWGCheck", "DXFCheck", "STPCheck"});
    EXPECT_EQ(host.ExportedFiles(), (Texts{L"DWG\\BOLT.dwg", L"DWG\\NOMODEL.dwg", L"STP\\BOLT.stp"}));
    ASSERT_EQ(LastTwo().back(), kDone);
    const std::wstring message = LastTwo().front();
    for (const wchar_t* line : {L"\nEMPTY", L"\nNOMODEL.stp", L"\nNOMODEL.dxf", L"\nBOLT.dxf"})
        EXPECT_NE(message.find(line), std::wstring::npos) << line;
}

TEST_F(KvExport, KeepsAnEarlierFileUntilItsReplacementIsComplete) {
    host.AddDrawingFile(L"BOLT", {L"A3"}, {&Bolt()});
    const std::vector<fs::path> files = {"DWG/BOLT.dwg", "DXF/BOLT.dxf", "PDF/BOLT.pdf", "STP/BOLT.stp",
                                         "IGS/BOLT.igs"};
    for (const fs::path& file : files) {
        test::MakeFolder(host, file.parent_path());
        test::WriteBytes(Output(file), "earlier");
    }
    host.State().disk.bytesLeft = 5;
    ExportAll(kFormats);
    for (const fs::path& file : files) EXPECT_EQ(test::ReadBytes(Output(file)), "earlier") << file;
    host.State().disk.bytesLeft.reset();

    // Somebody has the file open: it cannot be replaced.
    ASSERT_TRUE(sim::FailWindowsCall("MoveFileExW", 1, ERROR_SHARING_VIOLATION));
    ExportAll(kFormats);
    sim::HealWindowsCalls();
    EXPECT_EQ(test::ReadBytes(Output(files[0])), "earlier");
    EXPECT_EQ(host.ExportedFiles().size(), 4u);
    EXPECT_EQ(LastTwo(), (Texts{L"以下工程图或文件未能导出：\nBOLT.dwg", kDone}));

    ExportAll(kFormats);
    EXPECT_EQ(host.ExportedFiles().size(), 5u);
    EXPECT_EQ(host.LastMessage(), kDone);
    for (const fs::path& file : files)
        for (const fs::directory_entry& left : fs::directory_iterator(Output(file.parent_path())))
            EXPECT_EQ(left.path().filename(), file.filename()) << "left behind";
}

TEST_F(KvExport, RefusesWithoutDrawingsModelsOrASelection) {
    EXPECT_NE(host.Run("KvExport"), PRO_TK_NO_ERROR);
    EXPECT_EQ(host.LastMessage(), L"当前工作目录下无工程图");
    test::EnterFolder(host, L"drawings only");
    host.AddDrawingFile(L"LONELY", {L"A4"});
    EXPECT_NE(host.Run("KvExport"), PRO_TK_NO_ERROR);
    EXPECT_EQ(host.LastMessage(), L"当前工作目录下无模型");
    host.Store(host.AddAssembly(L"ALONE"));
    Use([](SimDialog& dialog) { dialog.Press("ApplyBt"); });
    EXPECT_EQ(host.LastMessage(), kNothingSelected);
    host.State().user.boxes.clear();
    ExportAll({});
    EXPECT_EQ(Messages(host), Texts{L"请先选择导出格式"});
    // A box that cannot be read might be the one that counts.
    host.State().report.Arm(Fault{"ProUICheckbuttonGetState", 1});
    ExportAll({"DWGCheck", "PDFCheck"});
    EXPECT_EQ(Messages(host).size(), 1u);
    EXPECT_EQ(host.Calls("ProMdlnameRetrieve"), 0);
    EXPECT_EQ(host.ExportedFiles(), Texts{});
}

TEST_F(KvExport, TellsThatItsDialogFails) {
    host.AddDrawingFile(L"BOLT", {L"A4"});
    for (const std::string call : {"Create", "Activate", "Destroy"}) {
        host.State().report.Arm(Fault{"ProUIDialog" + call, 1, PRO_TK_GENERAL_ERROR});
        host.OnDialog("KvExport", [](SimDialog&) {});
        EXPECT_NE(host.Run("KvExport"), PRO_TK_NO_ERROR);
        EXPECT_EQ(host.LastMessage(), L"UIDialog " + std::wstring(call.begin(), call.end()) + L" error!");
        host.State().report.DisarmAll();
        host.ForgetAnswers();
    }
}

}  // namespace
