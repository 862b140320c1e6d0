// Values of elements.
#pragma once

#include <ProSelection.h>

PRO_BEGIN_C_DECLS

typedef struct Pro_Value* ProValue;

typedef enum pro_value_data_type {
    PRO_VALUE_TYPE_INT = 1,
    PRO_VALUE_TYPE_DOUBLE = 2,
    PRO_VALUE_TYPE_POINTER = 3,
    PRO_VALUE_TYPE_STRING = 4,
    PRO_VALUE_TYPE_WSTRING = 5,
    PRO_VALUE_TYPE_SELECTION = 6,
    PRO_VALUE_TYPE_TRANSFORM = 7,
    PRO_VALUE_TYPE_BOOLEAN = 8
} ProValueDataType;

typedef struct pro_value_data {
    ProValueDataType type;
    union {
        int i;
        double d;
        void* p;
        char* s;
        wchar_t* w;
        ProSelection r;
        double** t;
        ProBoolean b;
    } v;
} ProValueData;

// Gives an empty value. BAD_INPUTS; OUT_OF_MEMORY.
ProError ProValueAlloc(ProValue* p_value);

// For a value that no element has got. BAD_INPUTS.
ProError ProValueFree(ProValue value);

// Fills a value; texts are copied. BAD_INPUTS.
ProError ProValueDataSet(ProValue value, ProValueData* value_data);

PRO_END_C_DECLS

static_assert(sizeof(ProValueData) == 16, "a type, padding and one value");
