// What a batch did, model by model.
#pragma once

#include <string>
#include <vector>

#include <ProToolkit.h>

#include "model/run_steps.h"

namespace kv {

// One model, or one file made of it: what was done, the step that failed, or why there was nothing to do.
struct RunEntry {
    std::wstring model;
    const wchar_t* step = L"";  // in words
    ProError status = PRO_TK_NO_ERROR;
    std::wstring file = {};  // name of the file that was to be written; empty for a step without one
    bool replaced = false;   // it took the place of an earlier file
    bool skipped = false;    // the step says why nothing was to be done
    std::wstring note = {};  // what the report tells about a step that did not fail
};

enum class RunOutcome { Done, Skipped, Failed, NotReached };

RunOutcome OutcomeOf(const RunEntry& entry);

// In working order.
using RunRecord = std::vector<RunEntry>;

// A list for a glance, in which neighbours of one name share a line and which is cut when it gets long; or
// a line for every failure, for a user who has to work through them.
enum class FailureList { Short, Complete };

// The models or, where there are any, the files that failed, each on a line of its own that begins with a
// line end. Empty when nothing failed.
std::wstring FailureLines(const RunRecord& record, FailureList form = FailureList::Short);

// Shows the short list below a headline; nothing when nothing failed.
void ShowFailures(const wchar_t* headline, const RunRecord& record);

}  // namespace kv
