// Dialogs: create, activate, exit, destroy, in this order.
#pragma once

#include <ProUI.h>

PRO_BEGIN_C_DECLS

// Loads the resource file `resource` under a session name of the caller's choice, not yet
// shown. GENERAL_ERROR for a missing or faulty file and for a name already in memory.
ProError ProUIDialogCreate(char* session_dialog_name, char* resource);

// Shows the dialog and blocks until ProUIDialogExit; `status` receives the value given there
// and may be NULL. BAD_INPUTS.
ProError ProUIDialogActivate(char* dialog_name, int* status);

// Ends the activation; the dialog stays in memory. GENERAL_ERROR.
ProError ProUIDialogExit(char* dialog_name, int status);

// Removes the dialog from memory. Due after every create, also when the activation failed.
// GENERAL_ERROR.
ProError ProUIDialogDestroy(char* dialog_name);

// Sets what the close box does. The dialog does not close by itself: the action has to call
// ProUIDialogExit. GENERAL_ERROR.
ProError ProUIDialogCloseActionSet(char* dialog, ProUIAction action, ProAppData appdata);

// Keeps the dialog above the host's active window; due again after that window has changed. BAD_INPUTS.
ProError ProUIDialogAboveactivewindowSet(char* dialog, ProBoolean above_active_window);

// Sets what runs once when control is back at the dialog. BAD_INPUTS.
ProError ProUIDialogAppActionSet(char* dialog, ProUIAction action, ProAppData appdata);

PRO_END_C_DECLS
