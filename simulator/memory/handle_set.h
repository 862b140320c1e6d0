// Handles of one kind in the plug-in's hands, each with what it stands for.

#pragma once

#include <bit>
#include <cstdint>
#include <string>
#include <string_view>
#include <unordered_map>

#include "simulator/report/report.h"

namespace sim {

template <typename Value>
class HandleSet {
public:
    // `kind` is the handle in words, "PDF options"; `first` sets the kinds apart.
    HandleSet(std::string_view kind, std::uintptr_t first, Account account = Account::kOptionSet)
        : kind_(kind), next_(first), account_(account) {}

    // Open in the accounts until Free. A number is never used twice, so that a stale handle is noticed.
    void* New(Report& report) {
        next_ += 16;
        values_[next_] = {};
        void* handle = std::bit_cast<void*>(next_);
        report.Opened(account_, handle, kind_);
        return handle;
    }

    // Null for NULL and, with a violation, for a handle that is none or was freed. O(1).
    Value* Find(Report& report, const void* handle) {
        const auto found = values_.find(reinterpret_cast<std::uintptr_t>(handle));
        if (found != values_.end()) return &found->second;
        if (handle != nullptr) report.Violation("is given a handle that is no " + kind_ + " or was freed");
        return nullptr;
    }

    bool Free(Report& report, const void* handle) {
        if (Find(report, handle) == nullptr) return false;
        Drop(handle);
        return report.Closed(account_, handle);
    }

    // The host owns what the handle stands for from now on. False, and a violation, when it does already.
    bool TakeOver(Report& report, const void* handle) { return report.Closed(account_, handle); }
    // Forgets a handle that the host owns.
    void Drop(const void* handle) { values_.erase(reinterpret_cast<std::uintptr_t>(handle)); }

private:
    std::string kind_;
    std::uintptr_t next_;
    Account account_;
    std::unordered_map<std::uintptr_t, Value> values_;
};

}  // namespace sim
