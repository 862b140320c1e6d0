// Assembly components.
#pragma once

#include <ProFeature.h>
#include <ProObjects.h>

PRO_BEGIN_C_DECLS

// Gives the model behind a component. Fails for a feature that is no component and for a
// model that is not in memory.
ProError ProAsmcompMdlGet(ProAsmcomp* p_feat_handle, ProMdl* p_mdl_handle);

PRO_END_C_DECLS
