#include <ProUIPushbutton.h>

#include "simulator/toolkit/support/ui_call.h"

using namespace sim;

extern "C" ProError ProUIPushbuttonActivateActionSet(char* dialog, char* pushbutton, ProUIAction action,
                                                     ProAppData appdata) {
    static const CallSite kSite("ProUIPushbuttonActivateActionSet");
    return Traced(kSite, {dialog, pushbutton, action, appdata}, [&](Session& host) -> ProError {
        return SetAction(host, dialog, pushbutton, ComponentKind::kPushButton, DialogEvent::kActivate,
                         {action, appdata});
    });
}
