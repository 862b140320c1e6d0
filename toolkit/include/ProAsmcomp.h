// Assembly components.
#pragma once

#include <ProFeature.h>
#include <ProObjects.h>
#include <ProSelection.h>

PRO_BEGIN_C_DECLS

// Gives the model behind a component. Fails for a feature that is no component and for a
// model that is not in memory.
ProError ProAsmcompMdlGet(ProAsmcomp* p_feat_handle, ProMdl* p_mdl_handle);

// Places a model in an assembly, NULL for the current one, without constraints: at `init_pos` until it gets
// some. BAD_INPUTS; CANT_MODIFY; UNSUPPORTED; GENERAL_ERROR.
ProError ProAsmcompAssemble(ProAssembly owner_assembly, ProSolid component_model, ProMatrix init_pos,
                            ProAsmcomp* feature);

// Lets the user define the constraints of a component in the host's dialog, and comes back when that is
// closed. USER_ABORT for Cancel; BAD_INPUTS.
ProError ProAsmcompConstrRedefUI(ProAsmcomp* p_feat_handle);

// ---- Constraints

typedef struct asm_comp_constraint* ProAsmcompconstraint;

typedef enum ProAsmcompConstrTypes {
    PRO_ASM_UNDEF = -1,
    PRO_ASM_CSYS = 6,
    PRO_ASM_DEF_PLACEMENT = 10,
    PRO_ASM_FIX = 13
} ProAsmcompConstrType;

typedef enum ProDatumsides {
    PRO_DATUM_SIDE_RED = -1,
    PRO_DATUM_SIDE_NONE = 0,
    PRO_DATUM_SIDE_YELLOW = 1
} ProDatumside;

// Gives an empty constraint. The caller frees it, alone or with its array. BAD_INPUTS; OUT_OF_MEMORY.
ProError ProAsmcompconstraintAlloc(ProAsmcompconstraint* p_constraint);

// Takes the constraint itself. BAD_INPUTS.
ProError ProAsmcompconstraintFree(ProAsmcompconstraint constraint);

// Frees a ProArray of constraints with its members. BAD_INPUTS.
ProError ProAsmcompconstraintArrayFree(ProAsmcompconstraint* constraints);

ProError ProAsmcompconstraintTypeSet(ProAsmcompconstraint constraint, ProAsmcompConstrType type);

// The reference in the assembly, which needs a component path, and the one in the component; the selections
// stay the caller's. BAD_INPUTS.
ProError ProAsmcompconstraintAsmreferenceSet(ProAsmcompconstraint constraint, ProSelection asm_ref,
                                             ProDatumside asm_orient);
ProError ProAsmcompconstraintCompreferenceSet(ProAsmcompconstraint constraint, ProSelection comp_ref,
                                              ProDatumside comp_orient);

// Replaces the constraints of a component by those of a ProArray and regenerates it; they stay the caller's.
// The path is NULL when all references lie in the owner assembly. BAD_INPUTS; CANT_MODIFY; GENERAL_ERROR when
// the component went back to its old constraints.
ProError ProAsmcompConstraintsSet(ProAsmcomppath* component_path, ProAsmcomp* component,
                                  ProAsmcompconstraint* p_constraints);

// Gives the constraints of a component in a ProArray, to be freed with ProAsmcompconstraintArrayFree. The
// path leads to the assembly that holds it. BAD_INPUTS; E_NOT_FOUND for none.
ProError ProAsmcompConstraintsWithComppathGet(ProAsmcomp* component, ProAsmcomppath* component_path,
                                              ProAsmcompconstraint** pp_constraints);

ProError ProAsmcompconstraintTypeGet(ProAsmcompconstraint constraint, ProAsmcompConstrType* type);

// Takes away the constraint of this index, all of them for -1; those of an interface stay. The component is
// not regenerated. BAD_INPUTS; E_NOT_FOUND.
ProError ProAsmcompConstrRemove(ProAsmcomp* p_feat_handle, int index);

// ---- Position and state of a component

// Sets where a component without enough constraints goes when it is regenerated; the matrix turns and shifts
// only. The path is NULL or leads to the assembly that holds it. CANT_MODIFY; BAD_INPUTS.
ProError ProAsmcompPositionSet(ProAsmcomppath* component_path, ProAsmcomp* component, ProMatrix position);

// The second argument is reserved: false. BAD_INPUTS.
ProError ProAsmcompRegenerate(ProAsmcomp* p_feat_handle, ProBoolean update_soft);

// Whether a component has constraints which leave it movable. BAD_INPUTS.
ProError ProAsmcompIsUnderconstrained(ProAsmcomp* comp_handle, ProBoolean* p_comp_is_underconstrained);

// Whether it stays where it last was because its constraints cannot be met. BAD_INPUTS.
ProError ProAsmcompIsFrozen(ProAsmcomp* comp_handle, ProBoolean* p_comp_is_frozen);

// Whether it has no place in the assembly. BAD_INPUTS; NO_LICENSE.
ProError ProAsmcompIsUnplaced(ProAsmcomp* comp_handle, ProBoolean* p_comp_is_unplaced);

PRO_END_C_DECLS
