// Check buttons of dialogs.
#pragma once

#include <ProUI.h>

PRO_BEGIN_C_DECLS

// Tells whether the button is ticked. GENERAL_ERROR for an unknown dialog or button.
ProError ProUICheckbuttonGetState(char* dialog, char* checkbutton, ProBoolean* state);

// Ticks the button. GENERAL_ERROR.
ProError ProUICheckbuttonSet(char* dialog, char* checkbutton);

// Clears the button. GENERAL_ERROR.
ProError ProUICheckbuttonUnset(char* dialog, char* checkbutton);

PRO_END_C_DECLS
