// The frame of every host function: count, trace, inject the fault, run, time.
//
// A host function reads
//     ProError ProThingGet(ProThing thing, int* value) {
//         static const CallSite kSite("ProThingGet", {PRO_TK_E_NOT_FOUND});
//         return Traced(kSite, {thing, value}, [&](Session& host) -> ProError { ... });
//     }

#pragma once

#include <initializer_list>

#include "simulator/session/session.h"

namespace sim {

// Runs `body(host)` as one host call. An injected fault takes the body's place and leaves all outputs alone;
// only a call that gives something back to the host does its work first. A C++ exception that reaches this
// frame came from a callback of the plug-in: a violation, answered with the general error.
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
    host.report.LeaveCall(site, status);
    return status;
}

}  // namespace sim
