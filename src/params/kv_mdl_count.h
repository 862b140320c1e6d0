// The command KvMdlCount.
#pragma once

#include <ProToolkit.h>

namespace kv {

// Writes into every model below the current assembly how often it is placed there. Errors: those of finding
// the assembly and collecting its components.
[[nodiscard]] ProError KvMdlCount();

}  // namespace kv
