// Text areas of dialogs.
#pragma once

#include <ProUI.h>

PRO_BEGIN_C_DECLS

// Gives the text, lines divided by '\n'; free it with ProWstringFree. GENERAL_ERROR.
ProError ProUITextareaValueGet(char* dialog, char* textarea, wchar_t** lines);

// Sets the text, lines divided the same way. GENERAL_ERROR.
ProError ProUITextareaValueSet(char* dialog, char* textarea, wchar_t* value);

PRO_END_C_DECLS
