// What is selected before a command starts.
#pragma once

#include <ProObjects.h>
#include <ProSelection.h>

#include "base/host_handle.h"

namespace kv {

// The selected items in the order of selection; read them with Items. Errors: PRO_TK_E_NOT_FOUND when nothing
// is selected, else those of ProSelbufferSelectionsGet.
[[nodiscard]] ProError SelectionRead(SelectionArray& selections);

// The item behind a selection; of the type PRO_TYPE_INVALID when the host cannot tell it.
ProModelitem SelectedItem(ProSelection selection);

// Whether an item is a part or an assembly as a whole. A component that is selected as a feature is not.
bool IsWholeModel(const ProModelitem& item);

}  // namespace kv
