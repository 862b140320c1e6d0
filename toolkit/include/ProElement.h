// Elements: the trees that features are made from.
#pragma once

#include <ProElemId.h>
#include <ProElempath.h>
#include <ProValue.h>

PRO_BEGIN_C_DECLS

typedef struct Pro_Elem* ProElement;

// Gives an element without value. BAD_INPUTS.
ProError ProElementAlloc(ProElemId name_id, ProElement* p_elem);

// Frees an element with everything that was added to it; takes the address. An element that was added to
// another one goes with that. BAD_INPUTS.
ProError ProElementFree(ProElement* p_elem);

// Gives an element its value. BAD_INPUTS.
ProError ProElementValueSet(ProElement element, ProValue value);

// Adds an element to `elemtree`, directly below it when the path is NULL; it belongs to the tree from then
// on. BAD_INPUTS.
ProError ProElemtreeElementAdd(ProElement elemtree, ProElempath elempath, ProElement elem);

PRO_END_C_DECLS
