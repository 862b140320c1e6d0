// The frame of every host function: count, trace, inject the fault, run, time.
//
// A host function reads
//     ProError ProThingGet(ProThing thing, int* value) {
//         static const CallSite kSite("ProThingGet", {PRO_TK_E_NOT_FOUND});
//         return Traced(kSite, {thing, Out(value)}, [&](Session& host) -> ProError { ... });
//     }

#pragma once

#include <cstddef>
#include <initializer_list>
#include <type_traits>

#include "simulator/session/session.h"

namespace sim {

// An output in the list of arguments: one value, or `count` of them, as in a matrix or a text buffer.
template <typename T>
TraceArg Out(T* output, std::size_t count = 1) {
    return TraceArg::Output(output, count * sizeof(T), std::is_same_v<T, wchar_t>);
}

// Runs `body(host)` as one host call. An injected fault takes the body's place; only a call that gives
// something back to the host does its work first. A call that fails, for whatever reason, spoils its outputs:
// the documents promise nothing about them, save for a few which are not marked with Out. A C++ exception
// that reaches this frame came from a callback of the plug-in: a violation, answered with the general error.
template <typename Body>
ProError Traced(const CallSite& site, std::initializer_list<TraceArg> arguments, Body body) {
    Session& host = Host();
    host.report.EnterCall(site, arguments);
    const ProError fault = host.report.InjectedFault();
    ProError status = fault;
    try {
        if (fault == PRO_TK_NO_ERROR || site.givesBack) status = body(host);
        if (fault != PRO_TK_NO_ERROR) status = fault;
    } catch (...) {
        host.report.Violation("an exception crossed a host callback");
        status = PRO_TK_GENERAL_ERROR;
    }
    // A message that is too long is given as far as it fits, a drawing with errors is created all the same.
    const bool isGiven =
        fault == PRO_TK_NO_ERROR && (status == PRO_TK_MSG_TOO_LONG || status == PRO_TK_DWGCREATE_ERRORS);
    if (status != PRO_TK_NO_ERROR && !isGiven)
        for (const TraceArg& argument : arguments) argument.Spoil();
    host.report.LeaveCall(site, status);
    return status;
}

}  // namespace sim
