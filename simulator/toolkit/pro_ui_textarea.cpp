#include <ProUITextarea.h>

#include "simulator/memory/host_memory.h"
#include "simulator/toolkit/support/ui_call.h"

using namespace sim;

extern "C" {

ProError ProUITextareaValueGet(char* dialog, char* textarea, wchar_t** lines) {
    static const CallSite kSite("ProUITextareaValueGet");
    return Traced(kSite, {dialog, textarea, Out(lines)}, [&](Session& host) -> ProError {
        const Component* area = NamedComponent(host, dialog, textarea, ComponentKind::kTextArea);
        if (area == nullptr) return PRO_TK_GENERAL_ERROR;
        if (lines == nullptr) return Refuse(host, PRO_TK_GENERAL_ERROR, "the text's address is null");
        *lines = NewHostString(host.memory, area->value);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProUITextareaValueSet(char* dialog, char* textarea, wchar_t* value) {
    static const CallSite kSite("ProUITextareaValueSet");
    return Traced(kSite, {dialog, textarea, value}, [&](Session& host) -> ProError {
        Component* area = NamedComponent(host, dialog, textarea, ComponentKind::kTextArea);
        if (area == nullptr) return PRO_TK_GENERAL_ERROR;
        if (value == nullptr) return Refuse(host, PRO_TK_GENERAL_ERROR, "the text is null");
        area->value = value;
        return PRO_TK_NO_ERROR;
    });
}

}  // extern "C"
