// The smallest workspace for every built command in which it does all of its work.

#include "support/scenario.h"

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/plugin_home.h"

namespace test {

namespace {

using sim::SimDialog;
using sim::SimHost;
using sim::SimModel;

// PUMP holds SUB, which holds BOLT, a sheet-metal part with one surface.
void ArrangePump(SimHost& host) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& sub = host.AddAssembly(L"SUB");
    sub.Place(host.AddSheetmetal(L"BOLT").AddSurface({{0, 0, 0}, {1, 2, 3}}));
    pump.Place(sub);
    host.Open(pump);
}

SimModel& Bolt(SimHost& host) {
    return *host.State().models.Find(L"BOLT", sim::ModelKind::kPart);
}

void ArrangePumpWithDrawing(SimHost& host) {
    ArrangePump(host);
    host.AddDrawingFile(L"BOLT", {L"A4", L"A3"});
}

std::function<void(SimHost&)> Running(std::string command) {
    return [command = std::move(command)](SimHost& host) { host.Run(command); };
}

// One press in the dialog KvParams; the parameter MAT exists in BOLT and nowhere else.
Scenario KvParamsScenario(const std::string& button, const std::wstring& models = L"AsmAndPart") {
    const auto arrange = [button, models](SimHost& host) {
        ArrangePumpWithDrawing(host);
        Bolt(host).SetParameter(L"MAT", std::wstring(L"old"));
        host.OnDialog("KvParams", [button, models](SimDialog& dialog) {
            dialog.Choose("TypeRadio", models).Type("ParaName", L"MAT").Type("ParaValue", L"zinc");
            dialog.Type("InputKeyWords", L"x").Type("outlinePname", L"MAT").Type("shSizePname", L"MAT");
            dialog.Press(button).Press("Close");
        });
    };
    return {"KvParams" + button, arrange, Running("KvParams")};
}

// The same under a manufacturing model.
Scenario InMould(Scenario scenario) {
    scenario.name += "InMould";
    scenario.arrange = [arrange = scenario.arrange](SimHost& host) {
        arrange(host);
        host.Open(host.AddManufacturing(L"MFG", *host.State().models.current));
    };
    return scenario;
}

void ArrangeBackup(SimHost& host) {
    ArrangePumpWithDrawing(host);
    host.AnswerFolder(MakeFolder(host, "backup").wstring());
}

void ArrangeConfig(SimHost& host) {
    const std::filesystem::path format = MakeFolder(host, "formats") / "a3.drw";
    WriteBytes(format, "");
    host.State().configOptions[L"PRO_FORMAT_DIR"] = {format.parent_path().wstring()};
    host.AnswerFile(format.wstring());
    host.OnDialog("KvConfig", [](SimDialog& dialog) { dialog.Press("SelA3Prt").Press("save").Close(); });
}

// One drawing of two sheets in the working directory, and the part that it shows.
void ArrangeDrawing(SimHost& host) {
    SimModel& bolt = host.AddPart(L"BOLT");
    SimModel& drawing = host.AddDrawing(L"BOLT", {L"A4", L"A3"}, {&bolt});
    host.Store(drawing.SetParameter(L"MAT", std::wstring(L"zinc")));
    host.Open(bolt);
}

void ArrangeOpenDrawing(SimHost& host) {
    ArrangeDrawing(host);
    host.Open(*host.Retrieve(L"BOLT", sim::ModelKind::kDrawing));
}

// The dialog KvExport with these boxes ticked.
Scenario KvExportScenario(const std::string& name, const std::vector<std::string>& formats, bool oneFile) {
    const auto arrange = [formats, oneFile](SimHost& host) {
        ArrangeDrawing(host);
        host.OnDialog("KvExport", [formats, oneFile](SimDialog& dialog) {
            dialog.Check("DWGCheck", false).Check("PDFCheck", false).Check("MultiSheetCheck", oneFile);
            for (const std::string& format : formats) dialog.Check(format);
            dialog.Type("Export_name", L"MAT,sheetsize").Press("selAll").Press("ApplyBt");
        });
    };
    return {"KvExport" + name, arrange, Running("KvExport")};
}

void ArrangeExportTable(SimHost& host) {
    ArrangeDrawing(host);
    host.Open(host.AddAssembly(L"PUMP").Place(*host.State().models.current));
    ChangeSetting(L"KvDrawingsIni.ini", L"tableCols", L"content", L"MAT");
    host.OnDialog("KvExport", [](SimDialog& dialog) {
        dialog.Press("selAll").Press("reverseSel").Press("ApplyBt").Press("KvLoadParams");
        dialog.Press("KvLoadDrwInfo").Press("KvUpdateIni").Choose("SelDirRadio", L"curMdl").Press("Close");
    });
}

// An assembly of one part, and the folder that its files go to.
void ArrangeAssemblyExport(SimHost& host) {
    host.Open(host.AddAssembly(L"PUMP").Place(host.AddPart(L"BOLT")));
    host.AnswerFolder(MakeFolder(host, "out").wstring());
}

void ArrangeIgesExport(SimHost& host) {
    ArrangeAssemblyExport(host);
    host.OnDialog("KvExIgs", [](SimDialog& dialog) { dialog.Press("KvExIgsAct").Press("Close"); });
}

void ArrangeForTest(SimHost& host) {
    ArrangePump(host);
    SimModel& bolt = Bolt(host).AddFeature(917);
    host.AnswerPick({false, {ItemOf(bolt, 3, bolt.Features()[0].id)}});
}

// One list of two rows and two columns, a double click, and the other list or the workbook.
void ArrangeBom(SimHost& host, bool exports) {
    WriteSettings(L"KvBom.ini",
                  L"[tableCols_sum]\r\ncontent=模型名称,MAT\r\n[tableCols_level]\r\ncontent=层级2\r\n");
    ArrangePump(host);
    Bolt(host).SetParameter(L"MAT", std::wstring(L"zinc"));
    host.Spreadsheet().Install();
    if (exports) host.AnswerFile((MakeFolder(host, "boms") / "pump.xlsx").wstring());
    host.OnDialog("KvBom", [exports](SimDialog& dialog) {
        if (exports) {
            dialog.Press("KvExportBom");
        } else {
            if (!dialog.Rows("bom_list").empty()) dialog.DoubleClick("bom_list", "1", "num");
            dialog.Choose("BomRadio", L"LevelBom").Press("KvLoadBom").Press("KvOpenBomIni");
        }
        dialog.Press("Close");
    });
}

// BOLT is an instance whose generic has no column yet.
void ArrangeCount(SimHost& host) {
    ChangeSetting(L"KvConfig.ini", L"KvCountForInstance", L"value", L"true");
    ArrangePump(host);
    Bolt(host).MakeInstanceOf(host.AddSheetmetal(L"GENERIC"));
}

// The popup scenarios start the plug-in while they are arranged: the setting has to be there before.
void ArrangeRightClick(SimHost& host) {
    ChangeSetting(L"KvConfig.ini", L"RmbDisable", L"value", L"0");
    host.Initialize();
    ArrangePumpWithDrawing(host);
    host.Select({Whole(Bolt(host))});
}

void ArrangeLastDirectory(SimHost& host) {
    ChangeSetting(L"KvConfig.ini", L"SetLastDir", L"value", L"1");
    WriteBytes(SettingsFile(L"korvane.ini"), Encode936(MakeFolder(host, L"图纸").wstring()));
}

std::vector<Scenario> MakeScenarios() {
    const auto nothing = [](SimHost&) {};
    const auto rightClick = [](SimHost& host) { RightClick(host); };
    const auto secondRightClick = [](SimHost& host) {
        ArrangeRightClick(host);
        RightClick(host);
    };
    const auto openDrawing = [secondRightClick](SimHost& host) {
        secondRightClick(host);
        RightClick(host);
    };
    return {
        {"StartUp", [](SimHost&) { ChangeSetting(L"KvConfig.ini", L"RmbDisable", L"value", L"0"); },
         [](SimHost& host) { host.Initialize(); }, true},
        {"FirstRightClick", ArrangeRightClick, rightClick, true},
        {"LaterRightClick", secondRightClick, rightClick, true},
        {"KvOpenDrw", openDrawing, Running("KvOpenDrw"), true},
        {"Timer", ArrangeLastDirectory, [](SimHost& host) { host.FireTimers(); }},
        {"Termination", nothing, [](SimHost& host) { host.Terminate(); }},
        {"KvOpenDir", nothing, Running("KvOpenDir")},
        {"KvSetDirectory", ArrangePump, Running("KvSetDirectory")},
        {"KvBackup", ArrangeBackup, Running("KvBackup")},
        {"KvConfig", ArrangeConfig, Running("KvConfig")},
        {"AboutKv",
         [](SimHost& host) { host.OnDialog("AboutKv", [](SimDialog& dialog) { dialog.Press("OK"); }); },
         Running("AboutKv")},
        {"ForTest", ArrangeForTest, Running("ForTest")},
        {"KvBomLists", [](SimHost& host) { ArrangeBom(host, false); }, Running("KvBom")},
        {"KvBomExport", [](SimHost& host) { ArrangeBom(host, true); }, Running("KvBom")},
        {"KvMdlCount", ArrangeCount, Running("KvMdlCount")},
        KvExportScenario("BySheet", {"DWGCheck", "PDFCheck"}, false),
        KvExportScenario("OneFile", {"DXFCheck", "PDFOptionCheck", "PDFCheck", "STPCheck"}, true),
        {"KvExportTable", ArrangeExportTable, Running("KvExport")},
        {"KvExportDwg", ArrangeOpenDrawing, Running("KvExportDwg")},
        {"KvExportPdf", ArrangeOpenDrawing, Running("KvExportPdf")},
        {"KvExportStp", ArrangeDrawing, Running("KvExportStp")},
        {"KvExStp", ArrangeAssemblyExport, Running("KvExStp")},
        {"KvExSat", ArrangeAssemblyExport, Running("KvExSat")},
        {"KvExIgs", ArrangeIgesExport, Running("KvExIgs")},
        KvParamsScenario("Add"),
        InMould(KvParamsScenario("Update")),
        KvParamsScenario("Delete", L"Smt"),
        KvParamsScenario("KvOutline"),
        KvParamsScenario("KvSheetSize"),
    };
}

}  // namespace

const std::vector<Scenario>& Scenarios() {
    static const std::vector<Scenario> scenarios = MakeScenarios();
    return scenarios;
}

}  // namespace test
