// KvMerge, KvMergeTo: several parts in one.
#pragma once

#include <ProToolkit.h>

namespace kv {

ProError KvMerge();
ProError KvMergeTo();

}  // namespace kv
