// KvSingleDim: the text of one dimension after the other.
#pragma once

#include <ProToolkit.h>

namespace kv {

// Ends with a pick of nothing. Errors: what keeps the dialog from opening.
ProError KvSingleDim();

}  // namespace kv
