// Wide strings made by the toolkit.
#pragma once

#include <ProToolkit.h>

PRO_BEGIN_C_DECLS

typedef wchar_t* ProWstring;

// Frees one wide string that a toolkit function gave out. GENERAL_ERROR.
ProError ProWstringFree(wchar_t* wstr);

// Frees a ProArray of wide strings with its members. BAD_INPUTS.
ProError ProWstringproarrayFree(wchar_t** ws_array);

PRO_END_C_DECLS
