// KvDimModify: the texts of several dimensions of a drawing.
#pragma once

#include <ProToolkit.h>

namespace kv {

// Errors: what keeps the dialog from opening; PRO_TK_USER_ABORT when nothing is picked.
ProError KvDimModify();

}  // namespace kv
