#include <ProMfg.h>

#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

ProError ProMfgAssemGet(ProMfg mfg, ProAssembly* r_assem_obj) {
    static const CallSite kSite("ProMfgAssemGet", {PRO_TK_E_NOT_FOUND, PRO_TK_BAD_INPUTS});
    return Traced(kSite, {mfg, Out(r_assem_obj)}, [&](Session& host) -> ProError {
        const SimModel* model = FindModelOf(host, mfg, ModelKind::kManufacturing);
        if (model == nullptr || r_assem_obj == nullptr) return PRO_TK_BAD_INPUTS;
        if (model->MfgAssembly() == nullptr) return PRO_TK_E_NOT_FOUND;
        *r_assem_obj = reinterpret_cast<ProAssembly>(model->MfgAssembly());
        return PRO_TK_NO_ERROR;
    });
}
