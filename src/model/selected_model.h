// The model that a selection is about.
#pragma once

#include <ProMdl.h>
#include <ProSelection.h>

namespace kv {

// Whether a selected component feature stands for the assembly that it is a feature of, as any other item
// does, or for the model that it places.
enum class ComponentMeans { Owner, Model };

// The model that the selected item is, or the one that the item belongs to. Errors: those of
// ProSelectionModelitemGet, ProModelitemMdlGet and ProAsmcompMdlGet.
[[nodiscard]] ProError SelectedModelGet(ProSelection selection, ComponentMeans component, ProMdl& model);

}  // namespace kv
