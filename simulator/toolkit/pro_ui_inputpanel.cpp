#include <ProUIInputpanel.h>

#include "simulator/memory/host_memory.h"
#include "simulator/toolkit/support/ui_call.h"

using namespace sim;

extern "C" {

ProError ProUIInputpanelValueGet(char* dialog, char* inputpanel, wchar_t** value) {
    static const CallSite kSite("ProUIInputpanelValueGet");
    return Traced(kSite, {dialog, inputpanel, Out(value)}, [&](Session& host) -> ProError {
        const Component* panel = NamedComponent(host, dialog, inputpanel, ComponentKind::kInputPanel);
        if (panel == nullptr) return PRO_TK_GENERAL_ERROR;
        if (value == nullptr) return Refuse(host, PRO_TK_GENERAL_ERROR, "the value's address is null");
        *value = NewHostString(host.memory, panel->value);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProUIInputpanelValueSet(char* dialog, char* inputpanel, wchar_t* value) {
    static const CallSite kSite("ProUIInputpanelValueSet");
    return Traced(kSite, {dialog, inputpanel, value}, [&](Session& host) -> ProError {
        Component* panel = NamedComponent(host, dialog, inputpanel, ComponentKind::kInputPanel);
        if (panel == nullptr) return PRO_TK_GENERAL_ERROR;
        if (value == nullptr) return Refuse(host, PRO_TK_GENERAL_ERROR, "the value is null");
        panel->value = value;
        return PRO_TK_NO_ERROR;
    });
}

}  // extern "C"
