// Runs over many models.

#include "model/batch_run.h"

#include <utility>

#include "ui/prompt.h"
#include "ui/shell.h"

namespace kv {

static constexpr wchar_t kCancelled[] = L"\t操作已取消\t\n";
static constexpr wchar_t kDone[] = L"\n已完成：";
static constexpr wchar_t kFailed[] = L"\n失败：";
static constexpr wchar_t kNotReached[] = L"\n未处理：";
static constexpr char kCountMessage[] = "Batch result:%0w";
static constexpr wchar_t kNoReport[] = L"\t尚无可查看的结果\t";

// Before the first item there is none in work.
BatchRun::BatchRun(const char* command, std::size_t total)
    : progress_(command, total), report_(command), item_(RunOutcome::NotReached) {
    record_.reserve(total);
}

bool BatchRun::Begin(const std::wstring& item) {
    if (!Cancelled()) progress_.Show(begun_, item);
    count_ = Count();
    item_ = RunOutcome::NotReached;
    if (Cancelled()) {
        ++count_.notReached;
        report_.Add(record_.emplace_back(RunEntry{item, kStepNotReached}));
        return false;
    }
    ++begun_;
    item_ = RunOutcome::Skipped;
    return true;
}

void BatchRun::Add(RunEntry entry) {
    const RunOutcome outcome = OutcomeOf(entry);
    if (outcome == RunOutcome::Failed || item_ == RunOutcome::Skipped) item_ = outcome;
    report_.Add(entry);
    // Of a long run the notes would pile up; nobody but the report tells them.
    std::wstring().swap(entry.note);
    record_.push_back(std::move(entry));
}

// With the item in work, which no later one has closed yet.
RunCount BatchRun::Count() const {
    RunCount count = count_;
    if (item_ == RunOutcome::Done) ++count.done;
    if (item_ == RunOutcome::Failed) ++count.failed;
    if (item_ == RunOutcome::Skipped) ++count.skipped;
    return count;
}

void ShowCompletion(const BatchRun& run, const wchar_t* done, MessageBoxForm show) {
    if (run.Cancelled()) {
        ShowCancelled(run);
    } else {
        show(done);
    }
}

void ShowCancelled(const BatchRun& run) {
    if (!run.Cancelled()) return;
    const RunCount count = run.Count();
    const std::wstring text = kCancelled + (kDone + std::to_wstring(count.done + count.skipped)) + kFailed +
                              std::to_wstring(count.failed) + kNotReached + std::to_wstring(count.notReached);
    ShowMessage(text.c_str());
}

void TellCount(const BatchRun& run, const wchar_t* what) {
    const RunCount count = run.Count();
    std::wstring text = what + (L"：完成 " + std::to_wstring(count.done));
    if (count.skipped > 0) text += L"，跳过 " + std::to_wstring(count.skipped);
    if (count.failed > 0) text += L"，失败 " + std::to_wstring(count.failed);
    if (count.notReached > 0) text += L"，未处理 " + std::to_wstring(count.notReached);
    DisplayMessage(kCountMessage, text.c_str());
}

void ShowReport(const std::wstring& path) {
    if (path.empty()) {
        ShowMessage(kNoReport);
    } else {
        ShowFile(path);
    }
}

}  // namespace kv
