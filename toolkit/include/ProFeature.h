// Features: type, status, visibility.
#pragma once

#include <ProElement.h>
#include <ProFeatType.h>
#include <ProItemerr.h>
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

typedef enum pro_feature_create_options { PRO_FEAT_CR_NO_OPTS = 0 } ProFeatureCreateOptions;

// Makes a feature from an element tree, which stays the caller's. `model` selects the part or assembly that
// gets it, with a component path when it is a member of the open assembly; all selections in the tree share
// its root. Without options NULL and 0. BAD_INPUTS; CANT_MODIFY; GENERAL_ERROR with the reasons in
// `p_errors`.
ProError ProFeatureCreate(ProSelection model, ProElement elemtree, ProFeatureCreateOptions options[],
                          int num_opts, ProFeature* p_feature, ProErrorlist* p_errors);

PRO_END_C_DECLS
