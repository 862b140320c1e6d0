// Views of drawings: their types, and the views made from them.
#pragma once

#include <ProObjects.h>
#include <ProView.h>

PRO_BEGIN_C_DECLS

typedef enum pro_view_type {
    PRO_VIEW_GENERAL = 0,
    PRO_VIEW_PROJECTION = 1,
    PRO_VIEW_AUXILIARY = 2,
    PRO_VIEW_DETAIL = 3,
    PRO_VIEW_REVOLVE = 4,
    PRO_VIEW_COPY_AND_ALIGN = 6,
    PRO_VIEW_OF_FLAT_TYPE = 8
} ProViewType;

// Gives the type of a view. BAD_INPUTS; a further status when it is not known.
ProError ProDrawingViewTypeGet(ProDrawing drawing, ProView view, ProViewType* type);

// Gives the views that were made from a view as a ProArray; free it with ProArrayFree. BAD_INPUTS;
// GENERAL_ERROR; E_NOT_FOUND and no array for none.
ProError ProDrawingViewChildrenGet(ProDrawing drawing, ProView view, ProView** view_children,
                                   int* no_children);

PRO_END_C_DECLS
