#include <ProFeature.h>

#include <optional>
#include <unordered_set>

#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/merge_tree.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

namespace {

// The first placement of a model below a solid; nothing when it has none.
std::optional<Matrix> FirstPlacement(const SimModel& top, const SimModel& model,
                                     std::unordered_set<const SimModel*>& seen) {
    if (&top == &model) return IdentityMatrix();
    if (!seen.insert(&top).second) return std::nullopt;
    for (const Feature& feature : top.Features()) {
        if (feature.component == nullptr) continue;
        const auto below = FirstPlacement(*feature.component, model, seen);
        if (below) return Product(*below, feature.placement);
    }
    return std::nullopt;
}

// Where a picked part stands in an assembly: as its path says or, without one, at its first placement.
std::optional<Matrix> PlacementIn(SimModel& root, const Pick& pick) {
    if (pick.isWithoutPath) {
        std::unordered_set<const SimModel*> seen;
        return FirstPlacement(root, *pick.model, seen);
    }
    const auto end = FindPathEnd(root, pick.path.data(), static_cast<int>(pick.path.size()));
    return end && end->model == pick.model ? std::optional(end->placement) : std::nullopt;
}

bool IsWholePart(const Pick& pick) {
    return pick.type == 0 && pick.model->Kind() == ModelKind::kPart;
}

// Whether the host by its documents refuses what is asked.
bool IsRefused(Session& host, const Pick& target, const MergeRequest& request) {
    return (host.strict.mergeNeedsPath && target.isWithoutPath) ||
           (host.strict.mergeNeedsPlacementBeside && request.isNestedBySelection);
}

ProError Merge(Session& host, const Pick& target, const MergeRequest& request) {
    SimModel* root = RootOf(host, request.part);
    if (!IsWholePart(target) || !IsWholePart(request.part) || root == nullptr) return PRO_TK_BAD_INPUTS;
    if (!target.isWithoutPath && RootOf(host, target) != root) {
        host.report.Violation("is given selections that do not share their root assembly");
        return PRO_TK_BAD_INPUTS;
    }
    if (target.model->IsReadOnly()) return PRO_TK_CANT_MODIFY;
    // No part takes in itself, nor what has taken it in.
    SimModel& part = *request.part.model;
    if (&part == target.model || part.HasBelow(*target.model) || IsRefused(host, target, request))
        return PRO_TK_GENERAL_ERROR;
    const auto from = PlacementIn(*root, request.part);
    const auto into = PlacementIn(*root, target);
    const auto back = into ? Inverse(*into) : std::nullopt;
    if (!from || !back) return PRO_TK_BAD_INPUTS;
    target.model->AddMerge(part, request.name, Product(*from, *back));
    return PRO_TK_NO_ERROR;
}

}  // namespace

ProError ProFeatureCreate(ProSelection model, ProElement elemtree, ProFeatureCreateOptions options[],
                          int num_opts, ProFeature* p_feature, ProErrorlist* p_errors) {
    static const CallSite kSite("ProFeatureCreate", {PRO_TK_BAD_INPUTS, PRO_TK_CANT_MODIFY});
    return Traced(
        kSite, {model, elemtree, options, num_opts, Out(p_feature), Out(p_errors)},
        [&](Session& host) -> ProError {
            const Pick* target = FindPick(host, model);
            const auto request = ReadMergeTree(host, elemtree);
            const bool isPlain = options == nullptr && num_opts == 0;
            if (target == nullptr || !request || !isPlain || p_feature == nullptr || p_errors == nullptr)
                return PRO_TK_BAD_INPUTS;
            *p_errors = {};
            const ProError status = Merge(host, *target, *request);
            if (status == PRO_TK_NO_ERROR)
                *p_feature = {PRO_FEATURE, target->model->Features().back().id, target->model};
            return status;
        });
}

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
        const SimModel* owner = FindModel(host, p_feat_handle->owner);
        const bool isLeftOut =
            feature->status == kFeatureActive && owner != nullptr && owner->IsLeftOut({feature->id});
        *p_status = static_cast<ProFeatStatus>(isLeftOut ? kFeatureLeftOut : feature->status);
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
