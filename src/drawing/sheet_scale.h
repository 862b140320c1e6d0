// The commands SameScale, KvUpdateSheetScale and KvUpdateMainViewScale.
#pragma once

#include <ProToolkit.h>

namespace kv {

// Asks for a scale and gives it to the views and the current drawing. Errors: PRO_TK_MSG_USER_QUIT and
// PRO_TK_GENERAL_ERROR when the user enters none, PRO_TK_BAD_INPUTS for one that is not above zero; the
// first of the host's.
[[nodiscard]] ProError SameScale();

// Gives the scale of the current sheet to the views and the drawing. Errors: the first of the host's.
[[nodiscard]] ProError KvUpdateSheetScale();

// Gives the scale of the main view to the other views and the drawing. Errors: the first of the host's.
[[nodiscard]] ProError KvUpdateMainViewScale();

}  // namespace kv
