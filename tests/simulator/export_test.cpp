// The host's export functions, called as a plug-in calls them: what the files record, which windows they
// need, and what is refused.

#include <algorithm>
#include <array>
#include <functional>
#include <regex>
#include <string>
#include <vector>

#include <ProArray.h>
#include <ProDrawing.h>
#include <ProIntf3Dexport.h>
#include <ProMdl.h>
#include <ProPDF.h>
#include <ProUtil.h>
#include <ProWindows.h>
#include <gtest/gtest.h>
#include <windows.h>

#include "simulator/cad/generate.h"
#include "simulator/export/export_file.h"
#include "simulator/report/utf8.h"
#include "support/host_test.h"
#include "support/plugin_home.h"
#include "support/toolkit_ui.h"

namespace {

namespace fs = std::filesystem;
using namespace sim;
using test::W;

// Inputs of the host are not const.
class HostExport : public test::HostTest {
protected:
    HostExport() {
        drawing.AddSheet(L"A3").AddSheet(L"A4").AddSheet(L"A1").AddView(pump, 1).AddView(pump, 3);
    }
    std::wstring Path(const std::wstring& name) { return (folder / name).wstring(); }
    ProDrawing Handle() { return reinterpret_cast<ProDrawing>(&drawing); }

    ProError WriteDwg(const std::wstring& name, Pro2dExportdata data = nullptr) {
        return Pro2dExport(PRO_DWG_FILE, Path(name).data(), &drawing, data);
    }
    // With these options beside a viewer that stays closed.
    ProError WritePdf(const std::wstring& name,
                      const std::vector<std::pair<ProPDFOptionType, int>>& numbers = {}) {
        ProPDFOptions options = nullptr;
        EXPECT_EQ(ProPDFoptionsAlloc(&options), PRO_TK_NO_ERROR);
        EXPECT_EQ(ProPDFoptionsBoolpropertySet(options, PRO_PDFOPT_LAUNCH_VIEWER, PRO_B_FALSE),
                  PRO_TK_NO_ERROR);
        for (const auto& [option, value] : numbers)
            EXPECT_EQ(ProPDFoptionsIntpropertySet(options, option, value), PRO_TK_NO_ERROR);
        const ProError status = ProPDFExport(&drawing, Path(name).data(), options);
        EXPECT_EQ(ProPDFoptionsFree(options), PRO_TK_NO_ERROR);
        return status;
    }
    // "model 1 A3, paper 2 A4"; "none" without a complete file.
    std::string Sheets(const std::wstring& name) {
        const auto record = ReadExport(folder / name);
        if (!record) return "none";
        std::string text;
        for (const ExportedSheet& sheet : record->sheets)
            text += (text.empty() ? "" : ", ") + sheet.space + (sheet.space.empty() ? "" : " ") +
                    std::to_string(sheet.number) + " " + Utf8(sheet.size);
        return text;
    }

    SimModel& pump = Assembly(L"PUMP");
    SimModel& drawing = New(L"泵", ModelKind::kDrawing);
};

TEST_F(HostExport, TwoDimensionalFilesHoldTheSheetsThatWereNamed) {
    ASSERT_EQ(ProDrawingCurrentSheetSet(Handle(), 2), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProDrawingCurrentSheetSet(Handle(), 4), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(WriteDwg(L"plain.dwg"), PRO_TK_NO_ERROR);
    EXPECT_EQ(Sheets(L"plain.dwg"), "model 2 A4");

    Pro2dExportdata data = nullptr;
    ASSERT_EQ(Pro2dExportdataAlloc(&data), PRO_TK_NO_ERROR);
    ASSERT_EQ(Pro2dExportdataModelspacesheetSet(data, 3), PRO_TK_NO_ERROR);
    EXPECT_EQ(WriteDwg(L"ignored.dwg", data), PRO_TK_NO_ERROR);
    EXPECT_EQ(Sheets(L"ignored.dwg"), "model 2 A4");  // a choice of sheets counts once it is asked for
    ASSERT_EQ(Pro2dExportdataSheetoptionSet(data, PRO2DEXPORT_SELECTED), PRO_TK_NO_ERROR);
    EXPECT_EQ(WriteDwg(L"one.dwg", data), PRO_TK_NO_ERROR);
    EXPECT_EQ(Sheets(L"one.dwg"), "model 3 A1");

    ProArray others = nullptr;
    const std::array<int, 2> numbers = {1, 2};
    ASSERT_EQ(ProArrayAlloc(0, sizeof(int), 1, &others), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProArrayObjectAdd(&others, -1, 2, const_cast<int*>(numbers.data())), PRO_TK_NO_ERROR);
    ASSERT_EQ(Pro2dExportdataSheetsSet(data, static_cast<int*>(others)), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProArrayFree(&others), PRO_TK_NO_ERROR);  // the data have their own copy
    ASSERT_EQ(ProConfigoptSet(W(L"dwg_export_format"), W(L"2000")), PRO_TK_NO_ERROR);
    EXPECT_EQ(WriteDwg(L"all.dwg", data), PRO_TK_NO_ERROR);
    EXPECT_EQ(Sheets(L"all.dwg"), "model 3 A1, paper 1 A3, paper 2 A4");
    const auto record = ReadExport(folder / L"all.dwg");
    EXPECT_EQ(record->format, "DWG");
    EXPECT_EQ(Utf8(record->model), "泵.drw");
    EXPECT_EQ(record->options.at("VERSION"), "2000");

    ASSERT_EQ(Pro2dExportdataModelspacesheetSet(data, 4), PRO_TK_NO_ERROR);
    EXPECT_EQ(WriteDwg(L"missing.dwg", data), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("is to export no sheet"));
    EXPECT_EQ(Pro2dExport(static_cast<ProImportExportFile>(5), Path(L"x.dwg").data(), &drawing, data),
              PRO_TK_INVALID_TYPE);
    EXPECT_EQ(Pro2dExport(PRO_DXF_FILE, Path(L"x.dxf").data(), &pump, data), PRO_TK_INVALID_ITEM);
    EXPECT_EQ(Pro2dExport(PRO_DXF_FILE, W(L"x.dxf"), &drawing, data), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("no whole path"));
    EXPECT_EQ(Pro2dExportdataFree(data), PRO_TK_NO_ERROR);
    EXPECT_EQ(Pro2dExportdataFree(data), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("was freed"));
}

TEST_F(HostExport, PdfNeedsTheDrawingInTheCurrentWindow) {
    session.desk.Open(pump);
    EXPECT_EQ(WritePdf(L"a.pdf"), PRO_TK_NOT_DISPLAYED);

    int before = -1, window = -1;
    ASSERT_EQ(ProWindowCurrentGet(&before), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProObjectwindowMdlnameCreate(W(L"泵"), PRO_DRAWING, &window), PRO_TK_NO_ERROR);
    EXPECT_EQ(WritePdf(L"a.pdf"), PRO_TK_NOT_DISPLAYED);
    ASSERT_EQ(ProWindowCurrentSet(window), PRO_TK_NO_ERROR);
    ProMdl shown = nullptr, current = nullptr;
    EXPECT_EQ(ProWindowMdlGet(window, &shown), PRO_TK_NO_ERROR);
    EXPECT_EQ(shown, &drawing);
    EXPECT_EQ(ProMdlCurrentGet(&current), PRO_TK_NO_ERROR);
    EXPECT_EQ(current, &pump);  // setting a window current does not activate it
    EXPECT_EQ(WritePdf(L"a.pdf"), PRO_TK_NO_ERROR);

    EXPECT_EQ(ProWindowDelete(window), PRO_TK_BAD_CONTEXT);
    session.desk.EndCommand();
    EXPECT_EQ(session.desk.Leftovers(), (std::vector<std::string>{"the window of 泵 was left current",
                                                                  "the window of 泵 was left open"}));
    ASSERT_EQ(ProWindowCurrentSet(before), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProWindowDelete(window), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProWindowCurrentSet(window), PRO_TK_BAD_INPUTS);
    int again = -1;
    ASSERT_EQ(ProObjectwindowMdlnameCreate(W(L"泵"), PRO_DRAWING, &again), PRO_TK_NO_ERROR);
    EXPECT_NE(again, window);  // the number of a closed window stays stale

    ASSERT_EQ(ProWindowCurrentSet(again), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProWindowCurrentClose(), PRO_TK_NO_ERROR);
    EXPECT_EQ(WritePdf(L"b.pdf"), PRO_TK_NO_ERROR);  // it closes when the command has returned
    session.desk.EndCommand();
    EXPECT_EQ(ProWindowMdlGet(again, &shown), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(session.models.current, &pump);
}

TEST_F(HostExport, PdfHoldsAPageForEachSheet) {
    session.desk.Open(drawing);
    ASSERT_EQ(WritePdf(L"all.pdf", {{PRO_PDFOPT_SHEETS, PRO_PRINT_ALL_SHEETS}}), PRO_TK_NO_ERROR);
    EXPECT_EQ(Sheets(L"all.pdf"), "1 A3, 2 A4, 3 A1");
    ASSERT_EQ(WritePdf(L"same.pdf"), PRO_TK_NO_ERROR);
    EXPECT_EQ(Sheets(L"same.pdf"), "1 A3, 2 A4, 3 A1");
    session.strict.pdfHoldsAllSheets = false;
    ASSERT_EQ(WritePdf(L"other.pdf"), PRO_TK_NO_ERROR);
    EXPECT_EQ(Sheets(L"other.pdf"), "1 A3");
    session.strict.exportsLeaveLog = true;
    ASSERT_EQ(WritePdf(L"range.pdf", {{PRO_PDFOPT_SHEET_RANGE, PRO_PRINT_ALL_SHEETS}}), PRO_TK_NO_ERROR);
    EXPECT_EQ(Sheets(L"range.pdf"), "1 A3, 2 A4, 3 A1");
    EXPECT_TRUE(fs::exists(folder / L"range_out.log"));

    ASSERT_EQ(ProDrawingCurrentSheetSet(Handle(), 3), PRO_TK_NO_ERROR);
    ASSERT_EQ(WritePdf(L"mono.pdf", {{PRO_PDFOPT_SHEETS, PRO_PRINT_CURRENT_SHEET},
                                     {PRO_PDFOPT_COLOR_DEPTH, PRO_PDF_CD_MONO}}),
              PRO_TK_NO_ERROR);
    EXPECT_EQ(Sheets(L"mono.pdf"), "3 A1");
    EXPECT_EQ(ReadExport(folder / L"mono.pdf")->options.at("COLOR_DEPTH"), "2");

    const std::string all = test::ReadBytes(folder / L"all.pdf");
    const std::string mono = test::ReadBytes(folder / L"mono.pdf");
    std::vector<std::string> boxes;
    const std::regex box("/MediaBox \\[ 0 0 ([0-9.]+ [0-9.]+)");
    for (std::sregex_iterator found(all.begin(), all.end(), box), end; found != end; ++found)
        boxes.push_back((*found)[1]);
    // 420x297, 210x297 and 841x594 mm at 72 points an inch.
    EXPECT_EQ(boxes, (std::vector<std::string>{"1190.55 841.89", "595.28 841.89", "2383.94 1683.78"}));
    EXPECT_NE(all.find("/Title <FEFF6CF5>"), std::string::npos);  // the name in UTF-16
    const std::regex ink("0\\.[0-9]*[1-9][0-9]* [0-9.]+ RG|[0-9.]+ 0\\.[0-9]*[1-9][0-9]* RG");
    EXPECT_TRUE(std::regex_search(all, ink));
    EXPECT_FALSE(std::regex_search(mono, ink));
    EXPECT_TRUE(session.user.started.empty());

    // Every row of the table leads to its object, and the first child of the page tree is a page, or readers
    // have to repair the file.
    std::vector<std::string> objects = {"free"};
    for (std::size_t row = all.find('\n', all.find("xref\n0 ") + 5) + 21; all.compare(row, 7, "trailer") != 0;
         row += 20) {
        objects.push_back(all.substr(std::stoul(all.substr(row, 10)), 40));
        EXPECT_TRUE(objects.back().starts_with(std::to_string(objects.size() - 1) + " 0 obj\n"))
            << objects.back();
    }
    std::smatch page;
    ASSERT_TRUE(
        std::regex_search(all, page, std::regex("/Kids \\[ ([0-9]+) 0 R ([0-9]+) 0 R ([0-9]+) 0 R \\]")));
    for (std::size_t kid = 1; kid <= 3; ++kid)
        EXPECT_NE(objects.at(std::stoul(page[kid])).find("/Type /Page /Parent"), std::string::npos);
}

TEST_F(HostExport, PdfOptionsAreCheckedByNumberAndKind) {
    ProPDFOptions options = nullptr;
    ASSERT_EQ(ProPDFoptionsAlloc(&options), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProPDFoptionsBoolpropertySet(options, PRO_PDFOPT_PENTABLE, PRO_B_TRUE), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProPDFoptionsIntpropertySet(options, PRO_PDFOPT_PENTABLE, 1), PRO_TK_INVALID_TYPE);
    EXPECT_TRUE(Misuse("values of another kind"));
    EXPECT_EQ(ProPDFoptionsBoolpropertySet(options, PRO_PDFOPT_SHEETS, PRO_B_FALSE), PRO_TK_INVALID_TYPE);
    EXPECT_TRUE(Misuse("values of another kind"));
    EXPECT_EQ(ProPDFoptionsIntpropertySet(options, PRO_PDFOPT_COLOR_DEPTH, 3), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("does not take 3"));
    EXPECT_EQ(ProPDFoptionsIntpropertySet(options, static_cast<ProPDFOptionType>(30), 0), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("no PDF option 30"));
    session.strict.pdfSheetRangeIsText = true;
    EXPECT_EQ(ProPDFoptionsIntpropertySet(options, PRO_PDFOPT_SHEET_RANGE, PRO_PRINT_ALL_SHEETS),
              PRO_TK_INVALID_TYPE);

    session.desk.Open(drawing);
    EXPECT_EQ(ProPDFExport(&drawing, Path(L"a.pdf").data(), options), PRO_TK_NO_ERROR);
    ASSERT_EQ(session.user.started.size(), 1U);  // nobody switched the viewer off
    EXPECT_EQ(ProPDFExport(&pump, Path(L"a.pdf").data(), options), PRO_TK_INVALID_TYPE);
    EXPECT_EQ(ProPDFExport(&drawing, Path(L"a").data(), options), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("not the extension"));
    EXPECT_EQ(ProPDFoptionsFree(options), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProPDFExport(&drawing, Path(L"a.pdf").data(), options), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("was freed"));
}

TEST_F(HostExport, PdfNamesAreAsciiBelowTheWorkingDirectory) {
    session.desk.Open(drawing);
    EXPECT_EQ(WritePdf(L"泵.pdf"), PRO_TK_BAD_INPUTS);
    fs::create_directories(folder / L"出图");
    EXPECT_EQ(WritePdf(L"出图\\a.pdf"), PRO_TK_BAD_INPUTS);
    ASSERT_EQ(ProDirectoryChange(Path(L"出图").data()), PRO_TK_NO_ERROR);
    EXPECT_EQ(WritePdf(L"出图\\a.pdf"), PRO_TK_NO_ERROR);
    EXPECT_EQ(WritePdf(L"missing\\a.pdf"), PRO_TK_INVALID_DIR);
}

TEST_F(HostExport, ProfileIsFoundInTheWorkingDirectory) {
    const auto write = [this](const wchar_t* profile) {
        return ProPDFWithProfileExport(&drawing, Path(L"a.pdf").data(), W(profile));
    };
    EXPECT_EQ(write(L"kvdop"), PRO_TK_NOT_DISPLAYED);
    session.desk.Open(drawing);
    EXPECT_EQ(write(L"kvdop"), PRO_TK_E_NOT_FOUND);
    folder.Write("kvdop.dop", "");
    EXPECT_EQ(write(L"kvdop"), PRO_TK_CANT_OPEN);
    folder.Write("kvdop.dop", "COLOR MONO\n");
    EXPECT_EQ(write(L"kvdop"), PRO_TK_NO_ERROR);
    EXPECT_EQ(Sheets(L"a.pdf"), "1 A3, 2 A4, 3 A1");
    EXPECT_EQ(ReadExport(folder / L"a.pdf")->options.at("PROFILE"), "kvdop.dop");
    folder.Write("kvdop.dop", "SHEETS CURRENT\n");
    EXPECT_EQ(write(Path(L"kvdop.dop").c_str()), PRO_TK_NO_ERROR);
    EXPECT_EQ(Sheets(L"a.pdf"), "1 A3");
    EXPECT_EQ(ProPDFWithProfileExport(&drawing, Path(L"a.pdf").data(), nullptr), PRO_TK_BAD_INPUTS);
    session.strict.bareProfileNameRefused = true;
    EXPECT_EQ(write(L"kvdop"), PRO_TK_E_NOT_FOUND);
}

TEST_F(HostExport, SolidsAreWrittenUnderTheNameOrWithTheHostsExtension) {
    EXPECT_EQ(
        ProOutputFileMdlnameWrite(&pump, W(L"pump.sat"), PRO_STEP_FILE, nullptr, nullptr, nullptr, nullptr),
        PRO_TK_NO_ERROR);
    EXPECT_EQ(ReadExport(folder / L"pump.sat")->format, "STEP");  // the name decides nothing
    EXPECT_EQ(
        ProOutputFileMdlnameWrite(&drawing, W(L"a.stp"), PRO_STEP_FILE, nullptr, nullptr, nullptr, nullptr),
        PRO_TK_INVALID_TYPE);
    EXPECT_EQ(ProOutputFileMdlnameWrite(&pump, W(L"pump"), PRO_STEP_FILE, nullptr, nullptr, nullptr, nullptr),
              PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("do not fit"));
    fs::create_directories(folder / L"STP");
    EXPECT_EQ(ProOutputFileMdlnameWrite(&pump, Path(L"STP\\pump.stp").data(), PRO_STEP_FILE, nullptr, nullptr,
                                        nullptr, nullptr),
              PRO_TK_NO_ERROR);
    session.strict.outputPathRefused = true;
    EXPECT_EQ(ProOutputFileMdlnameWrite(&pump, Path(L"STP\\b.stp").data(), PRO_STEP_FILE, nullptr, nullptr,
                                        nullptr, nullptr),
              PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("do not fit"));

    ProOutputInclusion inclusion = nullptr;
    ProOutputLayerOptions layers = nullptr;
    ASSERT_EQ(ProOutputInclusionAlloc(&inclusion), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProOutputLayerOptionsAlloc(&layers), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProOutputInclusionFlagsSet(inclusion, PRO_B_TRUE, PRO_B_FALSE, PRO_B_TRUE), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProOutputLayerOptionsAutoidSet(layers, PRO_B_TRUE), PRO_TK_NO_ERROR);
    EXPECT_EQ(
        ProIntf3DFileWrite(reinterpret_cast<ProSolid>(&pump), PRO_INTF_EXPORT_IGES, Path(L"pump.v2").data(),
                           PRO_OUTPUT_ASSEMBLY_MULTI_FILES, nullptr, nullptr, inclusion, layers),
        PRO_TK_NO_ERROR);
    const auto record = ReadExport(folder / L"pump.v2.igs");
    ASSERT_TRUE(record.has_value());
    EXPECT_EQ(record->options, (std::map<std::string, std::string>{{"ASSEMBLY", "2"},
                                                                   {"DATUMS", "yes"},
                                                                   {"BLANKED", "no"},
                                                                   {"FACETTED", "yes"},
                                                                   {"LAYER_IDS", "yes"}}));
    EXPECT_EQ(session.report.OpenCount(Account::kOptionSet), 2U);
    EXPECT_EQ(ProOutputInclusionFree(inclusion), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProOutputLayerOptionsFree(reinterpret_cast<ProOutputLayerOptions>(inclusion)),
              PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("no output layer options"));
    EXPECT_EQ(ProOutputLayerOptionsFree(layers), PRO_TK_NO_ERROR);
}

TEST_F(HostExport, DiskTroubleIsReportedAndLeavesWhatARealDiskWouldLeave) {
    ASSERT_EQ(WriteDwg(L"a.dwg"), PRO_TK_NO_ERROR);
    const HANDLE lock = CreateFileW(Path(L"a.dwg").c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr,
                                    OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    EXPECT_EQ(WriteDwg(L"a.dwg"), PRO_TK_CANT_WRITE);
    CloseHandle(lock);
    EXPECT_EQ(Sheets(L"a.dwg"), "model 1 A3");
    fs::create_directories(folder / L"taken.dwg");
    EXPECT_EQ(WriteDwg(L"taken.dwg"), PRO_TK_CANT_WRITE);
    EXPECT_EQ(WriteDwg(L"a.dwg\\b.dwg"), PRO_TK_CANT_WRITE);

    session.disk.readOnlyFolders = {folder.Path()};
    EXPECT_EQ(WriteDwg(L"b.dwg"), PRO_TK_CANT_WRITE);
    EXPECT_FALSE(fs::exists(folder / L"b.dwg"));
    session.disk.readOnlyFolders.clear();

    session.disk.bytesLeft = 20;
    EXPECT_EQ(WriteDwg(L"a.dwg"), PRO_TK_GENERAL_ERROR);
    EXPECT_EQ(fs::file_size(folder / L"a.dwg"), 20U);
    EXPECT_EQ(Sheets(L"a.dwg"), "none");
    session.desk.Open(drawing);
    session.disk.bytesLeft = 900;
    EXPECT_EQ(WritePdf(L"a.pdf"), PRO_TK_GENERAL_ERROR);
    EXPECT_EQ(Sheets(L"a.pdf"), "none");
    EXPECT_TRUE(FindExports(folder.Path()).empty());
}

TEST_F(HostExport, DrawingsGiveTheirModelsAndViews) {
    drawing.AddMissingView(L"gone.prt", 2);
    ProSolid* solids = nullptr;
    ASSERT_EQ(ProDrawingSolidsCollect(Handle(), &solids), PRO_TK_NO_ERROR);
    EXPECT_EQ(static_cast<void*>(solids[0]), &pump);
    ProView* views = nullptr;
    ASSERT_EQ(ProDrawingViewsCollect(Handle(), &views), PRO_TK_NO_ERROR);
    int count = 0, sheet = 0;
    ASSERT_EQ(ProArraySizeGet(views, &count), PRO_TK_NO_ERROR);
    ASSERT_EQ(count, 3);
    ProSolid shown = nullptr;
    EXPECT_EQ(ProDrawingViewSolidGet(Handle(), views[1], &shown), PRO_TK_NO_ERROR);
    EXPECT_EQ(static_cast<void*>(shown), &pump);
    EXPECT_EQ(ProDrawingViewSheetGet(Handle(), views[1], &sheet), PRO_TK_NO_ERROR);
    EXPECT_EQ(sheet, 3);
    EXPECT_EQ(ProDrawingViewSolidGet(Handle(), views[2], &shown), PRO_TK_E_NOT_FOUND);
    EXPECT_EQ(ProDrawingViewSolidGet(Handle(), reinterpret_cast<ProView>(&pump), &shown), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("a view that"));
    for (auto* array : {reinterpret_cast<ProArray*>(&solids), reinterpret_cast<ProArray*>(&views)})
        EXPECT_EQ(ProArrayFree(array), PRO_TK_NO_ERROR);
    SimModel& empty = New(L"EMPTY", ModelKind::kDrawing);
    EXPECT_EQ(ProDrawingViewsCollect(reinterpret_cast<ProDrawing>(&empty), &views), PRO_TK_E_NOT_FOUND);
    EXPECT_EQ(ProDrawingCurrentSheetGet(reinterpret_cast<ProDrawing>(&empty), &sheet), PRO_TK_BAD_INPUTS);
    EXPECT_EQ(sheet, 0);
}

TEST_F(HostExport, OnlyWhatWindowsNeedStaysInMemory) {
    SimModel& bolt = Part(L"BOLT");
    SimModel& loose = Assembly(L"LOOSE");
    SimModel& inner = Part(L"INNER");
    pump.Place(bolt);
    loose.Place(bolt).Place(inner);
    session.desk.Open(drawing);
    const ProMdl stale = &loose;
    ASSERT_EQ(ProMdlEraseNotDisplayed(), PRO_TK_NO_ERROR);
    EXPECT_EQ(session.models.Find(L"INNER", ModelKind::kPart), nullptr);
    EXPECT_NE(session.models.Find(L"BOLT", ModelKind::kPart),
              nullptr);  // the drawing shows an assembly of it
    ProMdlType type{};
    EXPECT_EQ(ProMdlTypeGet(stale, &type), PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("no model in memory"));
}

// ---- Files and options

class PathArrays {
public:
    PathArrays() {
        for (ProArray* array : {&files, &folders})
            EXPECT_EQ(ProArrayAlloc(0, sizeof(ProPath), 1, array), PRO_TK_NO_ERROR);
    }
    ~PathArrays() {
        for (ProArray* array : {&files, &folders}) EXPECT_EQ(ProArrayFree(array), PRO_TK_NO_ERROR);
    }
    ProError List(const wchar_t* masks, ProFileListOpt option) {
        return ProFilesList(nullptr, W(masks), option, reinterpret_cast<ProPath**>(&files),
                            reinterpret_cast<ProPath**>(&folders));
    }
    // Names without their folder.
    static std::vector<std::string> Names(ProArray array) {
        int count = 0;
        EXPECT_EQ(ProArraySizeGet(array, &count), PRO_TK_NO_ERROR);
        std::vector<std::string> names;
        for (int i = 0; i < count; ++i)
            names.push_back(Utf8(fs::path(static_cast<ProPath*>(array)[i]).filename().wstring()));
        return names;
    }
    ProArray files = nullptr;
    ProArray folders = nullptr;
};

TEST_F(HostExport, FilesAreListedByMaskAndParsed) {
    for (const char* name : {"b.drw.2", "b.drw.10", "B.DRW.9", "a.drw", "c.prt.1", "d.asm.4", "drw", ".drw"})
        folder.Write(name, "x");
    fs::create_directories(folder / L"sub");
    {
        PathArrays lists;
        ASSERT_EQ(lists.List(L"*.drw", PRO_FILE_LIST_LATEST), PRO_TK_NO_ERROR);
        EXPECT_EQ(PathArrays::Names(lists.files), (std::vector<std::string>{".drw", "a.drw", "b.drw.10"}));
        EXPECT_EQ(PathArrays::Names(lists.folders), std::vector<std::string>{"sub"});
        ASSERT_EQ(lists.List(L"*.prt,*.asm", PRO_FILE_LIST_LATEST),
                  PRO_TK_NO_ERROR);  // adds to what is there
        EXPECT_EQ(PathArrays::Names(lists.files).size(), 5U);
        EXPECT_EQ(lists.List(L"*.drw,", PRO_FILE_LIST_LATEST), PRO_TK_NO_ERROR);
        EXPECT_EQ(lists.List(L"*.abcdefghijklmnopqrstuvwxyz012345", PRO_FILE_LIST_LATEST), PRO_TK_BAD_INPUTS);
    }
    ProArray numbers = nullptr, paths = nullptr;
    ASSERT_EQ(ProArrayAlloc(0, sizeof(int), 1, &numbers), PRO_TK_NO_ERROR);
    ASSERT_EQ(ProArrayAlloc(0, sizeof(ProPath), 1, &paths), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProFilesList(nullptr, W(L"*.drw"), PRO_FILE_LIST_ALL, reinterpret_cast<ProPath**>(&numbers),
                           reinterpret_cast<ProPath**>(&paths)),
              PRO_TK_BAD_INPUTS);
    EXPECT_TRUE(Misuse("something else than paths"));
    EXPECT_EQ(ProArrayFree(&numbers), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProArrayFree(&paths), PRO_TK_NO_ERROR);

    ProPath path = {};
    ProMdlName name = {};
    ProMdlExtension extension = {};
    int version = 0;
    ASSERT_EQ(ProFileMdlnameParse(W(L"C:\\work\\my.pump.drw.12"), path, name, extension, &version),
              PRO_TK_NO_ERROR);
    EXPECT_EQ(Utf8(path) + "|" + Utf8(name) + "|" + Utf8(extension), "C:\\work\\|my.pump|drw");
    EXPECT_EQ(version, 12);
    ASSERT_EQ(ProFileMdlnameParse(W(L"pump.drw"), path, nullptr, nullptr, &version), PRO_TK_NO_ERROR);
    EXPECT_EQ(Utf8(path), "");
    EXPECT_EQ(version, -1);
    EXPECT_EQ(ProFileMdlnameParse(W(L"C:\\.drw"), nullptr, name, nullptr, nullptr), PRO_TK_INVALID_NAME);
    const std::wstring tooLong = std::wstring(81, L'n') + L".drw";
    EXPECT_EQ(ProFileMdlnameParse(W(tooLong.c_str()), nullptr, name, nullptr, nullptr), PRO_TK_BAD_INPUTS);
}

TEST_F(HostExport, OptionsAreReadAndSet) {
    ProPath value = {};
    EXPECT_EQ(ProConfigoptionGet(W(L"dwg_export_format"), value), PRO_TK_E_NOT_FOUND);
    EXPECT_EQ(ProConfigoptSet(W(L"dwg_export_fromat"), W(L"2000")), PRO_TK_E_NOT_FOUND);
    EXPECT_EQ(ProConfigoptSet(W(L"dwg_export_format"), W(L"2000")), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProConfigoptSet(W(L"DWG_EXPORT_FORMAT"), W(L"2013")), PRO_TK_NO_ERROR);
    EXPECT_EQ(ProConfigoptionGet(W(L"dwg_export_format"), value), PRO_TK_NO_ERROR);
    EXPECT_EQ(Utf8(value), "2013");
    session.configOptions[L"SEARCH_PATH"] = {L"a", L"b"};
    EXPECT_EQ(ProConfigoptSet(W(L"search_path"), W(L"c")), PRO_TK_NO_ERROR);
    EXPECT_EQ(session.configOptions[L"SEARCH_PATH"].size(), 3U);
}

// ---- Size

TEST_F(HostExport, ManyDrawingsKeepMemoryAndWindowsFlat) {
    SimModel& part = Part(L"GEN_PART");
    for (SimModel* made : GenerateDrawings(session.models, part, 120, 3))
        ASSERT_EQ(session.models.Save(*made), PRO_TK_NO_ERROR);
    session.desk.Open(pump);
    ASSERT_EQ(ProMdlEraseNotDisplayed(), PRO_TK_NO_ERROR);
    std::size_t most = 0;
    for (int i = 1; i <= 120; ++i) {
        const std::wstring name = L"gen_drw_" + std::to_wstring(i);
        ProMdl handle = nullptr;
        int window = -1;
        ASSERT_EQ(ProMdlnameRetrieve(W(name.c_str()), PRO_MDLFILE_DRAWING, &handle), PRO_TK_NO_ERROR);
        ASSERT_EQ(ProObjectwindowMdlnameCreate(W(name.c_str()), PRO_DRAWING, &window), PRO_TK_NO_ERROR);
        ASSERT_EQ(ProWindowDelete(window), PRO_TK_NO_ERROR);
        most = std::max(most, session.models.All().size());
        if (i % 30 != 0) continue;
        ASSERT_EQ(ProMdlEraseNotDisplayed(), PRO_TK_NO_ERROR);
    }
    EXPECT_EQ(most, 32U);  // thirty drawings, their part, and the assembly on the screen
}

}  // namespace
