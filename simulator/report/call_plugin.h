// Callbacks of the plug-in, timed apart from the host.

#pragma once

#include "simulator/report/report.h"

namespace sim {

// Runs a callback of the plug-in and charges its time to the plug-in.
template <typename Callback, typename... Arguments>
auto CallPlugin(Report& report, Callback callback, Arguments... arguments) {
    struct Guard {
        explicit Guard(Report& r) : report(r) { report.EnterPlugin(); }
        ~Guard() { report.LeavePlugin(); }
        Report& report;
    } guard(report);
    return callback(arguments...);
}

}  // namespace sim
