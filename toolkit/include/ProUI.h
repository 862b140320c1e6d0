// What all dialog components share.
#pragma once

#include <ProToolkit.h>

PRO_BEGIN_C_DECLS

// Runs on the user's action. Both strings belong to the host and are reused: copy them before
// touching another dialog.
typedef void (*ProUIAction)(char* dialog, char* component, ProAppData appdata);

// A colour, passed by value: one of the host's codes.
typedef int ProUIColor;

// Codes seen in use; those from 28 to 42 have names of their own that are not known here.
enum {
    PRO_UI_COLOR_BLACK = 0,
    PRO_UI_COLOR_DK_RED = 1,
    PRO_UI_COLOR_DK_GREEN = 2,
    PRO_UI_COLOR_DK_YELLOW = 3,
    PRO_UI_COLOR_DK_BLUE = 4,
    PRO_UI_COLOR_DK_MAGENTA = 5,
    PRO_UI_COLOR_DK_CYAN = 6,
    PRO_UI_COLOR_LT_GREY = 7,
    PRO_UI_COLOR_DK_GREY = 8,
    PRO_UI_COLOR_RED = 9,
    PRO_UI_COLOR_GREEN = 10,
    PRO_UI_COLOR_YELLOW = 11,
    PRO_UI_COLOR_BLUE = 12,
    PRO_UI_COLOR_MAGENTA = 13,
    PRO_UI_COLOR_CYAN = 14,
    PRO_UI_COLOR_WHITE = 15,
    PRO_UI_COLOR_3D_VERY_LIGHT_SHADOW = 16,
    PRO_UI_COLOR_3D_LIGHT_SHADOW = 17,
    PRO_UI_COLOR_3D_DARK_SHADOW = 18,
    PRO_UI_COLOR_3D_VERY_DARK_SHADOW = 19,
    PRO_UI_COLOR_WINDOW_BACKGROUND = 20,
    PRO_UI_COLOR_WINDOW_TEXT = 21,
    PRO_UI_COLOR_SUNKEN_BACKGROUND = 22,
    PRO_UI_COLOR_GREY_TEXT = 23,
    PRO_UI_COLOR_MENU_BACKGROUND = 24,
    PRO_UI_COLOR_SELECTED_BACKGROUND = 26,
    PRO_UI_COLOR_SELECTED_TEXT = 27,
    PRO_UI_COLOR_HOVER_TEXT = 43,
    PRO_UI_COLOR_HOVER_EFFECT = 44,
    PRO_UI_COLOR_TRANSPARENT = 255
};

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
