// The command KvRelations.
#pragma once

#include <ProToolkit.h>

namespace kv {

// Runs the dialog of relations. Errors: those of RunDialog.
ProError KvRelations();

}  // namespace kv
