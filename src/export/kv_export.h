// The command KvExport.
#pragma once

#include <ProToolkit.h>

namespace kv {

// Exports drawings of the working directory to any of five formats, from a dialog. Errors: those of finding
// drawings and models in the working directory, and of the dialog.
[[nodiscard]] ProError KvExport();

}  // namespace kv
