// The command KvConfig.
#pragma once

#include <ProToolkit.h>

namespace kv {

// Lets the user edit the common settings. Errors: those of its dialog.
[[nodiscard]] ProError KvConfig();

}  // namespace kv
