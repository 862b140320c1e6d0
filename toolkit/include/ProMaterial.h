// Materials of parts.
#pragma once

#include <ProObjects.h>

PRO_BEGIN_C_DECLS

// A material of a part by its name; nothing to free.
typedef struct pro_material {
    ProName matl_name;
    ProSolid part;
} ProMaterial;

// Adds the material of a file to a part, or updates it there. `matl_name` has no extension: the host tries
// .mtl, then .mat. Fails for a model that is no part, for a missing file and for one with errors.
ProError ProMaterialfileRead(ProSolid part, ProName matl_name);

// Makes a material of a part its current one. A sheet-metal part also gets the bend table of the material and
// is regenerated, unless the option material_update_smt_bend_table is never_replace. BAD_INPUTS; a further
// status for a read-only part.
ProError ProMaterialCurrentSet(ProMaterial* p_material);

PRO_END_C_DECLS

static_assert(sizeof(ProMaterial) == 72, "a name and a pointer, no padding");
