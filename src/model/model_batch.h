// The models that one press of a batch dialog works on.
#pragma once

#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <ProMdl.h>

#include "base/status.h"
#include "model/batch_run.h"
#include "model/model_data.h"
#include "model/prefix_list.h"

namespace kv {

struct ModelBatch {
    ProMdl current = nullptr;
    std::vector<ProMdl> models;  // distinct, sorted by handle; empty when there is nothing to work on
    PrefixList excluded;
};

// Collects the models below `current` that a type radio group asks for.
//
// choice     "AsmAndPart", "Part", "Asm" or "Smt"; any other name collects nothing. The first and the third
//            take the current assembly in as well, but not when it has no component for them.
// Errors     those of ModelWalk
[[nodiscard]] ProError BatchModelsCollect(ProMdl current, ProMdlType type, std::string_view choice,
                                          ModelBatch& batch);

// Works through the models in handle order and records each. `work(model, entry)` answers a status; the entry
// tells the model's name and takes what else there is to record.
//
// A model that fails does not stop the others. One whose name cannot be read is left alone, for it might be
// an excluded one.
template <typename Work>
void ForEachEntry(const ModelBatch& batch, BatchRun& run, const wchar_t* step, Work work) {
    for (ProMdl model : batch.models) {
        RunEntry entry = {{}, kStepReadName};
        entry.status = ModelNameGet(model, entry.model);
        if (!run.Begin(entry.model)) continue;
        if (!Failed(entry.status)) {
            entry.skipped = HasPrefix(batch.excluded, entry.model);
            entry.step = entry.skipped ? kStepExcluded : step;
            if (!entry.skipped) entry.status = work(model, entry);
        }
        run.Add(std::move(entry));
    }
}

// The same for work that needs no more than the name: `work(model, name)`.
template <typename Work>
void ForEachModel(const ModelBatch& batch, BatchRun& run, const wchar_t* step, Work work) {
    ForEachEntry(batch, run, step,
                 [&work](ProMdl model, RunEntry& entry) { return work(model, entry.model); });
}

}  // namespace kv
