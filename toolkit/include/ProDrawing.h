// Drawings: sheets.
#pragma once

#include <ProObjects.h>

PRO_BEGIN_C_DECLS

// Gives the number of sheets; they count from 1. BAD_INPUTS.
ProError ProDrawingSheetsCount(ProDrawing drawing, int* n_sheets);

// Gives a sheet's size as a word, such as A3, and its matrix from screen coordinates to drawing
// units. Neither output may be NULL. BAD_INPUTS; GENERAL_ERROR.
ProError ProDrawingSheetTrfGet(ProDrawing drawing, int sheet, ProName sheet_size, ProMatrix transform);

PRO_END_C_DECLS
