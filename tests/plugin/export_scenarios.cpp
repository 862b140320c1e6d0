// Exports of drawings, models and assemblies.

#include <algorithm>
#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/plugin_home.h"
#include "support/reports.h"
#include "support/scenario.h"

namespace test {

using sim::SimDialog;
using sim::SimHost;
using sim::SimModel;

// One drawing of two sheets in the working directory, and the part that it shows.
static void ArrangeDrawing(SimHost& host) {
    SimModel& bolt = host.AddPart(L"BOLT");
    SimModel& drawing = host.AddDrawing(L"BOLT", {L"A4", L"A3"}, {&bolt});
    host.Store(drawing.SetParameter(L"MAT", std::wstring(L"zinc")));
    host.Open(bolt);
}

static void ArrangeOpenDrawing(SimHost& host) {
    ArrangeDrawing(host);
    host.Open(*host.Retrieve(L"BOLT", sim::ModelKind::kDrawing));
}

// What the report calls done is a file, and a box tells what is not done; one that always comes at the end is
// no such box.
static void ExpectTrueReport(SimHost& host) {
    // A host that refuses to go back stays in the scratch folder.
    if (host.WorkingDirectory().filename().wstring().starts_with(L"~kv")) return;
    Texts names;
    for (const std::wstring& file : host.ExportedFiles())
        names.push_back(std::filesystem::path(file).filename().wstring());
    const Report report = LastReport(host);
    for (const std::wstring& file : report.Done(L"文件"))
        EXPECT_NE(std::ranges::find(names, file), names.end()) << testing::PrintToString(file);
    const bool tellsFailures = std::ranges::any_of(Messages(host), [](const std::wstring& text) {
        return text.find(L"未能导出") != std::wstring::npos;
    });
    if (report.rows.empty()) return;
    EXPECT_EQ(tellsFailures, report.Count(L"失败") > 0);
}

// A file whose name ends in a sheet's number holds that sheet and no other.
static void ExpectSheetsAsNamed(SimHost& host) {
    ExpectTrueReport(host);
    for (const std::wstring& file : host.ExportedFiles()) {
        const std::wstring stem = std::filesystem::path(file).stem().wstring();
        const std::size_t mark = stem.rfind(L'-');
        const auto record = host.Exported(file);
        if (mark == std::wstring::npos || !record) continue;
        ASSERT_EQ(record->sheets.size(), 1u) << testing::PrintToString(file);
        EXPECT_EQ(std::to_wstring(record->sheets[0].number), stem.substr(mark + 1));
    }
}

// A file holds the model of its name.
static void ExpectModelsAsNamed(SimHost& host) {
    ExpectTrueReport(host);
    for (const std::wstring& file : host.ExportedFiles()) {
        const auto record = host.Exported(file);
        ASSERT_TRUE(record) << testing::PrintToString(file);
        EXPECT_EQ(std::filesystem::path(record->model).stem(), std::filesystem::path(file).stem());
    }
}

// Reading tables into the dialog writes and erases nothing, the settings neither.
static void ExpectOnlyRead(SimHost& host) {
    EXPECT_EQ(host.ExportedFiles(), Texts());
    EXPECT_EQ(host.Calls("ProMdlEraseNotDisplayed"), 0);
    EXPECT_EQ(ReadSettings(L"KvDrawingsIni.ini", L"tableCols", L"content"), L"MAT");
}

// The dialog KvExport with these boxes ticked.
static Scenario TickFormats(const std::string& variant, const std::vector<std::string>& formats,
                            bool oneFile) {
    const auto arrange = [formats, oneFile](SimHost& host) {
        ArrangeDrawing(host);
        WriteBytes(SettingsFile(L"kvdop.dop"), "COLOR MONO");
        host.OnDialog("KvExport", [formats, oneFile](SimDialog& dialog) {
            dialog.Check("DWGCheck", false).Check("PDFCheck", false).Check("MultiSheetCheck", oneFile);
            for (const std::string& format : formats) dialog.Check(format);
            dialog.Type("Export_name", L"MAT,sheetsize").Press("selAll").Press("ApplyBt");
        });
    };
    return CommandScenario("KvExport", arrange, ExpectSheetsAsNamed, variant);
}

static void ArrangeExportTable(SimHost& host) {
    ArrangeDrawing(host);
    host.Open(host.AddAssembly(L"PUMP").Place(*host.State().models.current));
    ChangeSetting(L"KvDrawingsIni.ini", L"tableCols", L"content", L"MAT");
    host.OnDialog("KvExport", [](SimDialog& dialog) {
        dialog.Press("selAll").Press("reverseSel");
        if (dialog.SelectedRows("drw_list").empty()) dialog.Press("ApplyBt");
        dialog.Press("KvLoadParams");
        dialog.Press("KvLoadDrwInfo").Press("KvUpdateIni").Choose("SelDirRadio", L"curMdl").Press("Close");
    });
}

// An assembly of one part, and the folder that its files go to.
static void ArrangeAssemblyExport(SimHost& host) {
    host.Open(host.AddAssembly(L"PUMP").Place(host.AddPart(L"BOLT")));
    host.AnswerFolder(MakeFolder(host, "out").wstring());
}

static void ArrangeIgesExport(SimHost& host) {
    ArrangeAssemblyExport(host);
    host.OnDialog("KvExIgs", [](SimDialog& dialog) { dialog.Press("KvExIgsAct").Press("Close"); });
}

std::vector<Scenario> ExportScenarios() {
    return {
        TickFormats("BySheet", {"DWGCheck", "PDFCheck"}, false),
        TickFormats("OneFile", {"DXFCheck", "PDFOptionCheck", "PDFCheck", "STPCheck"}, true),
        CommandScenario("KvExport", ArrangeExportTable, ExpectOnlyRead, "Table"),
        CommandScenario("KvExportDwg", ArrangeOpenDrawing, ExpectSheetsAsNamed),
        CommandScenario("KvExportPdf", ArrangeOpenDrawing, ExpectSheetsAsNamed),
        CommandScenario("KvExportStp", ArrangeDrawing, ExpectModelsAsNamed),
        CommandScenario("KvExStp", ArrangeAssemblyExport, ExpectModelsAsNamed),
        CommandScenario("KvExSat", ArrangeAssemblyExport, ExpectModelsAsNamed),
        CommandScenario("KvExIgs", ArrangeIgesExport, ExpectModelsAsNamed),
    };
}

}  // namespace test
