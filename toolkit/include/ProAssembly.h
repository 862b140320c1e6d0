// Assemblies: the activated model.
#pragma once

#include <ProMdl.h>

PRO_BEGIN_C_DECLS

// Gives the activated model, which may be a component somewhere in the current assembly. BAD_CONTEXT when
// there is none.
ProError ProMdlActiveGet(ProMdl* p_handle);

PRO_END_C_DECLS
