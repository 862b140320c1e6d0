// The scenarios of all rooms, and what they share.

#include "support/scenario.h"

#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include "simulator/host/sim_host.h"
#include "support/arrange.h"

namespace test {

using sim::SimHost;
using sim::SimModel;

Scenario CommandScenario(const std::string& command, Arrangement arrange, Arrangement holds,
                         const std::string& variant) {
    const auto act = [command](SimHost& host) { host.Run(command); };
    return {command + variant, std::move(arrange), act, command, false, std::move(holds)};
}

void ArrangePump(SimHost& host) {
    SimModel& pump = host.AddAssembly(L"PUMP");
    SimModel& sub = host.AddAssembly(L"SUB");
    sub.Place(host.AddSheetmetal(L"BOLT").AddSurface({{0, 0, 0}, {1, 2, 3}}));
    pump.Place(sub);
    host.Open(pump);
}

void ArrangePumpWithDrawing(SimHost& host) {
    ArrangePump(host);
    host.AddDrawingFile(L"BOLT", {L"A4", L"A3"});
}

SimModel& Bolt(SimHost& host) {
    return *host.State().models.Find(L"BOLT", sim::ModelKind::kPart);
}

// The setting has to be there before the plug-in starts.
void ArrangeRightClick(SimHost& host) {
    ChangeSetting(L"KvConfig.ini", L"RmbDisable", L"value", L"0");
    host.Initialize();
    ArrangePumpWithDrawing(host);
    host.Select({Whole(Bolt(host))});
}

static std::vector<Scenario> JoinRooms() {
    std::vector<Scenario> all;
    for (const auto room : {HostScenarios, SettingsScenarios, FolderScenarios, ParamsScenarios,
                            ModelDataScenarios, BomScenarios, ExportScenarios, RenameScenarios,
                            DrawingScenarios, AssemblyScenarios, DisplayScenarios}) {
        std::vector<Scenario> scenarios = room();
        std::move(scenarios.begin(), scenarios.end(), std::back_inserter(all));
    }
    return all;
}

const std::vector<Scenario>& Scenarios() {
    static const std::vector<Scenario> scenarios = JoinRooms();
    return scenarios;
}

}  // namespace test
