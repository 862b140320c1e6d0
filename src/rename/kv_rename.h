// The command KvRename.
#pragma once

#include <ProToolkit.h>

namespace kv {

// Lets the user rename the models of the current assembly in a table. Errors: those of finding the assembly,
// of collecting its models and of the dialog.
[[nodiscard]] ProError KvRename();

}  // namespace kv
