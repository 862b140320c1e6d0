#include <ProAsmcomp.h>

#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

ProError ProAsmcompMdlGet(ProAsmcomp* p_feat_handle, ProMdl* p_mdl_handle) {
    static const CallSite kSite("ProAsmcompMdlGet", {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {p_feat_handle, Out(p_mdl_handle)}, [&](Session& host) -> ProError {
        const Feature* feature = FindFeature(host, p_feat_handle);
        if (feature == nullptr || p_mdl_handle == nullptr || feature->type != kComponentType)
            return PRO_TK_BAD_INPUTS;
        if (feature->component == nullptr) return PRO_TK_E_NOT_FOUND;
        *p_mdl_handle = feature->component;
        return PRO_TK_NO_ERROR;
    });
}
