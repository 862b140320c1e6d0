// What a batch did, model by model.

#include "model/run_record.h"

#include <string_view>

#include "base/status.h"
#include "ui/message_box.h"

namespace kv {

static constexpr wchar_t kMore[] = L"\n……";
// A longer list would not fit on the screen.
static constexpr std::size_t kListedFailures = 20;

RunOutcome OutcomeOf(const RunEntry& entry) {
    if (std::wstring_view(entry.step) == kStepNotReached) return RunOutcome::NotReached;
    if (Failed(entry.status)) return RunOutcome::Failed;
    return entry.skipped ? RunOutcome::Skipped : RunOutcome::Done;
}

std::wstring FailureLines(const RunRecord& record, FailureList form) {
    std::wstring text;
    const std::wstring* previous = nullptr;
    std::size_t listed = 0;
    for (const RunEntry& entry : record) {
        if (!Failed(entry.status)) continue;
        const std::wstring& line = entry.file.empty() ? entry.model : entry.file;
        if (form == FailureList::Short) {
            // What belongs together stands next to each other and shares a line.
            if (previous != nullptr && *previous == line) continue;
            if (listed == kListedFailures) return text + kMore;
        }
        text += L"\n" + line;
        previous = &line;
        ++listed;
    }
    return text;
}

void ShowFailures(const wchar_t* headline, const RunRecord& record) {
    const std::wstring failures = FailureLines(record);
    if (!failures.empty()) ShowMessage((headline + failures).c_str());
}

}  // namespace kv
