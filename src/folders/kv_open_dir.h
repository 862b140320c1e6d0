// The command KvOpenDir.
#pragma once

#include <ProToolkit.h>

namespace kv {

// Shows the working directory in the Windows explorer. Errors: those of ProDirectoryCurrentGet.
[[nodiscard]] ProError KvOpenDir();

}  // namespace kv
