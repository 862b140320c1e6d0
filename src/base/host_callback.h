// Adapters for the functions that the host calls: nothing may be thrown into the host.
#pragma once

#include <new>

#include <ProToolkit.h>
#include <ProUICmd.h>

namespace kv {

// Runs `work` and turns whatever it throws into a status: PRO_TK_OUT_OF_MEMORY for a failed allocation,
// PRO_TK_GENERAL_ERROR for anything else.
template <typename Work>
ProError Guarded(Work work) noexcept {
    try {
        return work();
    } catch (const std::bad_alloc&) {
        return PRO_TK_OUT_OF_MEMORY;
    } catch (...) {
        return PRO_TK_GENERAL_ERROR;
    }
}

template <auto Function>
struct GuardedFunction;

template <typename... Arguments, ProError (*Function)(Arguments...)>
struct GuardedFunction<Function> {
    static ProError Run(Arguments... arguments) noexcept {
        return Guarded([&] { return Function(arguments...); });
    }
};

// What to hand to the host in place of `Function`, a visit action, a filter or a notification handler.
template <auto Function>
inline constexpr auto HostCallback = &GuardedFunction<Function>::Run;

// The host's form of a command's action. Being noexcept is part of the type, so that a function that
// might throw does not fit into the command table.
using CommandAction = int (*)(uiCmdCmdId command, uiCmdValue* value, void* data) noexcept;

// How many commands the host has started. What is told once in a command is told again in the next one.
inline unsigned commandsStarted = 0;

template <ProError (*Action)()>
int HostAction(uiCmdCmdId, uiCmdValue*, void*) noexcept {
    ++commandsStarted;
    return Guarded(Action);
}

}  // namespace kv
