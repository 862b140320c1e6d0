#pragma once

#include <ProToolkit.h>

namespace kv {

// Takes all colours off the model in the window.
ProError KvClearAllColor();

}  // namespace kv
