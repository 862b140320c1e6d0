// The command AboutKv.
#pragma once

#include <ProToolkit.h>

namespace kv {

// Shows the about dialog and, after its OK, the disclaimer. Errors: those of the dialog.
[[nodiscard]] ProError AboutKv();

}  // namespace kv
