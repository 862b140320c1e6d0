// The models that one press of a batch dialog works on.

#include "model/model_batch.h"

#include <algorithm>

#include "model/model_walk.h"

namespace kv {

struct BatchChoice {
    std::string_view button;
    WalkVariant variant;
    bool withCurrent;
};

// clang-format off
static constexpr BatchChoice kChoices[] = {
    // button       variant                      with current
    {"AsmAndPart",  CollectAllComponents,        true},
    {"Part",        CollectPartComponents,       false},
    {"Asm",         CollectSubassemblies,        true},
    {"Smt",         CollectSheetmetalComponents, false},
};
// clang-format on

ProError BatchModelsCollect(ProMdl current, ProMdlType type, std::string_view choice, ModelBatch& batch) {
    batch.current = current;
    const BatchChoice* chosen = std::ranges::find(kChoices, choice, &BatchChoice::button);
    // No other model has components.
    if (chosen == std::end(kChoices) || type != PRO_MDL_ASSEMBLY) return PRO_TK_NO_ERROR;
    const ProError status = DistinctModels(current, chosen->variant, batch.models);
    if (Failed(status)) return status;
    // Without a single component the batch stays empty.
    if (chosen->withCurrent && !batch.models.empty()) AddDistinct(batch.models, current);
    return PRO_TK_NO_ERROR;
}

}  // namespace kv
