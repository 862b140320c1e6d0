// The commands that belong to the plug-in as a whole.
#pragma once

#include <ProToolkit.h>

namespace kv {

// Shows the versions of plug-in and host.
ProError KvVersion();

// Shows the about dialog and, after its OK, the disclaimer. Errors: those of the dialog.
ProError AboutKv();

// A developer's probe: reads the current model and the item of one picked feature, and does nothing with
// them. Errors: the first of the host's.
ProError ForTest();

}  // namespace kv
