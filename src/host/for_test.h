// The command ForTest.
#pragma once

#include <ProToolkit.h>

namespace kv {

// A developer's probe: reads the current model and the item of one picked feature, and does nothing with
// them. Errors: the first of the host's.
[[nodiscard]] ProError ForTest();

}  // namespace kv
