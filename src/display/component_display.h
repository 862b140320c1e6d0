// Which components the window shows: KvIsolate, KvHideReverse, KvShowAllComp.
#pragma once

#include <ProToolkit.h>

namespace kv {

// Hides all parts but the selected ones and those below selected sub-assemblies.
ProError KvIsolate();
// Hides the parts that are shown, and shows those that are hidden.
ProError KvHideReverse();
// Shows all components.
ProError KvShowAllComp();

}  // namespace kv
