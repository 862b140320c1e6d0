// The product structure of a STEP file.

#pragma once

#include <filesystem>

#include "simulator/import/structure.h"

namespace sim {

// AP203, AP214 and AP242: products with names, each use of a product in an assembly, where it stands, and the
// unit of length. A product takes its name, or else its id; what the name does not say stays in the
// parameters PRODUCT_ID and DESCRIPTION. Shapes are passed over, so that the memory needed goes with the
// structure alone. Throws ImportError.
ImportedStructure ReadStepStructure(const std::filesystem::path& file);

}  // namespace sim
