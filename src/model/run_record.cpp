// What a batch did, model by model.

#include "model/run_record.h"

#include "base/status.h"
#include "ui/message_box.h"

namespace kv {

static constexpr wchar_t kMore[] = L"\n……";
// A longer list would not fit on the screen.
static constexpr std::size_t kListedFailures = 20;

std::wstring FailureLines(const RunRecord& record) {
    std::vector<std::wstring> failed;
    for (const RunEntry& entry : record) {
        if (!Failed(entry.status)) continue;
        // What belongs together stands next to each other and shares a line.
        const std::wstring& line = entry.file.empty() ? entry.model : entry.file;
        if (failed.empty() || failed.back() != line) failed.push_back(line);
        if (failed.size() > kListedFailures) break;
    }
    std::wstring text;
    for (std::size_t i = 0; i < failed.size() && i < kListedFailures; ++i) text += L"\n" + failed[i];
    return failed.size() > kListedFailures ? text + kMore : text;
}

void ShowFailures(const wchar_t* headline, const RunRecord& record) {
    const std::wstring failures = FailureLines(record);
    if (!failures.empty()) ShowMessage((headline + failures).c_str());
}

}  // namespace kv
