// Selections: what the user picked.
#pragma once

#include <ProObjects.h>

PRO_BEGIN_C_DECLS

typedef struct select3d* ProSelection;

// Filters, environment and application action of ProSelect; the application passes NULL.
typedef struct sel_functions ProSelFunctions;
typedef struct sel_environment* ProSelectionEnv;
typedef void* ProSelAppAction;

typedef enum pro_selection_env_attr {
    PRO_SELECT_DONE_REQUIRED = 50,
    PRO_SELECT_BY_MENU_ALLOWED = 51,
    PRO_SELECT_BY_BOX_ALLOWED = 52,
    PRO_SELECT_ACTIVE_COMPONENT_IGNORE = 53,
    PRO_SELECT_HIDE_SEL_DLG = 54
} ProSelectionEnvAttr;
typedef struct pro_selection_env_option {
    ProSelectionEnvAttr attribute;
    int attribute_value;
} ProSelectionEnvOption;

// Makes an environment of `count` options; free it with ProSelectionEnvFree. BAD_INPUTS.
ProError ProSelectionEnvAlloc(ProSelectionEnvOption* sel_env_array, int count, ProSelectionEnv* p_sel_env);
ProError ProSelectionEnvFree(ProSelectionEnv sel_env);

// Lets the user pick up to `max_count` items (-1: any number) of the kinds in the comma list
// `option`. The array belongs to the host, which overwrites it on the next call: free nothing.
// A pick ended with nothing is NO_ERROR, count 0 and NULL. USER_ABORT; PICK_ABOVE; E_DEADLOCK.
ProError ProSelect(char option[], int max_count, ProSelection* p_in_sel, ProSelFunctions* sel_func,
                   ProSelectionEnv sel_env, ProSelAppAction appl_act_data, ProSelection** p_sel_array,
                   int* p_n_sels);

// Gives the picked item. BAD_INPUTS; a further status for an item that is gone.
ProError ProSelectionModelitemGet(ProSelection selection, ProModelitem* p_mdl_item);

// Gives the component path from the root assembly to the model that owns the selected item. BAD_INPUTS.
ProError ProSelectionAsmcomppathGet(ProSelection selection, ProAsmcomppath* p_cmp_path);

// Copies a selection, such as one of ProSelect that has to outlive the next call; free it with
// ProSelectionFree. BAD_INPUTS; OUT_OF_MEMORY.
ProError ProSelectionCopy(ProSelection from, ProSelection* p_to);

// Makes a selection of an item, by the component path to the model that owns it. The path may be NULL for an
// item of a part, never for one of an assembly; without path and item the selection is empty. Free it with
// ProSelectionFree. BAD_INPUTS; OUT_OF_MEMORY.
ProError ProSelectionAlloc(ProAsmcomppath* p_cmp_path, ProModelitem* p_mdl_itm, ProSelection* p_selection);

// Takes the address. BAD_INPUTS.
ProError ProSelectionFree(ProSelection* p_selection);

// Frees a ProArray of selections with its members; takes the array, not its address.
// BAD_INPUTS.
ProError ProSelectionarrayFree(ProSelection* sel_array);

PRO_END_C_DECLS
