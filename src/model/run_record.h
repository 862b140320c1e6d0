// What a batch did, model by model.
#pragma once

#include <string>
#include <vector>

#include <ProToolkit.h>

namespace kv {

// One model, or one file made of it: what was done, or the step that failed. A model that an exclusion prefix
// kept out has the step "excluded".
struct RunEntry {
    std::wstring model;
    const char* step = nullptr;
    ProError status = PRO_TK_NO_ERROR;
    std::wstring file = {};  // name of the file that was to be written; empty for a step without one
    bool replaced = false;   // it took the place of an earlier file, perhaps of this very run
};

// In working order. It belongs to the action that runs the batch.
using RunRecord = std::vector<RunEntry>;

// The models or, where there are any, the files that failed, each on a line of its own that begins with a
// line end; a long list is cut. Empty when nothing failed.
std::wstring FailureLines(const RunRecord& record);

// Shows these lines below a headline; nothing when nothing failed.
void ShowFailures(const wchar_t* headline, const RunRecord& record);

}  // namespace kv
