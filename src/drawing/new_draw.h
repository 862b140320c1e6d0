// The command NewDraw.
#pragma once

#include <ProToolkit.h>

namespace kv {

// Makes a drawing of the selected or current model with a format that the user chooses, or opens the drawing
// that it has. Errors: the first of the host's.
[[nodiscard]] ProError NewDraw();

}  // namespace kv
