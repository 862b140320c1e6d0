// Names of menus and their buttons.
#pragma once

#include <ProToolkit.h>

PRO_BEGIN_C_DECLS

typedef char ProMenuName[PRO_NAME_SIZE];
typedef char ProMenubuttonName[PRO_NAME_SIZE];

PRO_END_C_DECLS
