#include <ProMode.h>

#include "simulator/toolkit/support/traced.h"

using namespace sim;

ProError ProModeCurrentGet(ProMode* p_mode) {
    static const CallSite kSite("ProModeCurrentGet", {PRO_TK_E_NOT_FOUND, PRO_TK_BAD_INPUTS});
    return Traced(kSite, {Out(p_mode)}, [&](Session& host) -> ProError {
        if (p_mode == nullptr) return PRO_TK_BAD_INPUTS;
        if (host.models.currentMode == PRO_MODE_UNUSED) return PRO_TK_E_NOT_FOUND;
        *p_mode = static_cast<ProMode>(host.models.currentMode);
        return PRO_TK_NO_ERROR;
    });
}
