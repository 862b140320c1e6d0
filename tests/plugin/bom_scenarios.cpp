// The bill of materials.

#include <filesystem>
#include <iterator>
#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "simulator/host/sim_host.h"
#include "simulator/spreadsheet/xlsx.h"
#include "support/arrange.h"
#include "support/plugin_home.h"
#include "support/scenario.h"

namespace test {

namespace fs = std::filesystem;
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

// A list only looks: no model is changed, and the user is back where the command was started.
static void ExpectNothingChanged(SimHost& host) {
    const sim::SimModel* pump = host.State().models.Find(L"PUMP", sim::ModelKind::kAssembly);
    const bool cannotReturn = host.State().report.FaultedFunction() == "ProMdlDisplay";
    EXPECT_TRUE(cannotReturn || host.State().models.current == pump);
    for (const sim::SimModel* model : host.State().models.All())
        EXPECT_EQ(model->Parameters().size(), model == &Bolt(host) ? 1u : 0u);
}

// What the table showed when its export was asked for: all cells, row by row.
using TableTexts = std::shared_ptr<Texts>;

static Arrangement ArrangeWorkbook(const TableTexts& shown) {
    return [shown](SimHost& host) {
        ArrangeBom(host);
        shown->clear();
        const fs::path workbook = MakeFolder(host, "boms") / "pump.xlsx";
        WriteBytes(workbook, "earlier");
        host.AnswerFile(workbook.wstring());
        host.OnDialog("KvBom", [shown](SimDialog& dialog) {
            for (const std::string& row : dialog.Rows("bom_list"))
                for (const char* column : {"num", "param1", "param2"})
                    shown->push_back(column[0] == 'p' && dialog.ColumnTitles("bom_list").size() < 3
                                         ? L""
                                         : dialog.Cell("bom_list", row, column));
            dialog.Press("KvExportBom").Press("Close");
        });
    };
}

// A workbook comes from the list in memory: cells that the table refused are in it all the same. It holds all
// that was shown, or a box tells that cells are missing; and until there is one, the earlier one is.
static void ExpectWholeWorkbook(SimHost& host, const Texts& shown) {
    const fs::path folder = host.WorkingDirectory() / "boms";
    bool isEarlierThere = false;
    for (const fs::directory_entry& file : fs::directory_iterator(folder))
        isEarlierThere = isEarlierThere || ReadBytes(file.path()) == "earlier";
    const auto sheet = sim::ReadXlsx(folder / "pump.xlsx");
    EXPECT_TRUE(sheet.has_value() || isEarlierThere);
    const bool gapsAreTold = host.LastMessage().find(L"单元格未能写入") != std::wstring::npos;
    // A host may refuse a cell that was never filled: that one cannot be read is no sign of a gap.
    const bool cannotTell = host.State().report.FaultedFunction() == "ProUITableCellLabelGet";
    if (!sheet || gapsAreTold || cannotTell) return;
    for (std::size_t i = 0; i < shown.size(); ++i) {
        if (shown[i].empty()) continue;
        EXPECT_EQ(sheet->Value(static_cast<int>(i / 3) + 3, static_cast<int>(i % 3) + 1).text, shown[i]);
    }
}

// Sorting, filtering and other columns.
static void ArrangeViews(SimHost& host) {
    ArrangeBom(host);
    host.OnDialog("KvBom", [&host](SimDialog& dialog) {
        host.OnDialog("KvBomColumns", [](SimDialog& choice) {
            if (choice.Rows("column_list").size() > 1) choice.DoubleClick("column_list", "2", "title");
            choice.Press("KvColumnUp").Press("KvColumnCopy").Press("ApplyBt");
        });
        dialog.Type("BomFilter", L"B").Press("KvFilterBom").Press("KvColumnsBom");
        // The choice does not open for a list that could not be loaded.
        host.ForgetAnswers();
        dialog.ClickTitle("bom_list", "num").ClickTitle("bom_list", "num").Press("Close");
    });
}

// Files in place of earlier ones, and the comparison with a file that was there before.
static constexpr char kEarlierCsv[] = "\xEF\xBB\xBF序号,MAT,模型名称,类型\r\n1,iron,BOLT,零件\r\n";

static void ArrangeFiles(SimHost& host) {
    ArrangeBom(host);
    const fs::path folder = MakeFolder(host, "lists");
    WriteBytes(folder / "old.csv", kEarlierCsv);
    for (const char* name : {"new.csv", "new.html"}) WriteBytes(folder / name, "earlier");
    host.OnDialog("KvBom", [&host, folder](SimDialog& dialog) {
        if (!dialog.Rows("bom_list").empty()) {
            // A list whose model has no name any more is not written, and asks for no file.
            const auto press = [&](const char* file, const char* button) {
                host.AnswerFile((folder / file).wstring());
                dialog.Press(button);
                host.ForgetAnswers();
            };
            press("new.csv", "KvExportCsv");
            press("new.html", "KvExportPage");
            host.OnDialog("KvBomCompare", [](SimDialog& changes) { changes.Press("Close"); });
            press("old.csv", "KvCompareBom");
        }
        dialog.Press("Close");
    });
}

// Each file is the earlier one or a whole new one, and nothing else is left beside them.
static void ExpectWholeFiles(SimHost& host) {
    const fs::path folder = host.WorkingDirectory() / "lists";
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 3);
    EXPECT_EQ(ReadBytes(folder / "old.csv"), kEarlierCsv);
    const std::string csv = ReadBytes(folder / "new.csv");
    EXPECT_TRUE(csv == "earlier" || (csv.starts_with("\xEF\xBB\xBF") && csv.ends_with("\r\n"))) << csv;
    const std::string page = ReadBytes(folder / "new.html");
    EXPECT_TRUE(page == "earlier" || page.ends_with("</body>\n</html>\n"));
    ExpectNothingChanged(host);
}

std::vector<Scenario> BomScenarios() {
    const auto shown = std::make_shared<Texts>();
    const auto isWhole = [shown](SimHost& host) { ExpectWholeWorkbook(host, *shown); };
    return {
        CommandScenario("KvBom", ArrangeLists, ExpectNothingChanged, "Lists"),
        CommandScenario("KvBom", ArrangeWorkbook(shown), isWhole, "Export"),
        CommandScenario("KvBom", ArrangeViews, ExpectNothingChanged, "Views"),
        CommandScenario("KvBom", ArrangeFiles, ExpectWholeFiles, "Files"),
    };
}

}  // namespace test
