// Names of menus and their buttons; recorded macros.
#pragma once

#include <ProToolkit.h>

PRO_BEGIN_C_DECLS

typedef char ProMenuName[PRO_NAME_SIZE];
typedef char ProMenubuttonName[PRO_NAME_SIZE];

// Puts a recorded macro on the stack of those that the host plays, the last one first, when the command has
// returned; nothing checks its text. GENERAL_ERROR.
ProError ProMacroLoad(wchar_t* macro);

PRO_END_C_DECLS
