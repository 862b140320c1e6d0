#include <ProModelitem.h>

#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

ProError ProModelitemMdlGet(ProModelitem* p_model_item, ProMdl* p_owner) {
    static const CallSite kSite("ProModelitemMdlGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {p_model_item, Out(p_owner)}, [&](Session& host) -> ProError {
        if (p_model_item == nullptr || p_owner == nullptr) return PRO_TK_BAD_INPUTS;
        SimModel* owner = FindModel(host, p_model_item->owner);
        if (owner == nullptr) return PRO_TK_BAD_INPUTS;
        *p_owner = owner;
        return PRO_TK_NO_ERROR;
    });
}
