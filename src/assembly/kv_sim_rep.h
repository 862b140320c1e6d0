#pragma once

#include <ProToolkit.h>

namespace kv {

// Lists the simplified representations of the assembly in the window and makes new ones by rule.
ProError KvSimRep();

}  // namespace kv
