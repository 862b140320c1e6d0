// The commands KvExStp, KvExIgs and KvExSat: an assembly and all its components, a file for each model, into
// a folder that the user picks.
#pragma once

#include <ProToolkit.h>

namespace kv {

// Errors: those of finding the assembly, choosing the folder and collecting the models. A model that cannot
// be written is told at the end.
[[nodiscard]] ProError KvExStp();
[[nodiscard]] ProError KvExSat();

// The same from a dialog that asks what the files take in. Errors: those of finding the assembly and of the
// dialog.
[[nodiscard]] ProError KvExIgs();

}  // namespace kv
