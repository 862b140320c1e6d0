// The selection buffer: what is selected before a command starts.
#pragma once

#include <ProSelection.h>

PRO_BEGIN_C_DECLS

// Gives the selected items as a ProArray; free it with ProSelectionarrayFree. E_NOT_FOUND and
// no array when nothing is selected; CANT_ACCESS; BAD_INPUTS.
ProError ProSelbufferSelectionsGet(ProSelection** ret_buff);

// Takes everything out. CANT_ACCESS; CANT_MODIFY.
ProError ProSelbufferClear(void);

// Adds a copy of the selection. INVALID_ITEM for one outside the current model; NOT_DISPLAYED; BAD_CONTEXT
// for one that does not go with what is there, as a surface with a component; CANT_ACCESS; CANT_MODIFY.
ProError ProSelbufferSelectionAdd(ProSelection add_sel);

PRO_END_C_DECLS
