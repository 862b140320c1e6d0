// The command KvBackup.
#pragma once

#include <ProToolkit.h>

namespace kv {

// Backs up every model below the current assembly, with its drawing, into a folder that the user chooses.
// Errors: those of finding the assembly, choosing and entering the folder, and collecting the models.
[[nodiscard]] ProError KvBackup();

}  // namespace kv
