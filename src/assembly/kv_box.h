#pragma once

#include <ProToolkit.h>

namespace kv {

// Shows the boxes around the selected components and the model in the window, and the stock to cut them from.
ProError KvBox();

}  // namespace kv
