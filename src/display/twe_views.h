#pragma once

#include <ProToolkit.h>

namespace kv {

// Stores twelve standard views of the model in the window.
ProError TweViews();

}  // namespace kv
