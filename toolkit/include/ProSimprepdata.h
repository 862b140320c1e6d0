// What a simplified representation is made of.
#pragma once

#include <ProObjects.h>

PRO_BEGIN_C_DECLS

typedef enum pro_simprep_action_type {
    PRO_SIMPREP_NONE = 0,
    PRO_SIMPREP_REVERSE = 1,
    PRO_SIMPREP_INCLUDE = 2,
    PRO_SIMPREP_EXCLUDE = 3
} ProSimprepActionType;

// A simplified representation by its id in its assembly; the master's is -1.
typedef struct pro_model_item ProSimprep;

// Goes through the functions below only.
typedef struct pro_simprep_data ProSimprepdata;

// Data of a substitution; not used where nothing is substituted.
typedef struct pro_substitution {
    int type;
    int path_size;
    ProIdTable subst_path;
    ProSimprep simp_rep;
} ProSubstitution;

// Filled by the functions below; the members are not to be relied on.
typedef struct pro_simprep_action {
    ProSimprepActionType type;
    ProSubstitution subst_data;
} ProSimprepAction;
typedef struct pro_simprep_item_path {
    int path_size;
    ProIdTable comp_path;
    int feat_id;
} ProSimprepitemPath;
typedef struct pro_simprep_item {
    ProSimprepitemPath item_path;
    ProSimprepAction action;
} ProSimprepitem;

// Begins data; free them with ProSimprepdataFree. The default action is INCLUDE or EXCLUDE. BAD_INPUTS.
ProError ProSimprepdataAlloc(ProName name, ProBoolean temporary, ProSimprepActionType default_action,
                             ProSimprepdata** p_result);
// Takes the address. BAD_INPUTS.
ProError ProSimprepdataFree(ProSimprepdata** p_data);

// Gives a copy of a representation's data; free it with ProSimprepdataFree. BAD_INPUTS; a further status for
// a representation that is gone.
ProError ProSimprepdataGet(ProSimprep* p_simp_rep, ProSimprepdata** p_data);
// Puts data in place of those of an existing representation. BAD_INPUTS; CANT_MODIFY.
ProError ProSimprepdataSet(ProSimprep* p_simp_rep, ProSimprepdata* p_data);
// BAD_INPUTS.
ProError ProSimprepdataNameGet(ProSimprepdata* p_data, ProName name);

// An action without a substitution takes NULL. BAD_INPUTS.
ProError ProSimprepActionInit(ProSimprepActionType action_type, ProSubstitution* p_subst_data,
                              ProSimprepAction* p_action);
// An item about a component by its path from the assembly that has the representation; the feature id is
// PRO_VALUE_UNUSED. BAD_INPUTS.
ProError ProSimprepdataitemInit(ProIdTable compidtab, int table_num, int feat_id, ProSimprepAction* p_action,
                                ProSimprepitem* p_item);
// The data keep a copy. BAD_INPUTS.
ProError ProSimprepdataitemAdd(ProSimprepdata* p_data, ProSimprepitem* p_item);

PRO_END_C_DECLS
