// Which models the user of a batch dialog has chosen: a group of radio buttons for their kind, and a field of
// prefixes that keep models out.
#pragma once

#include "model/model_batch.h"
#include "ui/message_box.h"

namespace kv {

struct ModelChoice {
    const char* group;     // radio group, see BatchModelsCollect
    const char* excluded;  // input panel
    bool blanksCount;      // a prefix may contain a blank
    MessageBoxForm show;   // how to tell that there is no model
};

// The chosen models below the batch's current one, or below the one that is current in the host if the batch
// has none yet, and the prefixes. Without any the batch has no models.
//
// Errors  those of CurrentSolidGet, ModelWalk and InputTextGet: with an unreadable prefix field models would
//         get in that are to be kept out
[[nodiscard]] ProError ChosenModelsGet(const char* dialog, const ModelChoice& choice, ModelBatch& batch);

// The same for work that needs models: without any the user is told, and the answer is PRO_TK_E_NOT_FOUND.
[[nodiscard]] ProError ChosenModelsNeed(const char* dialog, const ModelChoice& choice, ModelBatch& batch);

}  // namespace kv
