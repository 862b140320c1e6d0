#include "simulator/spreadsheet/automation_server.h"

#include <utility>

namespace sim {

void AutomationServer::Reset() {
    refusedText_.clear();
    faults_.clear();
    creationFailure_ = S_OK;
    disconnected_ = false;
    calls_ = 0;
    callsByMember_.clear();
    problems_.clear();
    opened.clear();
    saved.clear();
}

long long AutomationServer::Calls(const std::string& member) const {
    const auto found = callsByMember_.find(member);
    return found == callsByMember_.end() ? 0 : found->second;
}

std::vector<std::string> AutomationServer::OpenObjects() const {
    std::vector<std::string> lines;
    for (const auto& [number, note] : open_) lines.push_back("automation object " + note);
    return lines;
}

std::vector<std::string> AutomationServer::TakeProblems() {
    return std::exchange(problems_, {});
}

HRESULT AutomationServer::EnterCall(const std::string& member) {
    ++calls_;
    ++callsByMember_[member];
    for (const AutomationFault& fault : faults_) {
        const bool hit = calls_ >= fault.first && (fault.count == 0 || calls_ < fault.first + fault.count);
        if (!hit) continue;
        disconnected_ = disconnected_ || fault.status == RPC_E_DISCONNECTED;
        return fault.status;
    }
    return S_OK;
}

long long AutomationServer::Opened(const std::string& note) {
    open_[++lastOpened_] = note;
    return lastOpened_;
}

void AutomationServer::Closed(long long number) {
    open_.erase(number);
    if (open_.empty() && onIdle) onIdle();
}

void AutomationServer::ApplicationEnded(bool toldToQuit) {
    --applications_;
    if (!toldToQuit && !disconnected_) Problem("the spreadsheet application was not told to quit");
}

}  // namespace sim
