// The smallest workspace for every built command in which it does all of its work.

#include "support/scenario.h"

#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

#include "host/sim_host.h"
#include "support/arrange.h"
#include "support/plugin_home.h"

namespace test {

namespace {

using sim::SimDialog;
using sim::SimHost;
using sim::SimModel;

// PUMP holds SUB, which holds BOLT with one surface.
void ArrangePump(SimHost& host) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& sub = host.AddAssembly(L"SUB");
    sub.Place(host.AddPart(L"BOLT").AddSurface({{0, 0, 0}, {1, 2, 3}}));
    pump.Place(sub);
    host.Open(pump);
}

void ArrangePumpWithDrawing(SimHost& host) {
    ArrangePump(host);
    host.AddDrawingFile(L"BOLT", {L"A4", L"A3"});
}

void RunCommand(SimHost& host, std::string_view command) { host.Run(command); }

std::function<void(SimHost&)> Running(std::string command) {
    return [command = std::move(command)](SimHost& host) { RunCommand(host, command); };
}

// One press in the dialog KvParams; the parameter MAT exists in BOLT and nowhere else.
Scenario KvParamsScenario(const std::string& button, bool throughManufacturing = false) {
    const auto arrange = [button, throughManufacturing](SimHost& host) {
        ArrangePumpWithDrawing(host);
        SimModel& bolt = *host.session().models.Find(L"BOLT", sim::ModelKind::kPart);
        bolt.SetParameter(L"MAT", std::wstring(L"old"));
        SimModel& pump = *host.session().models.Find(L"PUMP", sim::ModelKind::kAssembly);
        if (throughManufacturing) host.Open(host.AddManufacturing(L"MFG", pump));
        host.OnDialog("KvParams", [button](SimDialog& dialog) {
            dialog.Type("ParaName", L"MAT").Type("ParaValue", L"zinc").Type("InputKeyWords", L"x");
            dialog.Type("outlinePname", L"MAT").Type("shSizePname", L"MAT");
            dialog.Press(button).Press("Close");
        });
    };
    return {"KvParams" + button + (throughManufacturing ? "InMould" : ""), arrange, Running("KvParams")};
}

Scenario SheetmetalScenario() {
    const auto arrange = [](SimHost& host) {
        SimModel& pump = host.AddAssembly(L"PUMP");
        pump.Place(host.AddSheetmetal(L"PLATE"));
        host.Open(pump);
        host.OnDialog("KvParams", [](SimDialog& dialog) {
            dialog.Choose("TypeRadio", L"Smt").Choose("PtypeOption", L"实数").Type("ParaName", L"T");
            dialog.Type("ParaValue", L"1.5").Press("Add");
        });
    };
    return {"KvParamsAddToSheetmetal", arrange, Running("KvParams")};
}

void ArrangeBackup(SimHost& host) {
    ArrangePumpWithDrawing(host);
    host.AnswerFolder(MakeFolder(host, "backup").wstring());
}

void ArrangeConfig(SimHost& host) {
    const std::filesystem::path formats = MakeFolder(host, "formats");
    WriteBytes(formats / "a3.drw", "");
    host.session().configOptions[L"PRO_FORMAT_DIR"] = {formats.wstring()};
    host.AnswerFile(L"a3.drw");
    host.OnDialog("KvConfig", [](SimDialog& dialog) { dialog.Press("SelA3Prt").Press("save").Close(); });
}

void ArrangeForTest(SimHost& host) {
    ArrangePump(host);
    SimModel& bolt = *host.session().models.Find(L"BOLT", sim::ModelKind::kPart);
    bolt.AddFeature(917);
    host.AnswerPick({false, {ItemOf(bolt, 3, bolt.Features()[0].id)}});
}

// The popup scenarios start the plug-in while they are arranged: the setting has to be there before.
void ArrangeRightClick(SimHost& host) {
    ChangeSetting(L"KvConfig.ini", L"RmbDisable", L"value", L"0");
    host.Initialize();
    ArrangePumpWithDrawing(host);
    host.Select({Whole(*host.session().models.Find(L"BOLT", sim::ModelKind::kPart))});
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
    std::vector<Scenario> scenarios = {
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
        {"AboutKv", [](SimHost& host) { host.OnDialog("AboutKv", [](SimDialog& dialog) { dialog.Press("OK"); }); },
         Running("AboutKv")},
        {"KvVersion", nothing, Running("KvVersion")},
        {"ForTest", ArrangeForTest, Running("ForTest")},
        SheetmetalScenario(),
        KvParamsScenario("Add", true),
    };
    for (const char* button : {"Add", "Update", "Delete", "KvOutline", "KvSheetSize"})
        scenarios.push_back(KvParamsScenario(button));
    return scenarios;
}

}  // namespace

const std::vector<Scenario>& Scenarios() {
    static const std::vector<Scenario> scenarios = MakeScenarios();
    return scenarios;
}

}  // namespace test
