// Manufacturing models.
#pragma once

#include <ProObjects.h>

PRO_BEGIN_C_DECLS

// Gives the top assembly of a manufacturing model. E_NOT_FOUND; BAD_INPUTS.
ProError ProMfgAssemGet(ProMfg mfg, ProAssembly* r_assem_obj);

PRO_END_C_DECLS
