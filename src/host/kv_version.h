// The command KvVersion.
#pragma once

#include <ProToolkit.h>

namespace kv {

// Shows the versions of plug-in and host.
[[nodiscard]] ProError KvVersion();

}  // namespace kv
