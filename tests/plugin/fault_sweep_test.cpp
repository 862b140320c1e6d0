// Every scenario with each of its host calls failing in turn, and with each of the plug-in's allocations
// failing.
//
// Whatever fails, the plug-in must not crash, not misuse the host, and leave nothing behind: no array, string
// or dialog open, no directory or option changed.

#include <cstdio>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>

#include "simulator/host/sim_host.h"
#include "simulator/windows/plugin_heap.h"
#include "support/plugin_home.h"
#include "support/scenario.h"

namespace {

using sim::Fault;
using sim::HostSetup;
using sim::SimHost;
using test::Scenario;

// What is being tried, for the line that is printed when the process dies over it.
std::string attempt;

LONG WINAPI NameTheAttempt(EXCEPTION_POINTERS*) {
    std::fprintf(stderr, "crashed in: %s\n", attempt.c_str());
    std::fflush(stderr);
    return EXCEPTION_CONTINUE_SEARCH;
}

struct HostCall {
    std::string function;
    std::vector<ProError> failures;
};

struct CleanRun {
    std::vector<HostCall> calls;
    long long allocations = 0;
};

HostSetup SetupFor(const Scenario& scenario) {
    HostSetup setup;
    setup.initialize = !scenario.startsPlugin;
    return setup;
}

CleanRun RunClean(const Scenario& scenario) {
    test::RestoreSettings();
    SimHost host(SetupFor(scenario));
    scenario.arrange(host);
    host.State().report.ResetCalls();
    host.State().report.SetTracing(true);
    sim::ResetPluginHeap();
    scenario.act(host);
    CleanRun run;
    for (const sim::CallRecord& call : host.State().report.Trace())
        run.calls.push_back({call.site->name, call.site->failures});
    run.allocations = sim::PluginHeap().allocations;
    return run;
}

// What follows from the fault alone, whatever the plug-in does.
struct Excuse {
    const char* faulted;
    const char* problem;
};

constexpr Excuse kExcuses[] = {
    // Changing back is the plug-in's duty; that the host refuses it is not the plug-in's fault.
    {"ProDirectoryChange", "the working directory was left"},
    {"ProDrawingCurrentSheetSet", "was left on sheet"},
    // The access rule answers "not available" to a mode that cannot be read, as it must.
    {"ProModeCurrentGet", "is not available"},
    // Every row is registered whatever became of the menu.
    {"ProMenubarMenuAdd", "there is no menu"},
};

bool IsExcused(const std::string& problem, const std::string& faulted) {
    for (const Excuse& excuse : kExcuses)
        if (faulted == excuse.faulted && problem.find(excuse.problem) != std::string::npos) return true;
    return false;
}

template <typename Arm>
void RunWith(const Scenario& scenario, const std::string& what, Arm arm) {
    attempt = scenario.name + ", " + what;
    test::RestoreSettings();
    SimHost host(SetupFor(scenario));
    scenario.arrange(host);
    arm(host);
    scenario.act(host);
    host.State().report.DisarmAll();
    sim::FailPluginAllocation(0);
    host.ForgetAnswers();
    for (const std::string& problem : host.TakeProblems())
        if (!IsExcused(problem, host.State().report.FaultedFunction()))
            ADD_FAILURE() << attempt << ": " << problem;
}

class FaultSweep : public testing::TestWithParam<Scenario> {
protected:
    void SetUp() override { previous_ = SetUnhandledExceptionFilter(&NameTheAttempt); }
    void TearDown() override { SetUnhandledExceptionFilter(previous_); }

private:
    LPTOP_LEVEL_EXCEPTION_FILTER previous_ = nullptr;
};

TEST_P(FaultSweep, HostCallsFailInTurn) {
    const Scenario& scenario = GetParam();
    const CleanRun clean = RunClean(scenario);
    // A message box is no host call; its text takes memory.
    ASSERT_TRUE(!clean.calls.empty() || clean.allocations > 0) << "the scenario does nothing";
    for (std::size_t i = 0; i < clean.calls.size(); ++i) {
        std::set<ProError> statuses(clean.calls[i].failures.begin(), clean.calls[i].failures.end());
        statuses.insert(PRO_TK_GENERAL_ERROR);
        for (const ProError status : statuses) {
            const auto nth = static_cast<long long>(i + 1);
            const std::string what = "call " + std::to_string(nth) + " (" + clean.calls[i].function +
                                     ") answers " + std::to_string(status);
            RunWith(scenario, what, [&](SimHost& host) {
                host.State().report.ResetCalls();
                host.State().report.Arm(Fault{"", nth, status});
            });
            if (HasFailure()) return;
        }
    }
}

TEST_P(FaultSweep, AllocationsFailInTurn) {
    const Scenario& scenario = GetParam();
    const CleanRun clean = RunClean(scenario);
    for (long long nth = 1; nth <= clean.allocations; ++nth) {
        RunWith(scenario, "allocation " + std::to_string(nth) + " fails",
                [&](SimHost&) { sim::FailPluginAllocation(nth); });
        if (HasFailure()) return;
    }
}

INSTANTIATE_TEST_SUITE_P(Scenarios, FaultSweep, testing::ValuesIn(test::Scenarios()),
                         [](const auto& swept) { return swept.param.name; });

}  // namespace
