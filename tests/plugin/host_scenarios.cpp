// Start-up, right-click menus, and the commands of the frame itself.

#include <vector>

#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/scenario.h"

namespace test {

using sim::SimDialog;
using sim::SimHost;
using sim::SimModel;

static void ArrangeAbout(SimHost& host) {
    host.OnDialog("AboutKv", [](SimDialog& dialog) { dialog.Press("OK"); });
}

static void ArrangeForTest(SimHost& host) {
    ArrangePump(host);
    SimModel& bolt = Bolt(host).AddFeature(917);
    host.AnswerPick({false, {ItemOf(bolt, 3, bolt.Features()[0].id)}});
}

std::vector<Scenario> HostScenarios() {
    const auto wantRightClicks = [](SimHost&) {
        ChangeSetting(L"KvConfig.ini", L"RmbDisable", L"value", L"0");
    };
    const auto rightClick = [](SimHost& host) { RightClick(host); };
    const auto rightClickedBefore = [](SimHost& host) {
        ArrangeRightClick(host);
        RightClick(host);
    };
    return {
        {"StartUp", wantRightClicks, [](SimHost& host) { host.Initialize(); }, {}, true},
        {"FirstRightClick", ArrangeRightClick, rightClick, {}, true},
        {"LaterRightClick", rightClickedBefore, rightClick, {}, true},
        CommandScenario("AboutKv", ArrangeAbout),
        CommandScenario("KvVersion", [](SimHost&) {}),
        CommandScenario("ForTest", ArrangeForTest),
    };
}

}  // namespace test
