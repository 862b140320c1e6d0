// The command KvParams.
#pragma once

#include <ProToolkit.h>

namespace kv {

// Adds, updates or deletes one parameter in many models and writes two derived ones. Errors: those of its
// dialog.
[[nodiscard]] ProError KvParams();

}  // namespace kv
