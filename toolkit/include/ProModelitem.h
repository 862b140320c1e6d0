// Model items.
#pragma once

#include <ProObjects.h>

PRO_BEGIN_C_DECLS

// Gives the model that owns the item. BAD_INPUTS.
ProError ProModelitemMdlGet(ProModelitem* p_model_item, ProMdl* p_owner);

PRO_END_C_DECLS
