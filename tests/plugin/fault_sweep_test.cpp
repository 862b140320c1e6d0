// Every scenario with each of its host calls failing in turn, with each host function failing for good, and
// with each of the plug-in's file and settings calls, calls of the spreadsheet application and allocations
// failing.
//
// Whatever fails, the plug-in must not crash, not misuse the host, and leave nothing behind: no array, string
// or dialog open, no directory or option changed. And what the host refuses by its documents is done another
// way, or the user is told.

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <windows.h>

#include "simulator/host/sim_host.h"
#include "simulator/windows/desktop.h"
#include "simulator/windows/plugin_heap.h"
#include "support/arrange.h"
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
    long long automationCalls = 0;
    std::map<std::string, long long> windowsCalls = {};
    bool showsBox = false;
};

HostSetup SetupFor(const Scenario& scenario) {
    HostSetup setup;
    setup.initialize = !scenario.startsPlugin;
    return setup;
}

// What a scenario comes to, as far as a user can see.
struct Outcome {
    std::vector<std::wstring> files;   // exported ones, with the sheets that they hold
    std::vector<std::wstring> labels;  // of all menus
    std::vector<std::wstring> parameters;
    std::vector<std::wstring> data;  // relations, units, materials and bend tables
    std::wstring folder;             // where the host works in the end, from where it started
};

// " 1 3" for a file of these sheets.
std::wstring SheetsIn(const SimHost& host, const std::wstring& file) {
    std::wstring text;
    if (const auto record = host.Exported(file))
        for (const sim::ExportedSheet& sheet : record->sheets) text += L" " + std::to_wstring(sheet.number);
    return text;
}

Outcome OutcomeOf(SimHost& host, const std::filesystem::path& start) {
    Outcome outcome = {
        host.ExportedFiles(), {}, {}, {}, host.WorkingDirectory().lexically_relative(start).wstring()};
    for (std::wstring& file : outcome.files) file += SheetsIn(host, file);
    for (const sim::MenuRow& row : host.State().screen.MenuRows()) outcome.labels.push_back(row.label);
    for (const sim::SimModel* model : host.State().models.All())
        for (const sim::ModelParameter& parameter : model->Parameters())
            outcome.parameters.push_back(model->Name() + L"." + parameter.name + L"=" +
                                         model->Parameter(parameter.name));
    for (const sim::SimModel* model : host.State().models.All()) {
        for (const auto kind : {sim::RelationKind::kOrdinary, sim::RelationKind::kPost})
            for (const std::wstring& line : model->Relations(kind).lines)
                outcome.data.push_back(model->Name() + L": " + line);
        outcome.data.push_back(model->Name() + L": " + model->PrincipalUnits().name + L", " +
                               model->CurrentMaterial() + L", " + model->BendTable());
    }
    return outcome;
}

struct Sight {
    Outcome outcome;
    std::vector<std::wstring> messages;
};

Sight SeeIn(const Scenario& scenario, bool asDocumented) {
    attempt = scenario.name + (asDocumented ? ", as documented" : ", as it is");
    test::RestoreSettings();
    HostSetup setup = SetupFor(scenario);
    setup.asDocumented = asDocumented;
    SimHost host(setup);
    const std::filesystem::path start = host.WorkingDirectory();
    scenario.arrange(host);
    scenario.act(host);
    for (const std::string& problem : host.TakeProblems()) ADD_FAILURE() << attempt << ": " << problem;
    return {OutcomeOf(host, start), test::Messages(host)};
}

CleanRun RunClean(const Scenario& scenario) {
    test::RestoreSettings();
    SimHost host(SetupFor(scenario));
    scenario.arrange(host);
    host.State().report.ResetCalls();
    host.State().report.SetTracing(true);
    sim::ResetPluginHeap();
    sim::HealWindowsCalls();
    scenario.act(host);
    CleanRun run;
    for (const std::string& function : sim::WindowsCallsThatCanFail())
        run.windowsCalls[function] = sim::WindowsCallCount(function);
    for (const sim::CallRecord& call : host.State().report.Trace())
        run.calls.push_back({call.site->name, call.site->failures});
    run.allocations = sim::PluginHeap().allocations;
    run.automationCalls = host.Spreadsheet().Server().Calls();
    run.showsBox = !host.Boxes().empty();
    return run;
}

// What follows from the fault alone, whatever the plug-in does.
struct Excuse {
    const char* faulted;
    const char* problem;
    bool restores;  // holds for the last call of the function alone, by which the plug-in goes back
};

constexpr Excuse kExcuses[] = {
    // Changing back is the plug-in's duty; that the host refuses it is not the plug-in's fault.
    {"ProDirectoryChange", "the working directory was left", true},
    {"ProDrawingCurrentSheetSet", "was left on sheet", true},
    {"ProConfigoptSet", "a configuration option was left changed", true},
    // An option that the host says is not set goes back to an empty text.
    {"ProConfigoptArrayGet", "a configuration option was left changed", false},
    // The access rule answers "not available" to a mode that cannot be read, as it must.
    {"ProModeCurrentGet", "is not available", false},
    // Every row is registered whatever became of the menu.
    {"ProMenubarMenuAdd", "there is no menu", false},
};

bool IsExcused(const std::string& problem, const std::string& faulted, bool isLastCall) {
    for (const Excuse& excuse : kExcuses)
        if (faulted == excuse.faulted && problem.find(excuse.problem) != std::string::npos)
            return isLastCall || !excuse.restores;
    return false;
}

// isLastCall: no later call of the function that fails is expected to work.
template <typename Arm>
void RunWith(const Scenario& scenario, const std::string& what, Arm arm, bool isLastCall = true) {
    attempt = scenario.name + ", " + what;
    test::RestoreSettings();
    SimHost host(SetupFor(scenario));
    scenario.arrange(host);
    arm(host);
    scenario.act(host);
    host.State().report.DisarmAll();
    sim::FailPluginAllocation(0);
    sim::HealWindowsCalls();
    host.Spreadsheet().Server().Reset();
    host.ForgetAnswers();
    if (scenario.holds) {
        SCOPED_TRACE(attempt);
        scenario.holds(host);
    }
    for (const std::string& problem : host.TakeProblems())
        if (!IsExcused(problem, host.State().report.FaultedFunction(), isLastCall))
            ADD_FAILURE() << attempt << ": " << problem;
}

// The run-time library keeps some memory after a module's first exception; whatever a later one leaves is the
// plug-in's.
void ThrowOnce(SimHost& host) {
    if (host.Availability("KvVersion") == sim::kNotRegistered) return;
    sim::FailPluginAllocation(1);
    host.Run("KvVersion");
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
    // A message box is no host call.
    ASSERT_TRUE(!clean.calls.empty() || clean.showsBox) << "the scenario does nothing";
    for (std::size_t i = 0; i < clean.calls.size(); ++i) {
        std::set<ProError> statuses(clean.calls[i].failures.begin(), clean.calls[i].failures.end());
        statuses.insert(PRO_TK_GENERAL_ERROR);
        const auto isSame = [&](const HostCall& call) { return call.function == clean.calls[i].function; };
        const auto later = clean.calls.begin() + static_cast<std::ptrdiff_t>(i) + 1;
        const bool isLastCall = std::none_of(later, clean.calls.end(), isSame);
        for (const ProError status : statuses) {
            const auto nth = static_cast<long long>(i + 1);
            const std::string what = "call " + std::to_string(nth) + " (" + clean.calls[i].function +
                                     ") answers " + std::to_string(status);
            RunWith(
                scenario, what,
                [&](SimHost& host) {
                    host.State().report.ResetCalls();
                    host.State().report.Arm(Fault{"", nth, status});
                },
                isLastCall);
            if (HasFailure()) return;
        }
    }
}

TEST_P(FaultSweep, DocumentedHostGetsTheSameWorkDone) {
    const Sight plain = SeeIn(GetParam(), false);
    const Sight documented = SeeIn(GetParam(), true);
    const bool isTold = documented.messages != plain.messages;
    if (isTold) return;
    EXPECT_EQ(documented.outcome.files, plain.outcome.files);
    EXPECT_EQ(documented.outcome.labels, plain.outcome.labels);
    EXPECT_EQ(documented.outcome.parameters, plain.outcome.parameters);
    EXPECT_EQ(documented.outcome.data, plain.outcome.data);
    EXPECT_EQ(documented.outcome.folder, plain.outcome.folder);
}

TEST_P(FaultSweep, FunctionsFailForGood) {
    const Scenario& scenario = GetParam();
    std::set<std::string> functions;
    for (const HostCall& call : RunClean(scenario).calls) functions.insert(call.function);
    for (const std::string& function : functions) {
        RunWith(scenario, function + " always fails", [&](SimHost& host) {
            host.State().report.Arm(Fault{function, 0, PRO_TK_GENERAL_ERROR});
        });
        if (HasFailure()) return;
    }
}

TEST_P(FaultSweep, WindowsCallsFailInTurn) {
    const Scenario& scenario = GetParam();
    for (const auto& [function, calls] : RunClean(scenario).windowsCalls) {
        for (long long nth = 1; nth <= calls; ++nth) {
            const std::string what = function + ", call " + std::to_string(nth) + " fails";
            RunWith(scenario, what, [&, &function = function](SimHost&) {
                sim::HealWindowsCalls();
                sim::FailWindowsCall(function, nth, ERROR_ACCESS_DENIED);
            });
            if (HasFailure()) return;
        }
    }
}

// Once, and from there on: the application is gone then.
TEST_P(FaultSweep, CallsOfTheSpreadsheetApplicationFailInTurn) {
    const Scenario& scenario = GetParam();
    const long long calls = RunClean(scenario).automationCalls;
    for (long long nth = 1; nth <= calls; ++nth) {
        for (const bool isGone : {false, true}) {
            const std::string what =
                "automation call " + std::to_string(nth) + (isGone ? " is the end" : " fails");
            RunWith(scenario, what, [&](SimHost& host) {
                if (isGone)
                    host.Spreadsheet().Server().DisconnectAt(nth);
                else
                    host.Spreadsheet().Server().Fail({nth});
            });
            if (HasFailure()) return;
        }
    }
}

TEST_P(FaultSweep, AllocationsFailInTurn) {
    const Scenario& scenario = GetParam();
    const CleanRun clean = RunClean(scenario);
    for (long long nth = 1; nth <= clean.allocations; ++nth) {
        RunWith(scenario, "allocation " + std::to_string(nth) + " fails", [&](SimHost& host) {
            ThrowOnce(host);
            sim::FailPluginAllocation(nth);
        });
        if (HasFailure()) return;
    }
}

INSTANTIATE_TEST_SUITE_P(Scenarios, FaultSweep, testing::ValuesIn(test::Scenarios()),
                         [](const auto& swept) { return swept.param.name; });

}  // namespace
