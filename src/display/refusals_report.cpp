#include "display/refusals_report.h"

#include "model/run_report.h"

namespace kv {

void ReportRefusals(const char* command, const RunRecord& refusals) {
    if (refusals.empty()) return;
    RunReport report(command);
    for (const RunEntry& entry : refusals) report.Add(entry);
}

}  // namespace kv
