// What is selected in the host, as far as it is models.
#pragma once

#include <vector>

#include "model/model_walk.h"

namespace kv {

struct Selection {
    bool any = false;                   // something is selected, whatever it is
    std::vector<DistinctModel> models;  // each once, in the order of the selection
};

// The models that are selected as such or by one of their components; other items are passed over, and so is
// a component whose model cannot be had. Nothing selected is no failure. Errors: those of
// ProSelbufferSelectionsGet.
[[nodiscard]] ProError SelectedModelsGet(Selection& selection);

}  // namespace kv
