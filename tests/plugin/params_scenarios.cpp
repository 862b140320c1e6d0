// Commands that change parameters of many models.

#include <string>
#include <vector>

#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/scenario.h"

namespace test {

using sim::SimDialog;
using sim::SimHost;

// One press in the dialog KvParams; the parameter MAT exists in BOLT and nowhere else.
static Scenario PressInParams(const std::string& button, const std::wstring& models = L"AsmAndPart") {
    const auto arrange = [button, models](SimHost& host) {
        ArrangePumpWithDrawing(host);
        Bolt(host).SetParameter(L"MAT", std::wstring(L"old"));
        host.OnDialog("KvParams", [button, models](SimDialog& dialog) {
            dialog.Choose("TypeRadio", models).Type("ParaName", L"MAT").Type("ParaValue", L"zinc");
            dialog.Type("InputKeyWords", L"x").Type("outlinePname", L"MAT").Type("shSizePname", L"MAT");
            dialog.Press(button).Press("Close");
        });
    };
    return CommandScenario("KvParams", arrange, button);
}

// The same under a manufacturing model.
static Scenario InMould(Scenario scenario) {
    scenario.name += "InMould";
    scenario.arrange = [arrange = scenario.arrange](SimHost& host) {
        arrange(host);
        host.Open(host.AddManufacturing(L"MFG", *host.State().models.current));
    };
    return scenario;
}

// BOLT is an instance whose generic has no column yet.
static void ArrangeCount(SimHost& host) {
    ChangeSetting(L"KvConfig.ini", L"KvCountForInstance", L"value", L"true");
    ArrangePump(host);
    Bolt(host).MakeInstanceOf(host.AddSheetmetal(L"GENERIC"));
}

std::vector<Scenario> ParamsScenarios() {
    return {
        PressInParams("Add"),
        InMould(PressInParams("Update")),
        PressInParams("Delete", L"Smt"),
        PressInParams("KvOutline"),
        PressInParams("KvSheetSize"),
        CommandScenario("KvMdlCount", ArrangeCount),
    };
}

}  // namespace test
