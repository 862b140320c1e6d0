// Commands that change what the window shows.

#include <map>
#include <string>
#include <vector>

#include <ProObjects.h>
#include <gtest/gtest.h>

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
    };
}

}  // namespace test
