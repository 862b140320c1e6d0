#include <ProFeature.h>

#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

ProError ProFeatureTypeGet(ProFeature* p_feat_handle, ProFeattype* p_type) {
    static const CallSite kSite("ProFeatureTypeGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {p_feat_handle, Out(p_type)}, [&](Session& host) -> ProError {
        const Feature* feature = FindFeature(host, p_feat_handle);
        if (feature == nullptr || p_type == nullptr) return PRO_TK_BAD_INPUTS;
        *p_type = feature->type;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProFeatureStatusGet(ProFeature* p_feat_handle, ProFeatStatus* p_status) {
    static const CallSite kSite("ProFeatureStatusGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {p_feat_handle, Out(p_status)}, [&](Session& host) -> ProError {
        const Feature* feature = FindFeature(host, p_feat_handle);
        if (feature == nullptr || p_status == nullptr) return PRO_TK_BAD_INPUTS;
        *p_status = static_cast<ProFeatStatus>(feature->status);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProFeatureStatusflagsGet(ProFeature* p_feat_handle, unsigned int* p_status) {
    static const CallSite kSite("ProFeatureStatusflagsGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {p_feat_handle, Out(p_status)}, [&](Session& host) -> ProError {
        const Feature* feature = FindFeature(host, p_feat_handle);
        if (feature == nullptr || p_status == nullptr) return PRO_TK_BAD_INPUTS;
        *p_status = feature->statusFlags;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProFeatureVisibilityGet(ProFeature* p_feat_handle, ProBoolean* p_visible) {
    static const CallSite kSite("ProFeatureVisibilityGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {p_feat_handle, Out(p_visible)}, [&](Session& host) -> ProError {
        const Feature* feature = FindFeature(host, p_feat_handle);
        if (feature == nullptr || p_visible == nullptr) return PRO_TK_BAD_INPUTS;
        *p_visible = feature->isVisible ? PRO_B_TRUE : PRO_B_FALSE;
        return PRO_TK_NO_ERROR;
    });
}
