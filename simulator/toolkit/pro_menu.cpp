#include <ProMenu.h>

#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

ProError ProMacroLoad(wchar_t* macro) {
    static const CallSite kSite("ProMacroLoad");
    return Traced(kSite, {macro}, [&](Session& host) -> ProError {
        if (macro == nullptr || *macro == L'\0') return PRO_TK_GENERAL_ERROR;
        host.screen.loadedMacros.emplace_back(macro);
        return PRO_TK_NO_ERROR;
    });
}
