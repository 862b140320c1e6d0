#include <ProNotify.h>

#include "simulator/toolkit/support/ui_call.h"

using namespace sim;

extern "C" ProError ProNotificationSet(ProNotifyType type, ProFunction notify_function) {
    static const CallSite kSite("ProNotificationSet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {type, notify_function}, [&](Session& host) -> ProError {
        if (type != PRO_POPUPMENU_CREATE_POST)
            return Refuse(host, PRO_TK_BAD_INPUTS, "notification " + std::to_string(type) + " is never sent");
        if (notify_function == nullptr) return Refuse(host, PRO_TK_BAD_INPUTS, "the callback is null");
        host.screen.notifications[type] = notify_function;
        return PRO_TK_NO_ERROR;
    });
}
