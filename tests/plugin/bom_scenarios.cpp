// The bill of materials.

#include <string>
#include <vector>

#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/plugin_home.h"
#include "support/scenario.h"

namespace test {

using sim::SimDialog;
using sim::SimHost;

// A list has two columns and two rows.
static void ArrangeBom(SimHost& host) {
    WriteSettings(L"KvBom.ini",
                  L"[tableCols_sum]\r\ncontent=模型名称,MAT\r\n[tableCols_level]\r\ncontent=层级2\r\n");
    ArrangePump(host);
    Bolt(host).SetParameter(L"MAT", std::wstring(L"zinc"));
    host.Spreadsheet().Install();
}

// One list, a double click, and the other list.
static void ArrangeLists(SimHost& host) {
    ArrangeBom(host);
    host.OnDialog("KvBom", [](SimDialog& dialog) {
        if (!dialog.Rows("bom_list").empty()) dialog.DoubleClick("bom_list", "1", "num");
        dialog.Choose("BomRadio", L"LevelBom").Press("KvLoadBom").Press("KvOpenBomIni").Press("Close");
    });
}

static void ArrangeWorkbook(SimHost& host) {
    ArrangeBom(host);
    host.AnswerFile((MakeFolder(host, "boms") / "pump.xlsx").wstring());
    host.OnDialog("KvBom", [](SimDialog& dialog) { dialog.Press("KvExportBom").Press("Close"); });
}

std::vector<Scenario> BomScenarios() {
    return {
        CommandScenario("KvBom", ArrangeLists, "Lists"),
        CommandScenario("KvBom", ArrangeWorkbook, "Export"),
    };
}

}  // namespace test
