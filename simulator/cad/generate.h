// Assemblies of any size, for measuring and trying.

#pragma once

#include <string_view>
#include <vector>

#include "simulator/cad/model_store.h"

namespace sim {

// A new assembly in memory with everything below it, the same one for the same numbers.
//
// placements  components that a walk of the whole tree meets: those of a sub-assembly count as often as it is
// placed.
//             Exact, but never less than what `depth` needs.
// depth       levels of components under the assembly, at least 1: with 1 it holds parts only.
//
// About a tenth as many distinct models are made, a quarter of them assemblies (none for a depth of 1).
// Aborts when the generated names are taken in the store.
SimModel& GenerateAssembly(ModelStore& store, int placements, int depth, unsigned seed,
                           std::wstring_view name = L"GEN_TOP");

// Drawings in memory, GEN_DRW_1 and so on, each of another model below the assembly as long as there are any,
// with `sheets` sheets of sizes in turn, a view on each, and the parameters of a title block. Aborts as
// above.
std::vector<SimModel*> GenerateDrawings(ModelStore& store, SimModel& assembly, int count, int sheets);

}  // namespace sim
