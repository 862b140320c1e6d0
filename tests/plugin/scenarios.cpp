// The smallest workspace for every built command in which it does all of its work.

#include "support/scenario.h"

#include <filesystem>
#include <string>
#include <utility>
#include <vector>

#include "host/sim_host.h"
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

void ArrangeForTest(SimHost& host) {
    ArrangePump(host);
    SimModel& bolt = Bolt(host).AddFeature(917);
    host.AnswerPick({false, {ItemOf(bolt, 3, bolt.Features()[0].id)}});
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
