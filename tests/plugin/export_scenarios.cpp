// Exports of drawings, models and assemblies.

#include <filesystem>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/plugin_home.h"
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

// A file whose name ends in a sheet's number holds that sheet and no other.
static Scenario SheetsAsNamed(Scenario scenario) {
    scenario.holds = [](SimHost& host) {
        for (const std::wstring& file : host.ExportedFiles()) {
            const std::wstring stem = std::filesystem::path(file).stem().wstring();
            const std::size_t mark = stem.rfind(L'-');
            const auto record = host.Exported(file);
            if (mark == std::wstring::npos || !record) continue;
            ASSERT_EQ(record->sheets.size(), 1u) << testing::PrintToString(file);
            EXPECT_EQ(std::to_wstring(record->sheets[0].number), stem.substr(mark + 1));
        }
    };
    return scenario;
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
    return SheetsAsNamed(CommandScenario("KvExport", arrange, variant));
}

static void ArrangeExportTable(SimHost& host) {
    ArrangeDrawing(host);
    host.Open(host.AddAssembly(L"PUMP").Place(*host.State().models.current));
    ChangeSetting(L"KvDrawingsIni.ini", L"tableCols", L"content", L"MAT");
    host.OnDialog("KvExport", [](SimDialog& dialog) {
        dialog.Press("selAll").Press("reverseSel").Press("ApplyBt").Press("KvLoadParams");
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
        CommandScenario("KvExport", ArrangeExportTable, "Table"),
        SheetsAsNamed(CommandScenario("KvExportDwg", ArrangeOpenDrawing)),
        SheetsAsNamed(CommandScenario("KvExportPdf", ArrangeOpenDrawing)),
        CommandScenario("KvExportStp", ArrangeDrawing),
        CommandScenario("KvExStp", ArrangeAssemblyExport),
        CommandScenario("KvExSat", ArrangeAssemblyExport),
        CommandScenario("KvExIgs", ArrangeIgesExport),
    };
}

}  // namespace test
