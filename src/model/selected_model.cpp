// The model that a selection is about.

#include "model/selected_model.h"

#include <ProAsmcomp.h>
#include <ProFeature.h>
#include <ProModelitem.h>

#include "base/status.h"

namespace kv {

static bool IsComponent(ProModelitem& item);

ProError SelectedModelGet(ProSelection selection, ComponentMeans component, ProMdl& model) {
    ProModelitem item = {};
    const ProError status = ProSelectionModelitemGet(selection, &item);
    if (Failed(status)) return status;
    if (item.type == PRO_ASSEMBLY || item.type == PRO_PART) return ProModelitemMdlGet(&item, &model);
    if (component == ComponentMeans::Model && IsComponent(item)) return ProAsmcompMdlGet(&item, &model);
    model = item.owner;
    return PRO_TK_NO_ERROR;
}

static bool IsComponent(ProModelitem& item) {
    ProFeattype type = 0;
    return item.type == PRO_FEATURE && !Failed(ProFeatureTypeGet(&item, &type)) && type == PRO_FEAT_COMPONENT;
}

}  // namespace kv
