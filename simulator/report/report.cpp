#include "simulator/report/report.h"

#include <algorithm>

#include "simulator/report/clock.h"

namespace sim {

namespace {

std::vector<const CallSite*>& Registry() {
    static std::vector<const CallSite*> sites;
    return sites;
}

const char* AccountName(Account account) {
    switch (account) {
        case Account::kArray:
            return "array";
        case Account::kString:
            return "string";
        case Account::kStringArray:
            return "string array";
        case Account::kSelection:
            return "selection";
        case Account::kGeometryData:
            return "geometry data";
        case Account::kDialog:
            return "dialog";
        case Account::kWindow:
            return "window";
        case Account::kElement:
            return "element";
        case Account::kOptionSet:
            return "option set";
    }
    return "item";
}

}  // namespace

CallSite::CallSite(const char* functionName, std::initializer_list<ProError> documentedFailures,
                   bool givesBackFlag)
    : name(functionName),
      failures(documentedFailures),
      givesBack(givesBackFlag),
      index(static_cast<int>(Registry().size())) {
    Registry().push_back(this);
}

const std::vector<const CallSite*>& CallSites() {
    return Registry();
}

void Report::Charge(std::int64_t& side) {
    const std::int64_t now = ClockTicks();
    if (lastTick_ != 0) side += now - lastTick_;
    lastTick_ = now;
}

void Report::EnterCall(const CallSite& site, std::initializer_list<TraceArg> arguments) {
    Charge(callStack_.empty() || callStack_.back() == nullptr ? pluginTicks_ : hostTicks_);
    callStack_.push_back(&site);
    const auto index = static_cast<std::size_t>(site.index);
    if (index >= counts_.size()) counts_.resize(Registry().size(), 0);
    ++counts_[index];
    ++callCount_;
    injected_ = faults_.empty() ? PRO_TK_NO_ERROR : MatchFault(site);
    if (!tracing_) return;
    std::string text;
    for (const TraceArg& argument : arguments) text += (text.empty() ? "" : ", ") + argument.Text();
    traceStack_.push_back(trace_.size());
    trace_.push_back({&site, std::move(text), PRO_TK_NO_ERROR});
}

void Report::LeaveCall(const CallSite& site, ProError status) {
    (void)site;
    Charge(hostTicks_);
    callStack_.pop_back();
    if (!traceStack_.empty()) {
        trace_[traceStack_.back()].status = status;
        traceStack_.pop_back();
    }
    if (onCallEnded) onCallEnded();
}

// A callback is a null entry on the stack: what runs above it is the plug-in again.
void Report::EnterPlugin() {
    Charge(hostTicks_);
    callStack_.push_back(nullptr);
}

void Report::LeavePlugin() {
    Charge(pluginTicks_);
    callStack_.pop_back();
}

long long Report::CallCount(std::string_view function) const {
    for (const CallSite* site : Registry())
        if (function == site->name && static_cast<std::size_t>(site->index) < counts_.size())
            return counts_[static_cast<std::size_t>(site->index)];
    return 0;
}

std::vector<std::pair<std::string, long long>> Report::CallCounts() const {
    std::vector<std::pair<std::string, long long>> counts;
    for (std::size_t i = 0; i < counts_.size(); ++i)
        if (counts_[i] > 0) counts.emplace_back(Registry()[i]->name, counts_[i]);
    std::stable_sort(counts.begin(), counts.end(),
                     [](const auto& a, const auto& b) { return a.second > b.second; });
    return counts;
}

double Report::HostSeconds() const {
    return ClockSeconds(hostTicks_);
}
double Report::PluginSeconds() const {
    return ClockSeconds(pluginTicks_);
}

void Report::Arm(const Fault& fault) {
    faults_.push_back({fault, 0});
}

ProError Report::MatchFault(const CallSite& site) {
    for (ArmedFault& armed : faults_) {
        if (!armed.fault.function.empty() && armed.fault.function != site.name) continue;
        ++armed.seen;
        if (armed.fault.nth != 0 && armed.seen != armed.fault.nth) continue;
        faultedFunction_ = site.name;
        ++faultsHit_;
        return armed.fault.status;
    }
    return PRO_TK_NO_ERROR;
}

void Report::Violation(const std::string& text) {
    std::string where;
    for (auto site = callStack_.rbegin(); site != callStack_.rend() && where.empty(); ++site)
        if (*site != nullptr) where = std::string((*site)->name) + ": ";
    violations_.push_back(where + text);
}

void Report::Opened(Account account, const void* item, std::string_view note) {
    const char* function =
        callStack_.empty() || callStack_.back() == nullptr ? "host" : callStack_.back()->name;
    open_[account][item] = {std::string(note), function, callCount_};
}

bool Report::Closed(Account account, const void* item) {
    const auto items = open_.find(account);
    if (items != open_.end() && items->second.erase(item) > 0) return true;
    Violation(std::string("gives back a ") + AccountName(account) + " that is not open");
    return false;
}

bool Report::IsOpen(Account account, const void* item) const {
    const auto items = open_.find(account);
    return items != open_.end() && items->second.contains(item);
}

std::size_t Report::OpenCount(Account account) const {
    const auto items = open_.find(account);
    return items == open_.end() ? 0 : items->second.size();
}

std::vector<std::string> Report::OpenItems() const {
    std::vector<std::string> lines;
    for (const auto& [account, items] : open_)
        for (const auto& [item, open] : items)
            lines.push_back(std::string(AccountName(account)) + (open.note.empty() ? "" : " " + open.note) +
                            " from " + open.function + ", call " + std::to_string(open.call));
    return lines;
}

void Report::ResetCalls() {
    std::fill(counts_.begin(), counts_.end(), 0);
    callCount_ = 0;
    trace_.clear();
    traceStack_.clear();
    faultedFunction_.clear();
    faultsHit_ = 0;
    hostTicks_ = 0;
    pluginTicks_ = 0;
    lastTick_ = ClockTicks();
}

}  // namespace sim
