// What all dialog components share.
#pragma once

#include <ProToolkit.h>

PRO_BEGIN_C_DECLS

// Runs on the user's action. Both strings belong to the host and are reused: copy them before
// touching another dialog.
typedef void (*ProUIAction)(char* dialog, char* component, ProAppData appdata);

PRO_END_C_DECLS
