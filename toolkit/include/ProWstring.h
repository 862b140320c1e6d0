// Wide strings made by the toolkit.
#pragma once

#include <ProToolkit.h>

PRO_BEGIN_C_DECLS

typedef wchar_t* ProWstring;

// Frees one wide string that a toolkit function gave out. GENERAL_ERROR.
ProError ProWstringFree(wchar_t* wstr);

PRO_END_C_DECLS
