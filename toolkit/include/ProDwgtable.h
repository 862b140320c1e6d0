// Tables of drawings.
#pragma once

#include <ProObjects.h>

PRO_BEGIN_C_DECLS

// Of the type PRO_DRAW_TABLE.
typedef struct pro_model_item ProDwgtable;

// Whether a format has brought the table. BAD_INPUTS.
ProError ProDwgtableIsFromFormat(ProDwgtable* table, ProBoolean* is_from_format);

// Gives the sheet that a segment stands on: -1 for the only one, else from 0. BAD_INPUTS.
ProError ProDwgtableSegSheetGet(ProDwgtable* table, int segment, int* sheet);

// Gives the number of segments, -1 on an error. BAD_INPUTS.
ProError ProDwgtableSegCount(ProDwgtable* table, int* n_segments);

// Deletes the table; `display` is ignored. CANT_MODIFY; BAD_INPUTS.
ProError ProDwgtableDelete(ProDwgtable* table, int display);

PRO_END_C_DECLS
