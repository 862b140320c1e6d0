// Commands that change relations, units, materials and bend tables.

#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>

#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/plugin_home.h"
#include "support/scenario.h"

namespace test {

using sim::RelationKind;
using sim::SimDialog;
using sim::SimHost;
using sim::SimModel;

using Lines = std::vector<std::wstring>;

static SimModel& Part(SimHost& host, const wchar_t* name) {
    return *host.State().models.Find(name, sim::ModelKind::kPart);
}

// The pump with XTRA, which prefixes leave out, and OTHER, which is no component.
static void ArrangeRelations(SimHost& host) {
    ArrangePump(host);
    host.State().models.current->Place(host.AddPart(L"XTRA").SetRelations({L"x = 1"}));
    host.AddPart(L"OTHER").SetRelations({L"x = 1"});
    Bolt(host).SetRelations({L"a = 1"}).SetRelations({L"b = 1"}, RelationKind::kPost);
}

// BOLT's own lines are still there, and the others were not touched.
static void ExpectRelationsKept(SimHost& host) {
    for (const wchar_t* name : {L"XTRA", L"OTHER"})
        EXPECT_EQ(Part(host, name).Relations().lines, Lines{L"x = 1"});
    EXPECT_EQ(Bolt(host).Relations().lines.front(), L"a = 1");
    EXPECT_EQ(Bolt(host).Relations(RelationKind::kPost).lines.front(), L"b = 1");
}

static Scenario PressInRelations(const std::string& button, const std::wstring& set) {
    const auto arrange = [button, set](SimHost& host) {
        ArrangeRelations(host);
        host.OnDialog("Relations", [button, set](SimDialog& dialog) {
            dialog.Type("InputKeyWords", L"x").Press("CountModels").Choose("OptionRadio", set);
            dialog.Type("RelTxtarea", L"c = 1").Press(button).Press("Close");
        });
    };
    return CommandScenario("KvRelations", arrange, ExpectRelationsKept, button);
}

// All relations are taken away and brought back.
static Scenario RestoreRelations() {
    const auto arrange = [](SimHost& host) {
        ArrangeRelations(host);
        host.AnswerBox(IDYES);
        host.OnDialog("Relations", [](SimDialog& dialog) {
            dialog.Type("InputKeyWords", L"x").Press("ReadCurrent");
            dialog.Type("RelTxtarea", L"").Press("CoverRels").Press("RestoreRels").Press("KvShowReport");
        });
    };
    return CommandScenario(
        "KvRelations", arrange,
        [](SimHost& host) {
            for (const wchar_t* name : {L"XTRA", L"OTHER"})
                EXPECT_EQ(Part(host, name).Relations().lines, Lines{L"x = 1"});
            // Whole, or not at all.
            const Lines& lines = Bolt(host).Relations().lines;
            EXPECT_TRUE(lines.empty() || lines == Lines{L"a = 1"});
        },
        "Restore");
}

static Scenario ApplyUnits(const std::string& units) {
    const auto arrange = [units](SimHost& host) {
        ArrangePump(host);
        host.AddPart(L"OTHER");
        host.OnDialog("SetUnit", [units](SimDialog& dialog) {
            dialog.Choose("UnitRadio", std::wstring(units.begin(), units.end())).Press("ApplyBt");
        });
    };
    return CommandScenario(
        "SetUnit", arrange,
        [](SimHost& host) {
            const SimModel& bolt = Bolt(host);
            const double millimetres = sim::FindBasicUnit(bolt.PrincipalUnits().length)->inMillimetres;
            EXPECT_DOUBLE_EQ(bolt.Surfaces()[0]->box.maximum.z * millimetres, 3);
            EXPECT_EQ(Part(host, L"OTHER").PrincipalUnits().name, L"millimeter Newton Second (mmNs)");
        },
        units);
}

// The file lies in a folder of its own; the option of bend tables names another one.
static void ArrangePartFile(SimHost& host, const std::wstring& name, const char* content) {
    ArrangePump(host);
    host.State().models.current->Place(host.AddSheetmetal(L"PLATE"));
    const std::filesystem::path folder = MakeFolder(host, "data");
    WriteBytes(folder / name, content);
    host.AnswerFile((folder / name).wstring());
    host.State().configOptions[L"PRO_SHEET_MET_DIR"] = {L"C:\\tables"};
}

static void ArrangeMaterial(SimHost& host) {
    ArrangePartFile(host, L"steel.mtl", R"({"format": "hostsim material", "version": 1})");
}

static void ArrangeBendTable(SimHost& host) {
    ArrangePartFile(host, L"steel.bnd", R"({"format": "hostsim bend table", "version": 1})");
}

// The option is not set before: it stays when the host denies what is selected.
static Scenario WithSelection(Scenario scenario, const std::vector<int>& types) {
    scenario.name += "Selected";
    scenario.arrange = [arrange = scenario.arrange, types](SimHost& host) {
        arrange(host);
        host.State().configOptions.erase(L"PRO_SHEET_MET_DIR");
        SimModel& sub = *host.State().models.Find(L"SUB", sim::ModelKind::kAssembly);
        std::vector<sim::Pick> picks = {Whole(sub)};
        for (const int type : types) picks.push_back(ItemOf(*host.State().models.current, type, 1));
        host.Select(picks);
    };
    // What is not selected gets nothing, unless the host says that nothing is.
    scenario.holds = [holds = scenario.holds](SimHost& host) {
        if (holds) holds(host);
        if (host.State().report.FaultedFunction() == "ProSelbufferSelectionsGet") return;
        EXPECT_TRUE(Part(host, L"PLATE").CurrentMaterial().empty());
        EXPECT_TRUE(Part(host, L"PLATE").BendTable().empty());
    };
    return scenario;
}

static Scenario Material() {
    return CommandScenario("SetMat", ArrangeMaterial, [](SimHost& host) {
        // A current material is one that was read.
        for (const wchar_t* name : {L"BOLT", L"PLATE"}) {
            const SimModel& part = Part(host, name);
            EXPECT_TRUE(part.CurrentMaterial().empty() || part.FindMaterial(L"steel") != nullptr);
        }
    });
}

static void NoMaterialIsRead(SimHost& host) {
    EXPECT_TRUE(Part(host, L"PLATE").Materials().empty());
}

static Scenario BendTable() {
    return CommandScenario("SetBendTable", ArrangeBendTable, NoMaterialIsRead);
}

// Nothing of sheet metal is selected. The option is not set before, for it stays as it is then.
static void ArrangeNoSheetmetal(SimHost& host) {
    ArrangeBendTable(host);
    host.State().configOptions.erase(L"PRO_SHEET_MET_DIR");
    SimModel& nut = host.AddPart(L"NUT");
    host.State().models.current->Place(nut);
    host.Select({Whole(nut)});
}

std::vector<Scenario> ModelDataScenarios() {
    constexpr int kFeature = 3;
    return {
        PressInRelations("AddRels", L"init"),
        PressInRelations("AddRelsAndNoRepeat", L"after"),
        RestoreRelations(),
        ApplyUnits("IPS"),
        ApplyUnits("mmgs"),
        Material(),
        WithSelection(Material(), {}),
        BendTable(),
        WithSelection(BendTable(), {kFeature}),
        CommandScenario("SetBendTable", ArrangeNoSheetmetal, NoMaterialIsRead, "NoneSelected"),
    };
}

}  // namespace test
