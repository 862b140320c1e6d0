// A coordinate system that the user picks, and its directions in other models.
#pragma once

#include <string>

#include <ProMdl.h>

#include "model/model_box.h"
#include "model/selection.h"

namespace kv {

struct PickedSystem {
    std::wstring name;
    AxisDirections axes = kOwnAxes;  // in the coordinates of the top model
};

// Lets the user pick a coordinate system of `top` or of something placed in it. Errors: those of ProSelect
// and of reading the system; PRO_TK_E_NOT_FOUND for a pick that ended with none.
[[nodiscard]] ProError SystemPick(ProMdl top, PickedSystem& system);

// Directions of the top model in the coordinates of a component. Errors: those of the component's path.
[[nodiscard]] ProError ComponentAxesGet(ProMdl top, const ComponentIds& ids, const AxisDirections& axes,
                                        AxisDirections& own);

}  // namespace kv
