// Drawings: sheets, models, views.
#pragma once

#include <ProObjects.h>
#include <ProView.h>

PRO_BEGIN_C_DECLS

// Gives the number of sheets; they count from 1. BAD_INPUTS.
ProError ProDrawingSheetsCount(ProDrawing drawing, int* n_sheets);

// Gives a sheet's size as a word, such as A3, and its matrix from screen coordinates to drawing
// units. Neither output may be NULL. BAD_INPUTS; GENERAL_ERROR.
ProError ProDrawingSheetTrfGet(ProDrawing drawing, int sheet, ProName sheet_size, ProMatrix transform);

// Gives the number of the sheet that is current. BAD_INPUTS, with 0 written.
ProError ProDrawingCurrentSheetGet(ProDrawing drawing, int* current_sheet);

// Makes a sheet the current one; the drawing need not be displayed. BAD_INPUTS.
ProError ProDrawingCurrentSheetSet(ProDrawing drawing, int current_sheet);

// Gives the models that were added to the drawing, shown or not, of an assembly the assembly
// alone; free the array with ProArrayFree. BAD_INPUTS; E_NOT_FOUND and no array for none.
ProError ProDrawingSolidsCollect(ProDrawing drawing, ProSolid** solids);

// Gives the views of all sheets; free the array with ProArrayFree. BAD_INPUTS; E_NOT_FOUND and no
// array for none.
ProError ProDrawingViewsCollect(ProDrawing drawing, ProView** views);

// Gives the model that a view shows. BAD_INPUTS; E_NOT_FOUND when the model could not be retrieved.
ProError ProDrawingViewSolidGet(ProDrawing drawing, ProView view, ProSolid* solid);

// Gives the sheet that a view stands on. BAD_INPUTS; E_NOT_FOUND.
ProError ProDrawingViewSheetGet(ProDrawing drawing, ProView view, int* sheet);

PRO_END_C_DECLS
