// Commands that have a place in the menu before they have an action.
#pragma once

#include <ProToolkit.h>

namespace kv {

// Tells the user that the command cannot be used yet.
[[nodiscard]] ProError NotAvailable();

}  // namespace kv
