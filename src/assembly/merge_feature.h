// The feature that takes one part into another.
#pragma once

#include <string>

#include <ProSelection.h>

namespace kv {

// Where the tree has the placement of the part: below the selection of the part, or beside it, which is what
// the host's documents show.
enum class MergeNesting { BelowSelection, BesideSelection };

// Makes a merge feature in the part that `target` selects.
//
// part    the part to be taken in, by its path from the same top assembly as the target's
// Errors  those of building the tree and of ProFeatureCreate; no feature was made then
[[nodiscard]] ProError MergeFeatureCreate(ProSelection target, ProSelection part, const std::wstring& name,
                                          MergeNesting nesting);

}  // namespace kv
