// Commands: registration, icon, designation.
#pragma once

#include <ProToolkit.h>

PRO_BEGIN_C_DECLS

typedef char ProCmdItemName[PRO_NAME_SIZE];
typedef char ProCmdItemLabel[PRO_LINE_SIZE];
typedef char ProCmdItemIcon[PRO_LINE_SIZE];
typedef char ProCmdLineHelp[PRO_LINE_SIZE];
typedef char ProCmdDescription[PRO_LINE_SIZE];

typedef struct user_interface_cmd_id* uiCmdCmdId;
typedef struct user_interface_cmd_value uiCmdValue;

// How a command treats another one that is running.
typedef int uiCmdPriority;
#define uiCmdPrioDefault ((uiCmdPriority)0)
#define uiProeImmediate ((uiCmdPriority)2)
#define uiProeAsynch ((uiCmdPriority)3)
#define uiProe2ndImmediate ((uiCmdPriority)5)

typedef enum uiCmdAccessModes { MODE_BLIND = 0, MODE_ERROR_MSG_ALLOWED = 1 } uiCmdAccessMode;

typedef enum uiCmdAccessStates {
    ACCESS_REMOVE = -1,
    ACCESS_INVISIBLE = 0,
    ACCESS_UNAVAILABLE = 1,
    ACCESS_DISALLOW = 2,
    ACCESS_AVAILABLE = 3
} uiCmdAccessState;

// Runs the command; the host ignores the answer, the command the second and third argument.
typedef int (*uiCmdCmdActFn)(uiCmdCmdId command, uiCmdValue* p_value, void* p_push_command_data);

// Says whether the command can be used now; asked often, so it has to be quick.
typedef uiCmdAccessState (*uiCmdAccessFn)(uiCmdAccessMode access_mode);

// Registers a command once per session. E_FOUND for a name already registered, and then no id
// is given: look it up with ProCmdCmdIdFind. GENERAL_ERROR.
ProError ProCmdActionAdd(char* action_name, uiCmdCmdActFn action_cb, uiCmdPriority priority,
                         uiCmdAccessFn access_func, ProBoolean allow_in_non_active_window,
                         ProBoolean allow_in_accessory_window, uiCmdCmdId* action_id);

// Gives the id of a registered command; `cmd_id` may be NULL. E_NOT_FOUND.
ProError ProCmdCmdIdFind(char* cmd_name, uiCmdCmdId* cmd_id);

// Sets the icon by file name with extension, without path. Fails when the file is not found.
ProError ProCmdIconSet(uiCmdCmdId cmd_id, ProCmdItemIcon cmd_icon);

// Offers the command for the ribbon. Label, help and description are message keys. BAD_INPUTS;
// E_NOT_FOUND for a missing message file, MSG_NOT_FOUND for a missing key.
ProError ProCmdDesignate(uiCmdCmdId cmd_id, ProCmdItemLabel button_label, ProCmdLineHelp one_line_help,
                         ProCmdDescription description, ProFileName msg_file);

PRO_END_C_DECLS
