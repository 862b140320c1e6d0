// Relation sets of models.
#pragma once

#include <ProObjects.h>
#include <ProWstring.h>

PRO_BEGIN_C_DECLS

// Opaque in spite of its members; nothing to free.
typedef struct pro_model_item ProRelset;

// Gives the ordinary relation set of an item. Any failure means that there is none.
ProError ProModelitemToRelset(ProModelitem* p_item, ProRelset* p_relset);

// Gives the set that is solved after regeneration, for a model and not for its item; good for reading,
// setting and deleting relations only. Fails when there is none; BAD_INPUTS.
ProError ProRelsetPostregenerationInit(ProMdl pro_model, ProRelset* p_relset);

// Makes the ordinary relation set of an item. Fails when there is one already, for a read-only model, and for
// internal errors; nothing is made then.
ProError ProRelsetCreate(ProModelitem* p_item, ProRelset* p_relset);

// Adds the lines of a set to a ProArray of strings that is there before and used for this one call;
// ProWstringproarrayFree takes it back with the strings.
ProError ProRelsetRelationsGet(ProRelset* p_relset, ProWstring** p_line_array);

// Puts `n_lines` lines in place of all the set has; they stay the caller's. Fails for a read-only model and
// for lines that are no relations.
ProError ProRelsetRelationsSet(ProRelset* p_relset, ProWstring* line_array, int n_lines);

// Deletes all relations of a set. Fails for a read-only model.
ProError ProRelsetDelete(ProRelset* p_relset);

PRO_END_C_DECLS
