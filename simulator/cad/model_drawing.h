// A picture of what a window shows of a part or an assembly.

#pragma once

#include <string>

#include "simulator/cad/model.h"

namespace sim {

// An SVG picture: each part below the model as the box of its surfaces, in colours as set, hidden components
// and what the active representation leaves out not, see-through ones light. The view is turned as `view`
// says and fitted to the picture.
std::string ModelDrawing(const SimModel& model, const Matrix& view);

}  // namespace sim
