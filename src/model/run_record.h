// What a batch did, model by model.
#pragma once

#include <string>
#include <vector>

#include <ProToolkit.h>

namespace kv {

// One model: what was done with it, or the step that failed. A model that an exclusion prefix kept out
// has the step "excluded".
struct RunEntry {
    std::wstring model;
    const char* step = nullptr;
    ProError status = PRO_TK_NO_ERROR;
};

// In working order. It belongs to the action that runs the batch.
using RunRecord = std::vector<RunEntry>;

}  // namespace kv
