// Placing a new component on its assembly's default coordinate system.
#pragma once

#include <ProMdl.h>

#include "assembly/new_model.h"

namespace kv {

// A new part without a coordinate system.
inline constexpr wchar_t kNoSystemInPart[] = L"\t零件模板无坐标系,无法缺省装配新零件\t";

// Ties the first coordinate system of a placed copy to the assembly's first one, records it and refreshes the
// assembly's model tree. Where the assembly has no coordinate system a box says so; where the copy has none
// the box shows `noSystem`.
//
// Errors  PRO_TK_NO_COORD_SYSTEM after a box; else those of the host calls, the component is then as before
ProError ConstrainBySystems(BatchRun& run, ProMdl assembly, NewModel& copy, const wchar_t* noSystem);

}  // namespace kv
