// Values of parameters.
#pragma once

#include <ProToolkit.h>

PRO_BEGIN_C_DECLS

typedef enum param_value_types {
    PRO_PARAM_DOUBLE = 50,
    PRO_PARAM_STRING = 51,
    PRO_PARAM_INTEGER = 52,
    PRO_PARAM_BOOLEAN = 53,
    PRO_PARAM_NOTE_ID = 54,
    PRO_PARAM_VOID = 57,
    PRO_PARAM_NOT_SET = 58
} ProParamvalueType;

// d_val for DOUBLE, i_val for INTEGER and NOTE_ID, l_val (0 or 1) for BOOLEAN, s_val for STRING.
typedef union param_value_values {
    double d_val;
    int i_val;
    short l_val;
    ProLine s_val;
} ProParamvalueValue;

typedef struct Pro_Param_Value {
    ProParamvalueType type;
    ProParamvalueValue value;
} ProParamvalue;

// Fills the structure and touches no model. `p_value` points at the double, int or short, or
// is the wide text, which the caller has cut to 80 characters. BAD_INPUTS.
ProError ProParamvalueSet(ProParamvalue* p_handle, PRO_CONST_ARG void* p_value, ProParamvalueType type);

PRO_END_C_DECLS

static_assert(sizeof(ProParamvalueValue) == 168, "the text, rounded up to a double");
static_assert(sizeof(ProParamvalue) == 176, "a type, padding and the value");
