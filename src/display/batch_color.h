#pragma once

#include <ProToolkit.h>

namespace kv {

// Gives each part below the model in the window, or the part in it, a random colour of a table.
ProError BatchColor();

}  // namespace kv
