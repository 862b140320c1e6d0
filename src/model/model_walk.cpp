// The walk through the components below a model.
//
// Each assembly is visited once. What is below it is the same at all its placements, so a repeated placement
// copies the entries that the first visit gathered.

#include "model/model_walk.h"

#include <algorithm>
#include <functional>
#include <unordered_map>
#include <utility>

#include <ProFeature.h>
#include <ProSolid.h>

#include "base/host_callback.h"
#include "base/status.h"
#include "model/model_data.h"
#include "ui/message_box.h"

namespace kv {

static constexpr wchar_t kArrayAllocError[] = L"ProArray Alloc error";
// The combination of status flags by which the host marks a component that is not to be visited.
static constexpr unsigned int kRejectedFlags = 130;

// A model that the walk has met.
struct KnownModel {
    bool asked = false;  // `type` and `kept` are known
    ProMdlType type = PRO_MDL_UNUSED;
    bool kept = false;       // the variant collects it
    unsigned int index = 0;  // among the kept ones
    bool onPath = false;     // its visit is going on
    bool gathered = false;   // the entries from `first` to `last` are all there is below it
    std::size_t first = 0;
    std::size_t last = 0;
    int level = 0;         // of the entries directly below it, at that visit
    int levels = 0;        // how many levels there are below it
    LeftCounts left = {};  // passed over below it
};

struct Walk {
    WalkVariant variant = CollectAllComponents;
    FeatureList features = FeatureList::Left;
    std::vector<ProAsmcomp> components;
    std::vector<PlacedModel> models;
    std::vector<DistinctModel> distinct;
    std::unordered_map<ProMdl, KnownModel> known;
    int level = 0;    // of the components being visited
    int deepest = 0;  // deepest level met below the assembly being visited
    LeftCounts left = {};
    bool cut = false;  // something below the assembly being visited was left out because of its path
};

static ProError WalkFrom(ProMdl top, WalkVariant variant, FeatureList features, WalkResult& result);
static ProError ComponentFilter(ProFeature* feature, ProAppData data);
static ProError OnComponent(ProFeature* feature, ProError status, ProAppData data);
static bool IsActiveAndVisible(Walk& walk, ProFeature* component);
static bool LeaveOut(Walk& walk, LeftReason reason);
static KnownModel& KnownModelOf(Walk& walk, ProMdl model);
static bool IsKept(WalkVariant variant, ProMdl model, ProMdlType type);
static ProError Descend(Walk& walk, ProMdl assembly, KnownModel& known);
static ProError VisitLevel(Walk& walk, ProMdl assembly, KnownModel& known);
static void RepeatGathered(Walk& walk, const KnownModel& known);

ProError ModelWalk(ProMdl top, WalkVariant variant, WalkResult& result, FeatureList features) {
    ProError status = ArrayAlloc(result.components);
    if (Failed(status)) return ShowFailure(kArrayAllocError, PRO_TK_OUT_OF_MEMORY);
    status = Guarded([&] { return WalkFrom(top, variant, features, result); });
    return status == PRO_TK_OUT_OF_MEMORY ? ShowFailure(kArrayAllocError, status) : status;
}

static ProError WalkFrom(ProMdl top, WalkVariant variant, FeatureList features, WalkResult& result) {
    Walk walk;
    walk.variant = variant;
    walk.features = features;
    ProError status = VisitLevel(walk, top, walk.known[top]);
    // The top level may also have ended early at a component without a model.
    if (Failed(status) && status != PRO_TK_CONTINUE) return status;
    status = ArrayAppend(result.components, std::span(walk.components));
    if (Failed(status)) return status;

    result.models = std::move(walk.models);
    result.distinct = std::move(walk.distinct);
    result.left = walk.left;
    return PRO_TK_NO_ERROR;
}

ProError DistinctModels(ProMdl top, WalkVariant variant, std::vector<ProMdl>& models) {
    WalkResult result;
    const ProError status = ModelWalk(top, variant, result);
    if (Failed(status)) return status;

    models.clear();
    models.reserve(result.distinct.size());
    for (const DistinctModel& met : result.distinct) models.push_back(met.model);
    std::sort(models.begin(), models.end(), std::less<>());
    return PRO_TK_NO_ERROR;
}

void AddDistinct(std::vector<ProMdl>& models, ProMdl model) {
    const auto place = std::lower_bound(models.begin(), models.end(), model, std::less<>());
    if (place == models.end() || *place != model) models.insert(place, model);
}

// Asks for the type first: most features of an assembly that are no components are known by it alone.
static ProError ComponentFilter(ProFeature* feature, ProAppData data) {
    ProFeattype type = 0;
    if (Failed(ProFeatureTypeGet(feature, &type)) || type != PRO_FEAT_COMPONENT) return PRO_TK_CONTINUE;
    unsigned int flags = 0;
    if (!Failed(ProFeatureStatusflagsGet(feature, &flags)) && flags != kRejectedFlags) return PRO_TK_NO_ERROR;
    LeaveOut(*static_cast<Walk*>(data), LeftReason::Inactive);
    return PRO_TK_CONTINUE;
}

static ProError OnComponent(ProFeature* feature, ProError, ProAppData data) {
    Walk& walk = *static_cast<Walk*>(data);
    if (!IsActiveAndVisible(walk, feature)) return PRO_TK_NO_ERROR;
    ProMdl model = nullptr;
    if (Failed(ProAsmcompMdlGet(feature, &model))) {
        LeaveOut(walk, LeftReason::Missing);
        return PRO_TK_CONTINUE;
    }

    KnownModel& known = KnownModelOf(walk, model);
    walk.deepest = std::max(walk.deepest, walk.level);
    if (known.kept) {
        if (walk.features == FeatureList::Made) walk.components.push_back(*feature);
        walk.models.push_back({model, known.type, walk.level, known.index});
    }
    // A model of unknown type may be an assembly; a part has no components to find.
    const bool goesOn = known.type == PRO_MDL_ASSEMBLY || known.type == PRO_MDL_UNUSED;
    return goesOn ? Descend(walk, model, known) : PRO_TK_NO_ERROR;
}

static bool IsActiveAndVisible(Walk& walk, ProFeature* component) {
    ProFeatStatus status = PRO_FEAT_INVALID;
    if (Failed(ProFeatureStatusGet(component, &status))) return LeaveOut(walk, LeftReason::Inactive);
    const bool isSuppressed = status >= PRO_FEAT_FAMTAB_SUPPRESSED && status <= PRO_FEAT_SUPPRESSED;
    if (isSuppressed) return LeaveOut(walk, LeftReason::Suppressed);
    if (status != PRO_FEAT_ACTIVE) return LeaveOut(walk, LeftReason::Inactive);
    ProBoolean visible = PRO_B_FALSE;
    const bool isVisible = !Failed(ProFeatureVisibilityGet(component, &visible)) && visible == PRO_B_TRUE;
    return isVisible || LeaveOut(walk, LeftReason::Internal);
}

// Counts a component that is passed over; false, for the caller's answer.
static bool LeaveOut(Walk& walk, LeftReason reason) {
    ++walk.left[static_cast<std::size_t>(reason)];
    return false;
}

static KnownModel& KnownModelOf(Walk& walk, ProMdl model) {
    KnownModel& known = walk.known[model];
    if (known.asked) return known;
    // A type that cannot be read is no reason to leave the component out.
    if (Failed(ProMdlTypeGet(model, &known.type))) known.type = PRO_MDL_UNUSED;
    known.kept = IsKept(walk.variant, model, known.type);
    known.asked = true;
    if (!known.kept) return known;
    known.index = static_cast<unsigned int>(walk.distinct.size());
    walk.distinct.push_back({model, known.type});
    return known;
}

static bool IsKept(WalkVariant variant, ProMdl model, ProMdlType type) {
    if (variant == CollectAllComponents) return true;
    if (variant == CollectSubassemblies) return type == PRO_MDL_ASSEMBLY;
    if (type != PRO_MDL_PART) return false;
    return variant == CollectPartComponents || IsSheetmetal(model);
}

// Adds what is below a placement of an assembly. Only a lack of memory ends the whole walk.
static ProError Descend(Walk& walk, ProMdl assembly, KnownModel& known) {
    if (known.onPath || walk.level == PRO_MAX_ASSEM_LEVEL) {
        walk.cut = true;
        return PRO_TK_NO_ERROR;
    }
    if (known.gathered && walk.level + known.levels <= PRO_MAX_ASSEM_LEVEL) {
        RepeatGathered(walk, known);
        return PRO_TK_NO_ERROR;
    }

    const int deepestAround = std::exchange(walk.deepest, walk.level);
    const bool cutAround = std::exchange(walk.cut, false);
    const LeftCounts leftAround = walk.left;
    const ProError status = VisitLevel(walk, assembly, known);
    // What was cut for the sake of this path may be whole on another.
    known.gathered = !Failed(status) && !walk.cut;
    known.levels = walk.deepest - walk.level;
    for (std::size_t i = 0; i < kLeftReasons; ++i) known.left[i] = walk.left[i] - leftAround[i];
    walk.deepest = std::max(walk.deepest, deepestAround);
    walk.cut = walk.cut || cutAround;
    return status == PRO_TK_OUT_OF_MEMORY ? status : PRO_TK_NO_ERROR;
}

static ProError VisitLevel(Walk& walk, ProMdl assembly, KnownModel& known) {
    known.first = walk.models.size();
    known.level = ++walk.level;
    known.onPath = true;
    const ProError status = ProSolidFeatVisit(static_cast<ProSolid>(assembly), HostCallback<OnComponent>,
                                              HostCallback<ComponentFilter>, &walk);
    known.onPath = false;
    --walk.level;
    known.last = walk.models.size();
    // The host's word for a model without a single component.
    return status == PRO_TK_E_NOT_FOUND ? PRO_TK_NO_ERROR : status;
}

static void RepeatGathered(Walk& walk, const KnownModel& known) {
    const std::size_t place = walk.models.size();
    const std::size_t count = known.last - known.first;
    const int deeper = walk.level + 1 - known.level;
    walk.models.resize(place + count);
    if (walk.features == FeatureList::Made) {
        walk.components.resize(place + count);
        std::copy_n(walk.components.begin() + static_cast<std::ptrdiff_t>(known.first), count,
                    walk.components.begin() + static_cast<std::ptrdiff_t>(place));
    }
    for (std::size_t i = 0; i < count; ++i) {
        PlacedModel placed = walk.models[known.first + i];
        placed.level += deeper;
        walk.models[place + i] = placed;
    }
    walk.deepest = std::max(walk.deepest, walk.level + known.levels);
    for (std::size_t i = 0; i < kLeftReasons; ++i) walk.left[i] += known.left[i];
}

}  // namespace kv
