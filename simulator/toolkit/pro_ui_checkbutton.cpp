#include <ProUICheckbutton.h>

#include "simulator/toolkit/support/ui_call.h"

using namespace sim;

namespace {

// Setting by a call runs no action: only the user's click does.
ProError SetState(Session& host, const char* dialog, const char* checkbutton, bool on) {
    Component* button = NamedComponent(host, dialog, checkbutton, ComponentKind::kCheckButton);
    if (button == nullptr) return PRO_TK_GENERAL_ERROR;
    button->checked = on;
    return PRO_TK_NO_ERROR;
}

}  // namespace

extern "C" {

ProError ProUICheckbuttonGetState(char* dialog, char* checkbutton, ProBoolean* state) {
    static const CallSite kSite("ProUICheckbuttonGetState");
    return Traced(kSite, {dialog, checkbutton, Out(state)}, [&](Session& host) -> ProError {
        const Component* button = NamedComponent(host, dialog, checkbutton, ComponentKind::kCheckButton);
        if (button == nullptr) return PRO_TK_GENERAL_ERROR;
        if (state == nullptr) return Refuse(host, PRO_TK_GENERAL_ERROR, "the state's address is null");
        *state = button->checked ? PRO_B_TRUE : PRO_B_FALSE;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProUICheckbuttonSet(char* dialog, char* checkbutton) {
    static const CallSite kSite("ProUICheckbuttonSet");
    return Traced(kSite, {dialog, checkbutton},
                  [&](Session& host) -> ProError { return SetState(host, dialog, checkbutton, true); });
}

ProError ProUICheckbuttonUnset(char* dialog, char* checkbutton) {
    static const CallSite kSite("ProUICheckbuttonUnset");
    return Traced(kSite, {dialog, checkbutton},
                  [&](Session& host) -> ProError { return SetState(host, dialog, checkbutton, false); });
}

}  // extern "C"
