#include <ProModelitem.h>

#include "simulator/memory/host_memory.h"
#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

ProError ProModelitemNameGet(ProModelitem* p_item, ProName name) {
    static const CallSite kSite("ProModelitemNameGet", {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {p_item, Out(name, PRO_NAME_SIZE)}, [&](Session& host) -> ProError {
        const Feature* feature = FindFeature(host, p_item);
        if (feature == nullptr || name == nullptr) return PRO_TK_BAD_INPUTS;
        if (feature->name.empty()) return PRO_TK_E_NOT_FOUND;
        return FillBuffer<wchar_t>(feature->name, name, PRO_NAME_SIZE) ? PRO_TK_NO_ERROR
                                                                       : PRO_TK_GENERAL_ERROR;
    });
}

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
