// What the host refused, of commands that show nothing.
#pragma once

#include "model/run_record.h"

namespace kv {

// Writes a report with these entries; none when the host refused nothing: tools of every minute are not to
// push the reports of long runs out of their folder.
//
// command  ASCII name, of the report
void ReportRefusals(const char* command, const RunRecord& refusals);

}  // namespace kv
