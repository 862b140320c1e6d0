// Option menus of dialogs.
#pragma once

#include <ProUI.h>

PRO_BEGIN_C_DECLS

// Gives the label of the chosen option; free it with ProWstringFree. GENERAL_ERROR.
ProError ProUIOptionmenuValueGet(char* dialog, char* component, wchar_t** value);

// Sets the shown label; the text is copied. GENERAL_ERROR.
ProError ProUIOptionmenuValueSet(char* dialog, char* component, wchar_t* value);

// Lets the user choose again. GENERAL_ERROR.
ProError ProUIOptionmenuEnable(char* dialog, char* optionmenu);

// Greys the menu; its value stays readable. GENERAL_ERROR.
ProError ProUIOptionmenuDisable(char* dialog, char* optionmenu);

PRO_END_C_DECLS
