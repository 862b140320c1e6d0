// What the functions of components share.

#pragma once

#include <ProObjects.h>

#include "simulator/session/session.h"

namespace sim {

// The component that an item is, with the assembly that holds it; null when it is none.
struct Placed {
    SimModel* owner = nullptr;
    Feature* component = nullptr;
};
Placed FindComponent(Session& host, const ProModelitem* item);

// Axes of length 1 at right angles, and nothing in the last column.
bool IsPlacement(const Matrix& matrix);

}  // namespace sim
