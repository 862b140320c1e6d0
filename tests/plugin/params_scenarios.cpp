// Commands that change parameters of many models.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/scenario.h"

namespace test {

using sim::SimDialog;
using sim::SimHost;

// XTRA is excluded by its prefix, OTHER is no component.
static void ExpectOthersUnchanged(SimHost& host) {
    for (const wchar_t* name : {L"XTRA", L"OTHER"})
        EXPECT_TRUE(host.State().models.Find(name, sim::ModelKind::kPart)->Parameters().empty())
            << testing::PrintToString(name);
}

// One press in the dialog KvParams; the parameter MAT exists in BOLT and nowhere else.
static Scenario PressInParams(const std::string& button, const std::wstring& models = L"AsmAndPart") {
    const auto arrange = [button, models](SimHost& host) {
        ArrangePumpWithDrawing(host);
        host.State().models.current->Place(host.AddPart(L"XTRA"));
        host.AddPart(L"OTHER");
        Bolt(host).SetParameter(L"MAT", std::wstring(L"old"));
        host.OnDialog("KvParams", [button, models](SimDialog& dialog) {
            dialog.Choose("TypeRadio", models).Type("ParaName", L"MAT").Type("ParaValue", L"zinc");
            dialog.Type("InputKeyWords", L"x")
                .Type("InputKeyWords2", L"x")
                .Type("outlinePname", L"MAT")
                .Type("shSizePname", L"MAT");
            dialog.Press(button).Press("Close");
        });
    };
    Scenario scenario = CommandScenario("KvParams", arrange, button);
    scenario.holds = ExpectOthersUnchanged;
    return scenario;
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
