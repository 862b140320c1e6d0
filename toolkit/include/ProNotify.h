// Notifications.
#pragma once

#include <ProToolkit.h>

PRO_BEGIN_C_DECLS

typedef enum ProNotifyTypes {
    PRO_NOTIFY_NOT_USED = -1,
    PRO_NOTIFY_UNASSIGNED = 0,
    PRO_POPUPMENU_CREATE_POST = 72
} ProNotifyType;

// Registers the callback of one notification, in place of an earlier one; its real type
// depends on `type`. BAD_INPUTS; GENERAL_ERROR.
ProError ProNotificationSet(ProNotifyType type, ProFunction notify_function);

PRO_END_C_DECLS
