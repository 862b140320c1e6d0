// Radio groups of dialogs.
#pragma once

#include <ProUI.h>

PRO_BEGIN_C_DECLS

// Gives the names of all buttons; free the list with ProStringarrayFree. GENERAL_ERROR.
ProError ProUIRadiogroupNamesGet(char* dialog, char* radiogroup, int* n_names, char*** names);

// Gives the name of the chosen button as a list of at most one; free the list with
// ProStringarrayFree. GENERAL_ERROR.
ProError ProUIRadiogroupSelectednamesGet(char* dialog, char* radiogroup, int* n_name, char*** names);

// Chooses a button; the list holds its one name. GENERAL_ERROR.
ProError ProUIRadiogroupSelectednamesSet(char* dialog, char* radiogroup, int n_names, char** names);

// Sets what runs when the user chooses a button; a choice made by a call runs nothing. GENERAL_ERROR.
ProError ProUIRadiogroupSelectActionSet(char* dialog, char* radiogroup, ProUIAction action,
                                        ProAppData appdata);

PRO_END_C_DECLS
