// Renaming.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/plugin_home.h"
#include "support/rename_check.h"
#include "support/scenario.h"

namespace test {

using sim::SimDialog;
using sim::SimHost;

// PUMP { BOLT } on disk, with a drawing that has the part's name.
static void ArrangeFiles(SimHost& host) {
    sim::SimModel& pump = host.AddAssembly(L"PUMP");
    sim::SimModel& bolt = host.AddPart(L"BOLT");
    pump.Place(bolt);
    EXPECT_EQ(host.State().models.Save(pump), PRO_TK_NO_ERROR);
    host.AddDrawingFile(L"BOLT", {L"A4"}, {&bolt});
    host.Open(pump);
}

static void ArrangeRun(SimHost& host) {
    ArrangeFiles(host);
    host.OnDialog("KvRename", [](SimDialog& dialog) {
        const std::vector<std::string> rows = dialog.Rows("mdl_list");
        if (rows.size() == 2) dialog.SelectRows("mdl_list", {"2"});
        if (rows.size() == 2 && !dialog.Cell("mdl_list", "2", "new_name").empty())
            dialog.Type("input2", L"B2");
        dialog.Press("KvDropUnchanged").Press("StartRename").Press("Close");
    });
}

static void ArrangeBack(SimHost& host) {
    ArrangeFiles(host);
    host.OnDialog("KvRename", [](SimDialog& dialog) {
        if (dialog.Rows("mdl_list").size() == 2 && !dialog.Cell("mdl_list", "2", "new_name").empty())
            dialog.Type("input2", L"B2");
        dialog.Press("KvDropUnchanged").Press("StartRename").Press("KvUndoRename").Press("Close");
    });
}

// Everything but renaming.
static void ArrangeTable(SimHost& host) {
    ArrangeFiles(host);
    host.Spreadsheet().Install();
    host.AnswerFile(L"table.csv");
    host.AnswerFile(L"table.csv");
    host.OnDialog("KvRename", [](SimDialog& dialog) {
        dialog.Type("SuffixText", L"_X").Press("KvFillNames").Press("KvCheckAll").Press("UpdateRenameIni");
        dialog.Press("KvExportCsv").Press("KvLoadCsv").Press("OpenRenameIni").Press("KvShowReport");
        dialog.Press("Close");
    });
}

static void ArrangeRenameWorkbook(SimHost& host) {
    ArrangeFiles(host);
    host.Spreadsheet().Install();
    host.AnswerFile(L"table.xls");
    host.AnswerFile(L"table.xls");
    host.OnDialog("KvRename",
                  [](SimDialog& dialog) { dialog.Press("KvExportTab").Press("KvLoadTab").Press("Close"); });
}

static void ArrangeQuick(SimHost& host) {
    ArrangeFiles(host);
    host.AnswerPick({false, {Whole(Bolt(host))}});
    host.AnswerPrompt({sim::PromptAnswer::Kind::kTyped, L"B2"});
}

static void ArrangePick(SimHost& host) {
    ArrangeFiles(host);
    host.AnswerPick({false, {Whole(Bolt(host))}});
}

// Whatever failed: what was on disk finds what it names, and no trial is left.
static void NothingIsMissing(SimHost& host) {
    EXPECT_EQ(MissingIn(host.WorkingDirectory()), std::set<std::wstring>());
    EXPECT_TRUE(HasModelFile(host.WorkingDirectory(), L"bolt.prt"));
    EXPECT_TRUE(HasModelFile(host.WorkingDirectory(), L"bolt.drw"));
}

std::vector<Scenario> RenameScenarios() {
    return {
        CommandScenario("KvRename", ArrangeRun, NothingIsMissing),
        CommandScenario("KvRename", ArrangeBack, NothingIsMissing, "Back"),
        CommandScenario("KvRename", ArrangeTable, NothingIsMissing, "Table"),
        CommandScenario("KvRename", ArrangeRenameWorkbook, NothingIsMissing, "Workbook"),
        CommandScenario("KvMdlRename", ArrangeQuick, NothingIsMissing),
        CommandScenario("KvMdlNameCopy", ArrangePick, NothingIsMissing),
    };
}

}  // namespace test
