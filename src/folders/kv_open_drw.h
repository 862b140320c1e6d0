// The command KvOpenDrw.
#pragma once

#include <ProToolkit.h>

namespace kv {

// Opens the drawing that has the selected model's name. Errors: those of reading the selection and of opening
// the drawing.
[[nodiscard]] ProError KvOpenDrw();

}  // namespace kv
