// Tables of dialogs. Rows and columns are known by name.
//
// All answer BAD_INPUTS for NULL and GENERAL_ERROR for a dialog, table, row or column that does not exist.
#pragma once

#include <ProUI.h>

PRO_BEGIN_C_DECLS

// Sets what runs on a double click or Return in the table.
ProError ProUITableActivateActionSet(char* dialog, char* component, ProUIAction callback, ProAppData data);

// Sets what runs when the user has moved to another cell.
ProError ProUITableArmActionSet(char* dialog, char* component, ProUIAction callback, ProAppData data);

// Gives the names of the cell that the user is at; free each with ProStringFree.
ProError ProUITableFocusCellGet(char* dialog, char* component, char** row, char** column);

// Copies a component of the dialog `source_device`, a predefined one of the table, into a cell. The copy
// goes by `name` and is used like any other component of that name.
ProError ProUITableCellComponentCopy(char* dialog, char* component, char* row, char* column,
                                     char* source_device, char* source_component, char* name);

// Shows in a cell what is there under that name already.
ProError ProUITableCellComponentNameSet(char* dialog, char* component, char* row, char* column, char* name);

// Takes the cell's component away.
ProError ProUITableCellComponentDelete(char* dialog, char* component, char* row, char* column);

// Lets Return in the table count as a double click.
ProError ProUITableActivateonreturnEnable(char* dialog, char* component);

// Gives the names in the shown order, NULL and 0 for none; free the list with ProStringarrayFree.
ProError ProUITableRownamesGet(char* dialog, char* component, int* count, char*** values);
ProError ProUITableColumnnamesGet(char* dialog, char* component, int* count, char*** values);

// The same for the labels; free the list with ProWstringarrayFree.
ProError ProUITableRowlabelsGet(char* dialog, char* component, int* count, wchar_t*** values);
ProError ProUITableColumnlabelsGet(char* dialog, char* component, int* count, wchar_t*** values);

// Labels all columns; `count` has to be the number of columns.
ProError ProUITableColumnlabelsSet(char* dialog, char* component, int count, wchar_t** values);

// Inserts rows after `row`, NULL for the top. Names have to be new.
ProError ProUITableRowsInsert(char* dialog, char* component, char* row, int count, char** names);

// Inserts columns after `column`, with empty labels. Names have to be new.
ProError ProUITableColumnsInsert(char* dialog, char* component, char* column, int count, char** names);

ProError ProUITableRowsDelete(char* dialog, char* component, int count, char** names);
ProError ProUITableColumnsDelete(char* dialog, char* component, int count, char** names);

ProError ProUITableCellLabelSet(char* dialog, char* component, char* row, char* column, wchar_t* label);

// Gives the text; free it with ProWstringFree. A cell that was never set gives an empty text, no text or a
// failure.
ProError ProUITableCellLabelGet(char* dialog, char* component, char* row, char* column, wchar_t** label);

// The colour set is the colour read back.
ProError ProUITableCellBackgroundColorSet(char* dialog, char* component, char* row, char* column,
                                          ProUIColor color);
ProError ProUITableCellBackgroundColorGet(char* dialog, char* component, char* row, char* column,
                                          ProUIColor* color);

// Gives the selected cells as pairs of names, row before column; `count` counts the names. Free the list
// with ProStringarrayFree.
ProError ProUITableSelectednamesGet(char* dialog, char* component, int* count, char*** values);

// Say how many cells resp. whole columns the user may select.
ProError ProUITableSelectionpolicySet(char* dialog, char* component, ProUISelectionpolicy value);
ProError ProUITableColumnselectionpolicySet(char* dialog, char* component, ProUISelectionpolicy value);

// Replaces the selection by the cells in `values`, pairs as above.
ProError ProUITableSelectednamesSet(char* dialog, char* component, int count, char** values);

// Sets the action that runs when the user selects a column by its title.
ProError ProUITableColumnselectActionSet(char* dialog, char* component, ProUIAction callback,
                                         ProAppData data);
// Gives the names of the selected columns; free them with ProStringarrayFree. Set replaces them.
ProError ProUITableSelectedcolumnnamesGet(char* dialog, char* component, int* count, char*** values);
ProError ProUITableSelectedcolumnnamesSet(char* dialog, char* component, int count, char** values);

// Gives the names of the selected rows; free them with ProStringarrayFree.
ProError ProUITableSelectedrownamesGet(char* dialog, char* component, int* count, char*** values);

// Add all cells of the rows to the selection resp. take them out; only under the policies for several cells.
ProError ProUITableRowCellsSelect(char* dialog, char* component, int count, char** names);
ProError ProUITableRowCellsDeselect(char* dialog, char* component, int count, char** names);

PRO_END_C_DECLS
