// Drawing areas of dialogs.
#pragma once

#include <ProUI.h>

PRO_BEGIN_C_DECLS

// Sets what runs when the area has just been displayed: the place for the first drawing calls.
// BAD_INPUTS; GENERAL_ERROR.
ProError ProUIDrawingareaPostmanagenotifyActionSet(char* dialog, char* component, ProUIAction callback,
                                                   ProAppData data);

// Says which image files the area draws. BAD_INPUTS; GENERAL_ERROR.
ProError ProUIDrawingareaImagesSet(char* dialog, char* component, int count, char** values);

// Draws one of the area's images, a GIF or BMP file among others, with its upper left corner at `position`.
// BAD_INPUTS; GENERAL_ERROR.
ProError ProUIDrawingareaImageDraw(char* dialog, char* component, char* image, ProUIPoint* position);

PRO_END_C_DECLS
