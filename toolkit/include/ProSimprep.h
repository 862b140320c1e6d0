// Simplified representations of assemblies.
#pragma once

#include <ProSimprepdata.h>

PRO_BEGIN_C_DECLS

// Visit callbacks, see ProObjects.h; the item is a ProSimprep.
typedef ProError (*ProSimprepVisitAction)(ProSimprep* p_simp_rep, ProError status, ProAppData app_data);
typedef ProError (*ProSimprepFilterAction)(ProSimprep* p_simp_rep, ProAppData app_data);

// Gives a representation by its name or, for a NULL name, by its id: -1 is the master. BAD_INPUTS; a further
// status for one that the assembly does not have.
ProError ProSimprepInit(ProName rep_name, int rep_id, ProSolid p_solid, ProSimprep* p_simp_rep);

// Visits the user's representations; the filter comes before the action. A status of its own for none, else
// the action's answer. BAD_INPUTS.
ProError ProSolidSimprepVisit(ProSolid p_solid, ProSimprepFilterAction filter, ProSimprepVisitAction action,
                              ProAppData app_data);

// Makes a representation the active one; what is shown follows with ProSolidDisplay. BAD_INPUTS; CANT_MODIFY;
// a further status for one that the assembly does not have.
ProError ProSimprepActivate(ProSolid p_solid, ProSimprep* p_simp_rep);
// BAD_INPUTS.
ProError ProSimprepActiveGet(ProSolid solid, ProSimprep* p_simp_rep);

// Makes a representation of data, which stay the caller's. BAD_INPUTS; CANT_MODIFY.
ProError ProSimprepCreate(ProSolid p_solid, ProSimprepdata* p_data, ProSimprep* p_new_rep);
// BAD_INPUTS; CANT_MODIFY; a further status for the active one.
ProError ProSimprepDelete(ProSimprep* p_simp_rep);

PRO_END_C_DECLS
