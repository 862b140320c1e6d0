// Push buttons of dialogs.
#pragma once

#include <ProUI.h>

PRO_BEGIN_C_DECLS

// Sets what pressing the button does, in place of an earlier action. GENERAL_ERROR for an
// unknown dialog or button.
ProError ProUIPushbuttonActivateActionSet(char* dialog, char* pushbutton, ProUIAction action,
                                          ProAppData appdata);

PRO_END_C_DECLS
