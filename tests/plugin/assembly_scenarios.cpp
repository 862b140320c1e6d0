// Commands that build assemblies.

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "plugin/assembly_fixture.h"
#include "simulator/host/sim_host.h"
#include "support/arrange.h"
#include "support/scenario.h"

namespace test {

using sim::SimHost;
using sim::SimModel;

// PUMP holds SUB, which is activated; both have a coordinate system. One name of the series is taken on disk.
static void ArrangeActivated(SimHost& host) {
    SimModel& pump = host.AddAssembly(L"PUMP").AddCoordinateSystem(L"ASM_DEF_CSYS");
    SimModel& sub = host.AddAssembly(L"SUB").AddCoordinateSystem(L"ASM_DEF_CSYS");
    pump.Place(host.AddPart(L"BOLT")).Place(sub);
    LayPart(host, L"SUB-1");
    host.Open(pump);
    host.Activate(sub);
}

// Nobody's model gets a second version, unless the host says that there is none of that name.
static void ExpectNothingOverwritten(SimHost& host) {
    if (host.State().report.FaultedFunction() == "ProMdlnameRetrieve") return;
    for (const wchar_t* name : {L"sub-1.prt.2", L"bolt-1.prt.2", L"taken.prt.2"})
        EXPECT_FALSE(HasFile(host, name)) << testing::PrintToString(name);
}

static Scenario NewComponentScenario(const std::string& command) {
    Scenario scenario = CommandScenario(command, [](SimHost& host) {
        UsePartTemplate(host);
        UseTemplate(host, host.AddAssembly(L"START").AddCoordinateSystem(L"ASM_DEF_CSYS"), kAssemblyTemplate);
        UseTemplate(host, host.AddSheetmetal(L"START").AddCoordinateSystem(L"PRT_CSYS_DEF"),
                    kSheetmetalTemplate);
        ArrangeActivated(host);
    });
    scenario.holds = ExpectNothingOverwritten;
    return scenario;
}

std::vector<Scenario> AssemblyScenarios() {
    return {
        NewComponentScenario("NewPart"),
        NewComponentScenario("NewAsm"),
        NewComponentScenario("NewSmt"),
    };
}

}  // namespace test
