// Commands that change parameters of many models.

#include <algorithm>
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

// Whether a model of that name in memory has the parameter.
static bool HasParameter(SimHost& host, const std::wstring& model, std::wstring_view parameter) {
    return std::ranges::any_of(host.State().models.All(), [&](const sim::SimModel* one) {
        return one->Name() == model && one->HasParameter(parameter);
    });
}

// XTRA is excluded by its prefix, OTHER is no component. Settings that the user did not touch are kept.
static void ExpectOthersUnchanged(SimHost& host) {
    EXPECT_EQ(ReadSettings(L"KvParams.ini", L"KvOutlineNum", L"content"), L"4");
    EXPECT_EQ(ReadSettings(L"KvParams.ini", L"KvOutlineOrder", L"content"), L"1");
    for (const wchar_t* name : {L"XTRA", L"OTHER"})
        EXPECT_TRUE(host.State().models.Find(name, sim::ModelKind::kPart)->Parameters().empty())
            << testing::PrintToString(name);
}

// The report calls no model done that is not.
static void ExpectMaterial(SimHost& host, bool has) {
    ExpectOthersUnchanged(host);
    // That there is no surface has to be believed, and a component whose state cannot be read counts as none.
    const std::string& faulted = host.State().report.FaultedFunction();
    if (faulted == "ProSolidFeatVisit" || faulted == "ProSolidSurfaceVisit") return;
    if (faulted.starts_with("ProFeature") || faulted == "ProAsmcompMdlGet") return;
    for (const std::wstring& model : LastReport(host).Done(L"模型"))
        EXPECT_EQ(HasParameter(host, model, L"MAT"), has) << testing::PrintToString(model);
}

// One press in the dialog KvParams; the parameter MAT exists in BOLT and nowhere else.
static Scenario PressInParams(const std::string& button, const std::wstring& models = L"AsmAndPart") {
    const auto arrange = [button, models](SimHost& host) {
        ArrangePumpWithDrawing(host);
        ChangeSetting(L"KvParams.ini", L"KvOutlineNum", L"content", L"4");
        ChangeSetting(L"KvParams.ini", L"KvOutlineOrder", L"content", L"1");
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
    const bool deletes = button == "Delete";
    const auto holds = [deletes](SimHost& host) { ExpectMaterial(host, !deletes); };
    return CommandScenario("KvParams", arrange, holds, button);
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

// The top assembly gets no number, and the report calls no model done without one.
static void ExpectCounts(SimHost& host) {
    EXPECT_FALSE(HasParameter(host, L"PUMP", L"数量"));
    for (const std::wstring& model : LastReport(host).Done(L"模型"))
        EXPECT_TRUE(model.empty() || HasParameter(host, model, L"数量")) << testing::PrintToString(model);
}

std::vector<Scenario> ParamsScenarios() {
    return {
        PressInParams("Add"),
        InMould(PressInParams("Update")),
        PressInParams("Delete", L"Smt"),
        PressInParams("KvOutline"),
        PressInParams("KvSheetSize"),
        CommandScenario("KvMdlCount", ArrangeCount, ExpectCounts),
    };
}

}  // namespace test
