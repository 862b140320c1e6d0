// What the user picked, as the host's functions see it.

#pragma once

#include "simulator/cad/model.h"
#include "simulator/ui/user.h"

namespace sim {

// The item's type number; a pick of a model itself has the model's.
inline int ItemType(const Pick& pick) {
    return pick.type == 0 ? static_cast<int>(pick.model->Kind()) : pick.type;
}

}  // namespace sim
