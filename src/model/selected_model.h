// Models that are selected.
#pragma once

#include <ProMdl.h>
#include <ProSelection.h>

namespace kv {

// The model that a selected item is, or the one that it belongs to. Errors: those of
// ProSelectionModelitemGet and ProModelitemMdlGet.
[[nodiscard]] ProError SelectedModelGet(ProSelection selection, ProMdl& model);

}  // namespace kv
