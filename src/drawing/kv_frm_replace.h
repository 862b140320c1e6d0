// KvFrmReplace: another format for the sheets of many drawings.
#pragma once

#include <ProToolkit.h>

namespace kv {

// Errors: those of ProFilesList, told when there is no drawing; what keeps the dialog from opening.
ProError KvFrmReplace();

}  // namespace kv
