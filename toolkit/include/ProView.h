// Views of models and drawings.
#pragma once

#include <ProObjects.h>

PRO_BEGIN_C_DECLS

// Opaque; views of drawings go through the drawing functions only.
typedef struct pro_view* ProView;

// Gives the matrix from model to logical screen coordinates, scale and shift included; a NULL model means the
// current one, a NULL view its present view. BAD_INPUTS; GENERAL_ERROR.
ProError ProViewMatrixGet(ProMdl model, ProView view_handle, ProMatrix matrix);

// Turns the view. The matrix has to be normalised: rows of length 1, no shift; the host adds its own scale
// and shift. BAD_INPUTS for another one; INVALID_TYPE for neither part, assembly nor drawing; CANT_MODIFY.
ProError ProViewMatrixSet(ProMdl model, ProView view_handle, ProMatrix matrix);

PRO_END_C_DECLS
