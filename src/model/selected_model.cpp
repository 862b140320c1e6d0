// Models that are selected, on the toolkit's selection calls.

#include "model/selected_model.h"

#include <ProModelitem.h>

#include "base/status.h"

namespace kv {

ProError SelectedModelGet(ProSelection selection, ProMdl& model) {
    ProModelitem item = {};
    const ProError status = ProSelectionModelitemGet(selection, &item);
    if (Failed(status)) return status;
    if (item.type == PRO_ASSEMBLY || item.type == PRO_PART) return ProModelitemMdlGet(&item, &model);
    model = item.owner;
    return PRO_TK_NO_ERROR;
}

}  // namespace kv
