// The box around what a part or an assembly is made of.

#pragma once

#include <optional>

#include "simulator/cad/model.h"

namespace sim {

// Around all surfaces of the model and of what is placed in it, seen through `view`; with the origins of its
// own coordinate systems if wanted. Suppressed components, and those that the active representation leaves
// out, do not count. Of a surface its box counts, all eight corners of it. Nothing for a model without any.
std::optional<Box> OutlineOf(const SimModel& model, const Matrix& view, bool withSystems);

}  // namespace sim
