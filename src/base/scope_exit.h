// Work that has to happen on every way out of a block.
#pragma once

#include <utility>

namespace kv {

template <typename Work>
class [[nodiscard]] ScopeExit {
public:
    explicit ScopeExit(Work work) : work_(std::move(work)) {}
    ScopeExit(const ScopeExit&) = delete;
    ScopeExit& operator=(const ScopeExit&) = delete;
    ~ScopeExit() { work_(); }

private:
    Work work_;
};

}  // namespace kv
