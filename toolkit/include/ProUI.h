// What all dialog components share.
#pragma once

#include <ProToolkit.h>

PRO_BEGIN_C_DECLS

// Runs on the user's action. Both strings belong to the host and are reused: copy them before
// touching another dialog.
typedef void (*ProUIAction)(char* dialog, char* component, ProAppData appdata);

// A colour, passed by value. Its layout is unconfirmed: make and read values in one place only.
typedef int ProUIColor;

// A place in a drawing area, in pixels from its upper left corner.
typedef struct pro_ui_point {
    int x;
    int y;
} ProUIPoint;

// How much the user may select: nothing, at most one, exactly one, any number, any number and
// ranges.
typedef enum ProUISelectionpolicies {
    PROUISELPOLICY_NONE = 0,
    PROUISELPOLICY_SINGLE = 1,
    PROUISELPOLICY_BROWSE = 2,
    PROUISELPOLICY_MULTIPLE = 3,
    PROUISELPOLICY_EXTENDED = 4
} ProUISelectionpolicy;

PRO_END_C_DECLS

static_assert(sizeof(ProUIPoint) == 8, "two 32-bit fields");
