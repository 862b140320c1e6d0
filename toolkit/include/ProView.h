// Views of models and drawings.
#pragma once

#include <ProToolkit.h>

PRO_BEGIN_C_DECLS

// Opaque; views of drawings go through the drawing functions only.
typedef struct pro_view* ProView;

PRO_END_C_DECLS
