// The selected models, on the host's selection buffer.

#include "model/selected_models.h"

#include <algorithm>

#include <ProModelitem.h>
#include <ProSelbuffer.h>

#include "base/host_handle.h"
#include "base/status.h"

namespace kv {

static ProError SelectedModelGet(ProSelection selected, ProMdl& model);

ProError SelectedModelsGet(Selection& selection) {
    SelectionArray buffer;
    ProError status = buffer.Received(ProSelbufferSelectionsGet(buffer.Receive()));
    if (status == PRO_TK_E_NOT_FOUND) return PRO_TK_NO_ERROR;
    int count = 0;
    if (!Failed(status)) status = ProArraySizeGet(buffer.Get(), &count);
    if (Failed(status)) return status;

    selection.any = count > 0;
    for (int i = 0; i < count; ++i) {
        DistinctModel met = {nullptr, PRO_MDL_UNUSED};
        if (Failed(SelectedModelGet(buffer.Get()[i], met.model)) ||
            Failed(ProMdlTypeGet(met.model, &met.type)))
            continue;
        if (std::ranges::find(selection.models, met.model, &DistinctModel::model) == selection.models.end())
            selection.models.push_back(met);
    }
    return PRO_TK_NO_ERROR;
}

// PRO_TK_INVALID_ITEM for an item that is neither a model nor a component.
static ProError SelectedModelGet(ProSelection selected, ProMdl& model) {
    ProModelitem item = {};
    const ProError status = ProSelectionModelitemGet(selected, &item);
    if (Failed(status)) return status;
    if (item.type == PRO_PART || item.type == PRO_ASSEMBLY) return ProModelitemMdlGet(&item, &model);
    ProFeattype type = 0;
    if (item.type != PRO_FEATURE || Failed(ProFeatureTypeGet(&item, &type)) || type != PRO_FEAT_COMPONENT)
        return PRO_TK_INVALID_ITEM;
    return ProAsmcompMdlGet(&item, &model);
}

}  // namespace kv
