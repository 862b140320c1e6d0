// Expandable arrays.
#pragma once

#include <ProToolkit.h>

PRO_BEGIN_C_DECLS

// Points at the first element and is indexed like a C array. A private header lies in front
// of the data, so it is released with ProArrayFree and nothing else.
typedef void* ProArray;

// Gives an array of `n_objs` elements of `obj_size` bytes that grows in steps of
// `reallocation_size` elements. The caller frees. BAD_INPUTS; OUT_OF_MEMORY.
ProError ProArrayAlloc(int n_objs, int obj_size, int reallocation_size, ProArray* p_array);

// Takes the address of the array. Clear the variable afterwards. BAD_INPUTS.
ProError ProArrayFree(ProArray* p_array);

// Gives the number of elements. BAD_INPUTS for NULL and for a pointer that is no such array.
ProError ProArraySizeGet(ProArray array, int* p_size);

// Changes the number of elements; the array may move. BAD_INPUTS.
ProError ProArraySizeSet(ProArray* p_array, int size);

// Copies `n_objects` elements in at `index`, at the end for an index below 0; the array may
// move. BAD_INPUTS; OUT_OF_MEMORY.
ProError ProArrayObjectAdd(ProArray* p_array, int index, int n_objects, void* p_object);

PRO_END_C_DECLS
