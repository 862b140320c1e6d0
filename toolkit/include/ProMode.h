// Modes of the host.
#pragma once

#include <ProToolkit.h>

PRO_BEGIN_C_DECLS

typedef enum ProModes {
    PRO_MODE_UNUSED = PRO_VALUE_UNUSED,
    PRO_MODE_SKETCHER = 0,
    PRO_MODE_PART = 1,
    PRO_MODE_SHEET_METAL = 2,
    PRO_MODE_COMPOSITE = 3,
    PRO_MODE_SCAN_MODEL = 4,
    PRO_MODE_ASSEMBLY = 5,
    PRO_MODE_DRAWING = 6,
    PRO_MODE_MANUFACTURE = 7,
    PRO_MODE_MOLD = 8,
    PRO_MODE_CAST = 9,
    PRO_MODE_DIEFACE = 10,
    PRO_MODE_LAYOUT = 11,
    PRO_MODE_FORMAT = 12,
    PRO_MODE_REPORT = 13,
    PRO_MODE_MARKUP = 14,
    PRO_MODE_DIAGRAM = 15,
    PRO_MODE_INTERCHANGE = 16,
    PRO_MODE_LEGACY = 17,
    PRO_MODE_USER_DEFINED = 18,
    PRO_MODE_VERIFY = 19,
    PRO_MODE_PROCESS = 20,
    PRO_MODE_NC_MODEL = 21
} ProMode;

// Gives the mode of the current window. E_NOT_FOUND without one; BAD_INPUTS.
ProError ProModeCurrentGet(ProMode* p_mode);

PRO_END_C_DECLS
