// The choice of models in batch dialogs.

#include "params/model_choice.h"

#include <string>

#include "base/status.h"
#include "base/text.h"
#include "model/current_model.h"
#include "model/refusals.h"
#include "ui/dialog.h"

namespace kv {

ProError ChosenModelsGet(const char* dialog, const ModelChoice& choice, ModelBatch& batch) {
    ProMdlType type = PRO_MDL_ASSEMBLY;
    std::wstring excluded;
    ProError status = batch.current == nullptr ? CurrentSolidGet(batch.current, type) : PRO_TK_NO_ERROR;
    if (!Failed(status)) status = InputTextGet(dialog, choice.excluded, excluded);
    if (!Failed(status))
        status = BatchModelsCollect(batch.current, type, RadioChoice(dialog, choice.group), batch);
    if (Failed(status)) return status;
    batch.excluded = PrefixListFromText(choice.blanksCount ? excluded : WithoutBlanks(excluded));
    return PRO_TK_NO_ERROR;
}

ProError ChosenModelsNeed(const char* dialog, const ModelChoice& choice, ModelBatch& batch) {
    const ProError status = ChosenModelsGet(dialog, choice, batch);
    if (Failed(status) || !batch.models.empty()) return status;
    choice.show(kNoSuitableComponents);
    return PRO_TK_E_NOT_FOUND;
}

}  // namespace kv
