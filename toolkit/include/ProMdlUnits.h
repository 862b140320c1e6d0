// Units of models.
#pragma once

#include <ProObjects.h>

PRO_BEGIN_C_DECLS

// A unit of a model by its abbreviation; nothing to free.
typedef struct ProUnititems {
    ProMdl owner;
    ProName name;
} ProUnititem;

PRO_END_C_DECLS

static_assert(sizeof(ProUnititem) == 72, "a pointer and a name, no padding");
