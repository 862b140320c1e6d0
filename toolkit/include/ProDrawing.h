// Drawings: sheets, models, views, formats, creation from a template.
#pragma once

#include <ProDwgtable.h>
#include <ProMdl.h>
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

// ---- Scales

// Gives the drawing scale of a model on a sheet. NULL means the drawing's default model, and 1.0 is the
// answer for a drawing without any; a sheet below 1 means the current one. BAD_INPUTS; GENERAL_ERROR.
ProError ProDrawingScaleGet(ProDrawing drawing, ProSolid solid, int sheet, double* scale);

// Sets it, and with it the scale of the model's views on the sheet that have none of their own. CANT_MODIFY;
// BAD_INPUTS; GENERAL_ERROR.
ProError ProDrawingScaleSet(ProDrawing drawing, ProSolid solid, int sheet, double scale);

// Gives the scale that a view has, its own or not. GENERAL_ERROR.
ProError ProDrawingViewScaleGet(ProDrawing drawing, ProView view, double* scale);

// Gives a view a scale of its own; for views that are displayed in the current window only. CANT_MODIFY;
// GENERAL_ERROR.
ProError ProDrawingViewScaleSet(ProDrawing drawing, ProView view, double scale);

// Tells whether a view has a scale of its own. BAD_INPUTS.
ProError ProDrawingViewScaleIsUserdefined(ProDrawing drawing, ProView view, ProBoolean* p_is_userdefined);

// Updates what a sheet shows; it must be displayed in a window. GENERAL_ERROR.
ProError ProDwgSheetRegenerate(ProDrawing p_draw, int sheet_id);

// ---- Creation from a template, formats

// Flags.
typedef enum ProDwgcreateOptionsBits {
    PRODWGCREATE_DISPLAY_DRAWING = 1,
    PRODWGCREATE_SHOW_ERROR_DIALOG = 2,
    PRODWGCREATE_WRITE_ERRORS_TO_FILE = 4
} ProDwgcreateOptions;

// What went wrong while a drawing was created; opaque.
typedef struct dwgcreate_errs* ProDwgcreateErrs;

// Creates a drawing of a model from a template drawing; `new_model` names the model. What is wrong with the
// views is told in `errors`: free it with ProDwgcreateErrsFree. E_FOUND for a drawing that there is already;
// E_NOT_FOUND without the template or the model; INVALID_NAME; NO_PERMISSION; DWGCREATE_ERRORS for a drawing
// that was created, but with errors.
ProError ProDrawingFromTmpltCreate(ProName new_name, ProName dwg_template, ProModel* new_model,
                                   ProDwgcreateOptions options, ProDrawing* drawing,
                                   ProDwgcreateErrs* errors);

// BAD_INPUTS.
ProError ProDwgcreateErrsFree(ProDwgcreateErrs* errors);

// Puts a format on a sheet, in place of the one that it has. Drawing NULL and sheets below 1 mean the current
// drawing, its current sheet and the format's first one; `solid`, which may be NULL, is what the format's
// tables tell about. CANT_MODIFY; BAD_INPUTS; GENERAL_ERROR.
ProError ProDrawingFormatAdd(ProDrawing drawing, int drawing_sheet, ProSolid solid, ProMdl format,
                             int format_sheet);

// Gives the name of the format on a sheet. BAD_INPUTS; E_NOT_FOUND or NOT_EXIST for none.
ProError ProDrawingFormatGet(ProDrawing drawing, int sheet, ProName format_name);

// Gives the tables of all sheets; free the array with ProArrayFree. BAD_INPUTS; E_NOT_FOUND and no array for
// none.
ProError ProDrawingTablesCollect(ProDrawing drawing, ProDwgtable** tables);

PRO_END_C_DECLS
