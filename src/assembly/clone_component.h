// CloneComp, CloneAndReplace: a copy of the selected component's model.
#pragma once

#include <ProToolkit.h>

namespace kv {

ProError CloneComp();
ProError CloneAndReplace();

}  // namespace kv
