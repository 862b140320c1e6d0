// Views of models and drawings.
#pragma once

#include <ProObjects.h>

PRO_BEGIN_C_DECLS

// Opaque; a saved view of a model. Views of drawings go through the drawing functions only.
typedef struct pro_view* ProView;

// Gives the matrix from model to logical screen coordinates, scale and shift included; a NULL model means the
// current one, a NULL view its present view. BAD_INPUTS; GENERAL_ERROR.
ProError ProViewMatrixGet(ProMdl model, ProView view_handle, ProMatrix matrix);

// Turns the view. The matrix has to be normalised: rows of length 1, no shift; the host adds its own scale
// and shift. BAD_INPUTS for another one; INVALID_TYPE for neither part, assembly nor drawing; CANT_MODIFY.
ProError ProViewMatrixSet(ProMdl model, ProView view_handle, ProMatrix matrix);

// Saves the present orientation of a displayed part or assembly under a name. BAD_INPUTS; CANT_MODIFY;
// GENERAL_ERROR.
ProError ProViewStore(ProMdl model, ProLine view_name, ProView* p_view);

// Gives the names of all saved views as ProArrays, each of which may be NULL; free them with ProArrayFree.
// A status of its own for none. BAD_INPUTS.
ProError ProViewNamesGet(ProMdl model, ProLine** names, ProLine** alternate_names, int* n);

// Gives a saved view by its name, the display stays as it is. BAD_INPUTS; a further status for a name that
// the model does not have.
ProError ProViewNameToView(ProMdl model, ProLine view_name, ProView* p_view);

// Deletes a saved view; the model must not be NULL. BAD_INPUTS; GENERAL_ERROR.
ProError ProViewDelete(ProMdl model, ProView view);

// Fits the model into its window as it is turned; the view may be NULL for a part or assembly in the current
// window. BAD_INPUTS; GENERAL_ERROR.
ProError ProViewRefit(ProMdl model, ProView view);

PRO_END_C_DECLS
