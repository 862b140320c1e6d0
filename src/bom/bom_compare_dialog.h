// The comparison with an earlier list, as the user sees it.
#pragma once

#include "bom/bom_sheet.h"

namespace kv {

// Lets the user choose a list that was written before and shows what has changed since. What goes wrong is
// shown, unless the user cancelled.
void BomCompare(const BomSheet& sheet);

}  // namespace kv
