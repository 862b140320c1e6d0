// The walk through the components below a model.
//
// Components that are active and visible count, one entry per placement, in depth-first pre-order: a
// component stands before what is below it. The top model itself is never among them.
#pragma once

#include <array>
#include <cstddef>
#include <vector>

#include <ProAsmcomp.h>
#include <ProMdl.h>

#include "base/host_handle.h"

namespace kv {

// Which components a walk keeps. Every variant goes down into all assemblies.
enum class WalkVariant {
    CollectAllComponents,
    CollectSubassemblies,
    CollectPartComponents,
    CollectSheetmetalComponents,
};
using enum WalkVariant;

// What a walk learnt about one placement.
struct PlacedModel {
    ProMdl model;
    ProMdlType type;
    int level;           // 1 for a component of the top model
    unsigned int index;  // of the model among the distinct ones
};

// Why a walk passes over a component.
enum class LeftReason {
    Suppressed,  // by the user, a family table, a program or a simplified representation
    Inactive,    // in another state than active, or marked by the host as not to be visited
    Internal,    // the host keeps it from its user
    Missing,     // its model cannot be had; what follows it in its assembly is passed over without being seen
};
inline constexpr std::size_t kLeftReasons = 4;

// How many components were passed over, by reason, one for each placement.
using LeftCounts = std::array<std::size_t, kLeftReasons>;

struct DistinctModel {
    ProMdl model;
    ProMdlType type;
};

struct WalkResult {
    // One entry per placement.
    std::vector<PlacedModel> models;
    // The component features in the same order, for a walk that lists them.
    HostArray<ProAsmcomp> components;
    // The different models among them, in the order of first meeting.
    std::vector<DistinctModel> distinct;
    LeftCounts left = {};
};

// Whether a walk lists the component features: few need them, and they take more room than all the rest.
enum class FeatureList { Left, Made };

// Collects the components below `top`. A model without components is no failure.
//
//     PUMP             models     level  index     distinct
//       SUB            SUB        1      0         SUB
//         BOLT         BOLT       2      1         BOLT
//       SUB            SUB        1      0
//         BOLT         BOLT       2      1
//       BOLT           BOLT       1      1
//
// For CollectPartComponents the entries of SUB are left out, not those of its BOLTs; they keep their level,
// and BOLT has the index 0.
//
// A component whose model cannot be had ends the visit of its level, an assembly that cannot be visited is
// passed over. An assembly that contains itself is entered once, and no component lies deeper than the host's
// PRO_MAX_ASSEM_LEVEL.
//
// Cost       at most 5 host calls for each component feature, one or two for each model, none for what is
//            below a repeated sub-assembly
// Errors     PRO_TK_OUT_OF_MEMORY, also for a list that the host does not allocate, which is shown as well;
//            those of visiting `top`
[[nodiscard]] ProError ModelWalk(ProMdl top, WalkVariant variant, WalkResult& result,
                                 FeatureList features = FeatureList::Left);

// The different models that a walk meets, sorted by handle. Errors: those of ModelWalk.
[[nodiscard]] ProError DistinctModels(ProMdl top, WalkVariant variant, std::vector<ProMdl>& models);

// Adds a model to such a list unless it is there.
void AddDistinct(std::vector<ProMdl>& models, ProMdl model);

}  // namespace kv
