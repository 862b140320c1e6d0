#include <ProFaminstance.h>

#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

ProError ProFaminstanceGenericGet(ProMdl inst_model, int immediate, ProMdl* gen_model) {
    static const CallSite kSite("ProFaminstanceGenericGet",
                                {PRO_TK_E_NOT_FOUND, PRO_TK_CANT_OPEN, PRO_TK_BAD_INPUTS});
    return Traced(kSite, {inst_model, immediate, Out(gen_model)}, [&](Session& host) -> ProError {
        const SimModel* instance = FindModel(host, inst_model);
        if (instance == nullptr || gen_model == nullptr) return PRO_TK_BAD_INPUTS;
        if (!instance->IsInstance()) return PRO_TK_E_NOT_FOUND;
        SimModel* generic = instance->Generic();
        if (generic == nullptr) return PRO_TK_CANT_OPEN;
        // A table in a table in a table; damaged files may make a ring of them.
        for (int hop = 0; immediate == 0 && generic->Generic() != nullptr && hop < PRO_MAX_ASSEM_LEVEL; ++hop)
            generic = generic->Generic();
        *gen_model = generic;
        return PRO_TK_NO_ERROR;
    });
}
