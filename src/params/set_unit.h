// The command SetUnit.
#pragma once

#include <ProToolkit.h>

namespace kv {

// Runs the dialog of units. Errors: those of RunDialog.
ProError SetUnit();

}  // namespace kv
