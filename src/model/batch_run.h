// A run over many models or drawings: what is seen of it while it goes on, and what is known of it
// afterwards.
//
// Every command that works through a list goes through one:
//
//     BatchRun run("KvStamp", models.size());
//     for (const NamedModel& model : models) {
//         if (!run.Begin(model.name)) continue;
//         run.Add({model.name, kStepStamp, Stamp(model)});
//     }
//     ShowCompletion(run, kDone);
#pragma once

#include <cstddef>
#include <string>

#include "model/run_record.h"
#include "model/run_report.h"
#include "ui/message_box.h"
#include "ui/progress_window.h"

namespace kv {

// How many items ended how.
struct RunCount {
    std::size_t done = 0;
    std::size_t skipped = 0;  // there was nothing to do
    std::size_t failed = 0;
    std::size_t notReached = 0;
};

class BatchRun {
public:
    // command  ASCII name, of the report and for the label in the progress window
    // total    items that will begin
    BatchRun(const char* command, std::size_t total);

    // Begins with an item. False when the user has asked to stop: the item is then recorded as not reached
    // and nothing is to be done for it.
    [[nodiscard]] bool Begin(const std::wstring& item);

    // Records a step of the item that has begun; one that failed makes the item a failed one.
    void Add(RunEntry entry);

    bool Cancelled() const { return progress_.Cancelled(); }
    const RunRecord& Record() const { return record_; }
    RunCount Count() const;
    // Full path of the report; empty when none could be written.
    const std::wstring& ReportPath() const { return report_.Path(); }

private:
    ProgressWindow progress_;
    RunReport report_;
    RunRecord record_;
    std::size_t begun_ = 0;
    RunCount count_;
    // Of the item in work: the worst that was recorded; nothing recorded counts as skipped.
    RunOutcome item_;
};

// Tells that the run is over: `done` or, after a cancel, how many items were done, failed and not reached.
void ShowCompletion(const BatchRun& run, const wchar_t* done, MessageBoxForm show = ShowMessage);

// The same for a run whose end is told by no box: after a cancel alone.
void ShowCancelled(const BatchRun& run);

// What most runs work on.
inline constexpr wchar_t kModelItems[] = L"模型";

// Tells in the message area how many items were done, skipped and failed. `what` names the items, such as
// kModelItems.
void TellCount(const BatchRun& run, const wchar_t* what);

// Opens the report at this path for the user; a box tells when there is none.
void ShowReport(const std::wstring& path);

}  // namespace kv
