// Making things see-through: KvTransparent, SurfTransparent.
#pragma once

#include <ProToolkit.h>

namespace kv {

// Parts, assemblies and their occurrences that the user picks become see-through.
ProError KvTransparent();
// Surfaces that the user picks do.
ProError SurfTransparent();

}  // namespace kv
