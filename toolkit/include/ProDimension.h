// Dimensions: texts, value, symbol.
#pragma once

#include <ProObjects.h>

PRO_BEGIN_C_DECLS

// Of the type PRO_DIMENSION or PRO_REF_DIMENSION; its owner is the model or the drawing that it is stored in.
typedef struct pro_model_item ProDimension;

typedef enum pro_dim_value_display {
    PRO_DIMVALUEDISPLAY_NOMINAL = 0,
    PRO_DIMVALUEDISPLAY_OVERRIDE = 1,
    PRO_DIMVALUEDISPLAY_HIDE = 2
} ProDimensionValueDisplay;

// Gives the lines of the text, in which "@D" stands for the value, in a ProArray; free it with
// ProWstringproarrayFree. BAD_INPUTS; E_NOT_FOUND for no text.
ProError ProDimensionTextWstringsGet(ProDimension* dimension, wchar_t*** p_text);

// Replaces the lines by those of a ProArray, which stays the caller's. CANT_MODIFY; BAD_INPUTS;
// GENERAL_ERROR.
ProError ProDimensionTextWstringsSet(ProDimension* dimension, wchar_t** text);

// Gives the symbol, such as d1. GENERAL_ERROR.
ProError ProDimensionSymbolGet(ProDimension* dimension, ProName symbol);

// Gives the value in the units of the model. GENERAL_ERROR.
ProError ProDimensionValueGet(ProDimension* dimension, double* value);

// How the value shows. BAD_INPUTS; for the second CANT_MODIFY.
ProError ProDimensionValuedisplayGet(ProDimension* dimension, ProDimensionValueDisplay* display);
ProError ProDimensionValuedisplaySet(ProDimension* dimension, ProDimensionValueDisplay display);

PRO_END_C_DECLS
