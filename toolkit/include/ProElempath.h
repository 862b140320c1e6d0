// Places in an element tree.
#pragma once

#include <ProElemId.h>

PRO_BEGIN_C_DECLS

typedef struct _UiElemId* ProElempath;

PRO_END_C_DECLS
