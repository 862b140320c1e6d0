// Commands that change what the window shows.

#include <array>
#include <cmath>
#include <filesystem>
#include <map>
#include <string>
#include <vector>

#include <ProObjects.h>
#include <gtest/gtest.h>

#include <windows.h>

#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/scenario.h"

namespace test {

using sim::Feature;
using sim::ModelKind;
using sim::PickAnswer;
using sim::SimHost;
using sim::SimModel;

static SimModel& ModelOf(SimHost& host, std::wstring_view name, ModelKind kind) {
    return *host.State().models.Find(name, kind);
}

// PUMP holds SUB with BOLT in it, and a NUT that is hidden.
static void ArrangeHidden(SimHost& host) {
    ArrangePump(host);
    ModelOf(host, L"PUMP", ModelKind::kAssembly).Place(host.AddPart(L"NUT"), {.isHidden = true});
}

static void SelectBolt(SimHost& host) {
    host.Select({{&Bolt(host), 0, 0, {1, 1}}});
}

// Only parts are ever hidden.
static void NoAssemblyIsHidden(SimHost& host) {
    for (const SimModel* model : host.State().models.All())
        for (const Feature& feature : model->Features())
            EXPECT_FALSE(feature.isHidden && feature.component != nullptr &&
                         feature.component->Kind() == ModelKind::kAssembly);
}

// But that memory ran out on the walk.
static void NothingIsShownToTheUser(SimHost& host) {
    for (const auto& box : host.Boxes()) EXPECT_EQ(box.text, L"ProArray Alloc error");
}

static void OnlyPartsAreHidden(SimHost& host) {
    NoAssemblyIsHidden(host);
    NothingIsShownToTheUser(host);
}

// What was selected before stays, or is replaced by what was picked; never both.
static Scenario BoxSelection(const std::string& command, int type) {
    const auto arrange = [type](SimHost& host) {
        ArrangeHidden(host);
        SelectBolt(host);
        SimModel& picked = type == 0 ? ModelOf(host, L"NUT", ModelKind::kPart) : Bolt(host);
        const std::vector<int> path = type == 0 ? std::vector<int>{2} : std::vector<int>{1, 1};
        host.AnswerPick({false, {{&picked, type, 1, path}}});
    };
    return CommandScenario(command, arrange, [](SimHost& host) {
        NothingIsShownToTheUser(host);
        EXPECT_LE(host.State().desk.selected.size(), 1u);
    });
}

// Whatever becomes see-through keeps its colour.
static void ColoursStay(SimHost& host) {
    NothingIsShownToTheUser(host);
    const sim::Look usual;
    for (const SimModel* model : host.State().models.All()) {
        EXPECT_EQ(model->look.value_or(usual).colour, usual.colour);
        for (const auto& [path, look] : model->occurrenceLooks) EXPECT_EQ(look.colour, usual.colour);
    }
}

static Scenario SeeThrough(const std::string& command, int type) {
    const auto arrange = [type](SimHost& host) {
        ArrangeHidden(host);
        host.AnswerPick({false, {{&Bolt(host), type, 1, {1, 1}}}});
    };
    return CommandScenario(command, arrange, ColoursStay);
}

// BOLT is red and half clear, NUT as the host draws it.
static void ArrangeColours(SimHost& host) {
    ArrangeHidden(host);
    Bolt(host).look = sim::Look{.transparency = 0.5, .colour = {1, 0, 0}};
    host.AnswerBox(IDYES);
}

// Nothing but colours changes, and none before the old ones are on disk.
static void OnlyColoursChange(SimHost& host) {
    // That a part has no look of its own has to be believed.
    if (host.State().report.FaultedFunction() == "ProSurfaceSideAppearancepropsGet") return;
    const sim::Look usual;
    bool isChanged = false;
    for (const SimModel* model : host.State().models.All()) {
        const bool isBolt = model->Name() == L"BOLT";
        const std::array<double, 3> before = isBolt ? std::array<double, 3>{1, 0, 0} : usual.colour;
        sim::Look look = model->look.value_or(usual);
        isChanged = isChanged || look.colour != before;
        look.colour = usual.colour;
        sim::Look expected;
        expected.transparency = isBolt ? 0.5 : 0;
        EXPECT_EQ(look, expected) << testing::PrintToString(model->Name());
    }
    const std::filesystem::path old = host.State().user.localData / "Korvane" / "colors";
    EXPECT_TRUE(!isChanged || !std::filesystem::is_empty(old));
}

// FRONT is the host's own, KV_TOP from an earlier run.
static void ArrangeViews(SimHost& host, const std::wstring& automatic, bool viewsStay) {
    ChangeSetting(L"KvConfig.ini", L"TweViewsUseAutoMainView", L"value", automatic);
    ArrangePump(host);
    SimModel& pump = *host.State().models.current;
    for (const wchar_t* name : {L"FRONT", L"KV_TOP"}) pump.savedViews[name] = {name, sim::IdentityMatrix()};
    host.State().strict.storedViewStays = viewsStay;
}

static Scenario Views(const std::string& variant, const std::wstring& automatic, bool viewsStay) {
    const auto arrange = [=](SimHost& host) { ArrangeViews(host, automatic, viewsStay); };
    const auto holds = [](SimHost& host) {
        const SimModel& pump = *host.State().models.current;
        EXPECT_EQ(pump.savedViews.at(L"FRONT").orientation, sim::IdentityMatrix());
        for (const auto& [name, view] : pump.savedViews)
            EXPECT_TRUE(name == L"FRONT" || name.starts_with(L"KV_")) << testing::PrintToString(name);
        // Nothing new: the window shows what it showed.
        const bool anyNew = pump.savedViews.size() > 2 || !pump.savedViews.contains(L"KV_TOP") ||
                            pump.savedViews.at(L"KV_TOP").orientation != sim::IdentityMatrix();
        const bool mayTurn = host.State().report.FaultedFunction() == "ProViewMatrixSet";
        const double depth = host.State().desk.ViewOf(pump)[2][2];
        EXPECT_TRUE(anyNew || mayTurn || std::abs(depth - 0.5 / std::sqrt(3)) < 1e-9) << depth;
    };
    return CommandScenario("TweViews", arrange, holds, variant);
}

static void ArrangeSelected(SimHost& host) {
    ArrangeHidden(host);
    SelectBolt(host);
}

std::vector<Scenario> DisplayScenarios() {
    return {
        CommandScenario("KvIsolate", ArrangeSelected, OnlyPartsAreHidden),
        CommandScenario("KvHideReverse", ArrangeHidden, OnlyPartsAreHidden),
        CommandScenario("KvShowAllComp", ArrangeHidden, OnlyPartsAreHidden),
        BoxSelection("BoxSel", 0),
        BoxSelection("KvBoxSelSur", PRO_SURFACE),
        CommandScenario("KvClearAllColor", ArrangePump, NothingIsShownToTheUser),
        SeeThrough("KvTransparent", 0),
        SeeThrough("SurfTransparent", PRO_SURFACE),
        CommandScenario("KvNormalView", ArrangePump, NothingIsShownToTheUser),
        CommandScenario("BatchColor", ArrangeColours, OnlyColoursChange),
        Views("Automatic", L"1", false),
        Views("FromTheScreen", L"0", true),
    };
}

}  // namespace test
