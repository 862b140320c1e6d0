// Commands that work on folders and files.

#include <vector>

#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/scenario.h"

namespace test {

using sim::SimHost;

static void ArrangeBackup(SimHost& host) {
    ArrangePumpWithDrawing(host);
    host.AnswerFolder(MakeFolder(host, "backup").wstring());
}

// The model lies elsewhere than the host works.
static void ArrangeOtherFolder(SimHost& host) {
    ArrangePump(host);
    EnterFolder(host, "elsewhere");
    host.AllowDirectoryChange();
}

// The second right-click brings the command.
static Scenario OpenDrawing() {
    Scenario scenario = CommandScenario("KvOpenDrw", [](SimHost& host) {
        ArrangeRightClick(host);
        RightClick(host);
        RightClick(host);
    });
    scenario.startsPlugin = true;
    return scenario;
}

std::vector<Scenario> FolderScenarios() {
    return {
        CommandScenario("KvOpenDir", [](SimHost&) {}),
        CommandScenario("KvSetDirectory", ArrangeOtherFolder),
        CommandScenario("KvBackup", ArrangeBackup),
        OpenDrawing(),
    };
}

}  // namespace test
