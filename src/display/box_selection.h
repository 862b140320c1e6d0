// Box selection: BoxSel, KvBoxSelSur.
#pragma once

#include <ProToolkit.h>

namespace kv {

// Parts, and surfaces, in a box that the user draws become the selection.
ProError BoxSel();
ProError KvBoxSelSur();

}  // namespace kv
