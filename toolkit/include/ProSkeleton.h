// Skeleton models.
#pragma once

#include <ProObjects.h>

PRO_BEGIN_C_DECLS

// Tells whether a model is a skeleton: a part for the layout of an assembly. BAD_INPUTS; NO_LICENSE.
ProError ProMdlIsSkeleton(ProMdl model, ProBoolean* p_is_skel);

PRO_END_C_DECLS
