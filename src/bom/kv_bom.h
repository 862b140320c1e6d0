// The command KvBom.
#pragma once

#include <ProToolkit.h>

namespace kv {

// Shows the bill of materials of the current assembly. Errors: those of finding the assembly, collecting its
// components and running the dialog.
[[nodiscard]] ProError KvBom();

}  // namespace kv
