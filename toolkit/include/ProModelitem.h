// Model items.
#pragma once

#include <ProObjects.h>

PRO_BEGIN_C_DECLS

// Gives the model that owns the item. BAD_INPUTS.
ProError ProModelitemMdlGet(ProModelitem* p_model_item, ProMdl* p_owner);

// Gives the name of a feature or another item in a buffer of PRO_NAME_SIZE. E_NOT_FOUND for one without;
// BAD_INPUTS, also for a type that has no names.
ProError ProModelitemNameGet(ProModelitem* p_item, ProName name);

PRO_END_C_DECLS
