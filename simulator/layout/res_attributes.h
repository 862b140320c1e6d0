// The attributes that layout files may give, and the values that these take.

#pragma once

#include <string>

#include "simulator/layout/res_check.h"
#include "simulator/layout/res_file.h"

namespace sim {

// Finds unknown attributes and values that do not fit; `owner` names in the findings whose they are.
void CheckAttributes(const ResAttributes& attributes, ComponentKind kind, const std::string& owner,
                     ResFindings& findings);
void CheckDialogAttributes(const ResAttributes& attributes, ResFindings& findings);

// Where a layout gives an attribute, as it spells it, that has never been met in a file in use: a host might
// not know it. Calls after the creation of the dialog do the same for certain.
ResFindings UnmetAttributes(const ResFile& layout);

}  // namespace sim
