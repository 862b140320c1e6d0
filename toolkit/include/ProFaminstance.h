// Instances of family tables.
#pragma once

#include <ProFamtable.h>

PRO_BEGIN_C_DECLS

// Gives the generic of an instance: with `immediate` non-zero the one right above it, else the topmost.
// E_NOT_FOUND for a model that is no instance; CANT_OPEN for an instance whose immediate generic is not in
// memory; BAD_INPUTS.
ProError ProFaminstanceGenericGet(ProMdl inst_model, int immediate, ProMdl* gen_model);

PRO_END_C_DECLS
