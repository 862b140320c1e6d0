#include <ProSkeleton.h>

#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

ProError ProMdlIsSkeleton(ProMdl model, ProBoolean* p_is_skel) {
    static const CallSite kSite("ProMdlIsSkeleton", {PRO_TK_BAD_INPUTS, PRO_TK_NO_LICENSE});
    return Traced(kSite, {model, Out(p_is_skel)}, [&](Session& host) -> ProError {
        const SimModel* found = FindModel(host, model);
        if (found == nullptr || p_is_skel == nullptr) return PRO_TK_BAD_INPUTS;
        *p_is_skel = found->Subtype() == ModelSubtype::kSkeleton ? PRO_B_TRUE : PRO_B_FALSE;
        return PRO_TK_NO_ERROR;
    });
}
