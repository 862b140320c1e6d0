// The command SetBendTable.
#pragma once

#include <ProToolkit.h>

namespace kv {

// Gives a bend table that the user chooses to the current sheet-metal part, or to those of the current
// assembly. Errors: PRO_TK_USER_ABORT from the choice, which says nothing; PRO_TK_E_NOT_FOUND for a selection
// without sheet-metal parts; those of finding the parts.
[[nodiscard]] ProError SetBendTable();

}  // namespace kv
