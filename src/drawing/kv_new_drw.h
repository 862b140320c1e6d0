// The command KvNewDrw.
#pragma once

#include <ProToolkit.h>

namespace kv {

// Makes a drawing of the selected or current model from the template of a sheet size, or opens the drawing
// that it has. Errors: the first of the host's and of its dialog.
[[nodiscard]] ProError KvNewDrw();

}  // namespace kv
