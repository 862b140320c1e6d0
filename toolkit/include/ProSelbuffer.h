// The selection buffer: what is selected before a command starts.
#pragma once

#include <ProSelection.h>

PRO_BEGIN_C_DECLS

// Gives the selected items as a ProArray; free it with ProSelectionarrayFree. E_NOT_FOUND and
// no array when nothing is selected; CANT_ACCESS; BAD_INPUTS.
ProError ProSelbufferSelectionsGet(ProSelection** ret_buff);

PRO_END_C_DECLS
