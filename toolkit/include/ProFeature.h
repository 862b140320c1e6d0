// Features: type, status, visibility.
#pragma once

#include <ProFeatType.h>
#include <ProObjects.h>

PRO_BEGIN_C_DECLS

// One of the PRO_FEAT_... numbers of ProFeatType.h.
typedef int ProFeattype;

typedef enum pro_feat_status {
    PRO_FEAT_INVALID = -1,
    PRO_FEAT_ACTIVE = 0,
    PRO_FEAT_INACTIVE = 1,
    PRO_FEAT_FAMTAB_SUPPRESSED = 2,
    PRO_FEAT_SIMP_REP_SUPPRESSED = 3,
    PRO_FEAT_PROG_SUPPRESSED = 4,
    PRO_FEAT_SUPPRESSED = 5,
    PRO_FEAT_UNREGENERATED = 6
} ProFeatStatus;

// Gives the type number. BAD_INPUTS.
ProError ProFeatureTypeGet(ProFeature* p_feat_handle, ProFeattype* p_type);

// Gives the one status that counts, see ProFeatureStatusflagsGet for all of them. BAD_INPUTS.
ProError ProFeatureStatusGet(ProFeature* p_feat_handle, ProFeatStatus* p_status);

// Gives every status as a bit of one mask. BAD_INPUTS.
ProError ProFeatureStatusflagsGet(ProFeature* p_feat_handle, unsigned int* p_status);

// False for internal construction features; says nothing about being hidden in the model tree.
// BAD_INPUTS.
ProError ProFeatureVisibilityGet(ProFeature* p_feat_handle, ProBoolean* p_visible);

PRO_END_C_DECLS
