// Input panels of dialogs.
#pragma once

#include <ProUI.h>

PRO_BEGIN_C_DECLS

// Gives the entry as text; free it with ProWstringFree. GENERAL_ERROR.
ProError ProUIInputpanelValueGet(char* dialog, char* inputpanel, wchar_t** value);

// Replaces the entry; the text is copied. GENERAL_ERROR.
ProError ProUIInputpanelValueSet(char* dialog, char* inputpanel, wchar_t* value);

PRO_END_C_DECLS
