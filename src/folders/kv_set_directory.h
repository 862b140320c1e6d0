// The command KvSetDirectory.
#pragma once

#include <ProToolkit.h>

namespace kv {

// Makes the folder of the current model the working directory. Errors: those of finding and changing it.
[[nodiscard]] ProError KvSetDirectory();

}  // namespace kv
