#include <ProMenu.h>

#include "simulator/toolkit/support/traced.h"

using namespace sim;

ProError ProMacroLoad(wchar_t* macro) {
    static const CallSite kSite("ProMacroLoad", {PRO_TK_GENERAL_ERROR});
    return Traced(kSite, {macro}, [&](Session& host) -> ProError {
        if (macro == nullptr) return PRO_TK_GENERAL_ERROR;
        host.screen.loadedMacros.emplace_back(macro);
        return PRO_TK_NO_ERROR;
    });
}
