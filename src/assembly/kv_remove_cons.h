// KvRemoveCons: selected components lose their constraints.
#pragma once

#include <ProToolkit.h>

namespace kv {

// Errors: what keeps the dialog from opening.
ProError KvRemoveCons();

}  // namespace kv
