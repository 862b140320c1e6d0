// What the simulator knows about a run: calls, faults to inject, violations, and what is still open.

#pragma once

#include <cstdint>
#include <functional>
#include <initializer_list>
#include <map>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include <ProToolkitErrors.h>

#include "simulator/report/trace_arg.h"

namespace sim {

// A host function as the report sees it. One static object a function, made by the function itself.
struct CallSite {
    // failures   the statuses that the documents name for the function, besides the general error
    // givesBack  the function returns something to the host: an injected fault then still does the work, so
    //            that a failing free is not mistaken for a forgotten one
    CallSite(const char* functionName, std::initializer_list<ProError> documentedFailures = {},
             bool givesBackFlag = false);

    const char* name;
    std::vector<ProError> failures;
    bool givesBack;
    int index;  // position in CallSites()
};

// Every function that has been called at least once in this process, by CallSite::index.
const std::vector<const CallSite*>& CallSites();

// A fault to inject: which call fails, and how.
struct Fault {
    std::string function;  // empty: any host function
    long long nth = 1;     // the n-th matching call from now on fails; 0: every one
    ProError status = PRO_TK_GENERAL_ERROR;
};

// What of the host's the plug-in holds.
enum class Account {
    kArray,
    kString,
    kStringArray,
    kSelection,
    kGeometryData,
    kDialog,
    kWindow,
    kElement,
    kOptionSet
};

struct CallRecord {
    const CallSite* site;
    std::string arguments;  // readable, only while tracing
    ProError status;
};

class Report {
public:
    // ---- Calls
    void EnterCall(const CallSite& site, std::initializer_list<TraceArg> arguments);
    // The fault that hits the call just entered, or PRO_TK_NO_ERROR.
    ProError InjectedFault() const { return injected_; }
    void LeaveCall(const CallSite& site, ProError status);
    // Time from here to the matching LeavePlugin is the plug-in's own (a callback).
    void EnterPlugin();
    void LeavePlugin();

    long long CallCount() const { return callCount_; }
    long long CallCount(std::string_view function) const;
    // Calls by function since the last Reset, largest count first.
    std::vector<std::pair<std::string, long long>> CallCounts() const;
    double HostSeconds() const;
    double PluginSeconds() const;
    // Whether calls are kept with their arguments; they are only counted otherwise.
    void SetTracing(bool on) { tracing_ = on; }
    const std::vector<CallRecord>& Trace() const { return trace_; }
    // Called when a call has ended: a test looks there at what a crash now would leave behind.
    std::function<void()> onCallEnded;
    // The function of the last injected fault, empty when none has hit.
    const std::string& FaultedFunction() const { return faultedFunction_; }
    long long FaultsHit() const { return faultsHit_; }

    // ---- Faults
    void Arm(const Fault& fault);
    void DisarmAll() { faults_.clear(); }

    // ---- Violations: misuse of the host, with the call it happened in
    void Violation(const std::string& text);
    const std::vector<std::string>& Violations() const { return violations_; }
    void ClearViolations() { violations_.clear(); }

    // ---- Accounts
    void Opened(Account account, const void* item, std::string_view note = {});
    // False, and a violation, when the item is not open in that account.
    bool Closed(Account account, const void* item);
    bool IsOpen(Account account, const void* item) const;
    std::size_t OpenCount(Account account) const;
    // One line an open item: kind, note, the call that opened it.
    std::vector<std::string> OpenItems() const;
    // Forgets all open items (after they were reported).
    void DropOpenItems() { open_.clear(); }

    // Counts, times and the trace back to zero; faults, violations and accounts stay.
    void ResetCalls();

private:
    struct OpenItem {
        std::string note;
        const char* function;
        long long call;
    };
    struct ArmedFault {
        Fault fault;
        long long seen = 0;
    };

    void Charge(std::int64_t& side);
    ProError MatchFault(const CallSite& site);

    std::vector<long long> counts_;
    long long callCount_ = 0;
    bool tracing_ = false;
    std::vector<CallRecord> trace_;
    std::vector<std::size_t> traceStack_;
    std::vector<const CallSite*> callStack_;
    std::vector<ArmedFault> faults_;
    ProError injected_ = PRO_TK_NO_ERROR;
    std::string faultedFunction_;
    long long faultsHit_ = 0;
    std::vector<std::string> violations_;
    std::map<Account, std::unordered_map<const void*, OpenItem>> open_;
    std::int64_t lastTick_ = 0;
    std::int64_t hostTicks_ = 0;
    std::int64_t pluginTicks_ = 0;
};

}  // namespace sim
