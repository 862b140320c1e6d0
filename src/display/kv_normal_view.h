#pragma once

#include <ProToolkit.h>

namespace kv {

// Turns the view to the nearest principal orientation.
ProError KvNormalView();

}  // namespace kv
