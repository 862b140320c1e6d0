// The command SetMat.
#pragma once

#include <ProToolkit.h>

namespace kv {

// Gives the material of a file that the user chooses to the current part, or to parts of the current
// assembly. Errors: PRO_TK_USER_ABORT from the choice, which says nothing; those of finding the parts.
[[nodiscard]] ProError SetMat();

}  // namespace kv
