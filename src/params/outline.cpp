// The outline parameter: surface boxes of a part or of all parts of an assembly, put together to one box.

#include "params/outline.h"

#include <algorithm>
#include <span>

#include <ProAsmcomppath.h>
#include <ProSolid.h>
#include <ProSurface.h>

#include "base/host_callback.h"
#include "base/host_handle.h"
#include "base/status.h"
#include "model/model_walk.h"
#include "model/parameter.h"
#include "params/outline_text.h"
#include "params/parameter_value.h"

namespace kv {

// The smallest box around some points, its sides along the axes.
struct Box {
    bool empty = true;
    Point low = {};
    Point high = {};
};

static ProError ModelBoxGet(ProMdl model, OutlineTask& task, Box& box);
static ProError AssemblyBoxGet(ProMdl assembly, OutlineTask& task, Box& box);
static ProError AddPlacedPart(ProMdl assembly, ProIdTable ids, int level, const PartCorners& part, Box& box);
static const PartCorners& CornersOf(ProMdl part, OutlineTask& task);
static ProError OnSurface(ProSurface surface, ProError status, ProAppData data);
static void AddPoint(const Point& point, Box& box);

ProError OutlineWrite(ProMdl model, OutlineTask& task) {
    Box box;
    const ProError status = ModelBoxGet(model, task, box);
    // A box without some of the parts would look like the whole one.
    if (Failed(status)) return status;
    if (box.empty) {
        const ProError deleted = ParameterDelete(model, task.parameter);
        return deleted == PRO_TK_E_NOT_FOUND ? PRO_TK_NO_ERROR : deleted;
    }

    const Point extents = {box.high[0] - box.low[0], box.high[1] - box.low[1], box.high[2] - box.low[2]};
    ProParamvalue value = {};
    const ProError fits = StringValue(OutlineText(extents, task.decimals, task.largestFirst), value);
    return Failed(fits) ? fits : ParameterWrite(model, task.parameter, value);
}

// Gives the box, or the first failure met on the way.
static ProError ModelBoxGet(ProMdl model, OutlineTask& task, Box& box) {
    ProMdlType type = PRO_MDL_UNUSED;
    const ProError status = ProMdlTypeGet(model, &type);
    if (Failed(status)) return status;
    if (type == PRO_MDL_ASSEMBLY) return AssemblyBoxGet(model, task, box);
    if (type != PRO_MDL_PART) return PRO_TK_NO_ERROR;

    const PartCorners& part = CornersOf(model, task);
    for (const Point& corner : part.points) AddPoint(corner, box);
    return part.status;
}

static ProError AssemblyBoxGet(ProMdl assembly, OutlineTask& task, Box& box) {
    WalkResult walk;
    ProError status = ModelWalk(assembly, CollectAllComponents, walk, FeatureList::Made);
    if (Failed(status)) return status;
    const std::span<ProAsmcomp> components = Items(walk.components);
    if (components.size() != walk.models.size()) return PRO_TK_GENERAL_ERROR;

    // In pre-order the ids above a component are those last met at the levels above it.
    ProIdTable ids = {};
    for (std::size_t i = 0; i < components.size(); ++i) {
        const PlacedModel& placed = walk.models[i];
        ids[placed.level - 1] = components[i].id;
        // It may be a part.
        if (placed.type == PRO_MDL_UNUSED) return PRO_TK_CANT_ACCESS;
        if (placed.type != PRO_MDL_PART) continue;
        status = AddPlacedPart(assembly, ids, placed.level, CornersOf(placed.model, task), box);
        if (Failed(status)) return status;
    }
    return PRO_TK_NO_ERROR;
}

static ProError AddPlacedPart(ProMdl assembly, ProIdTable ids, int level, const PartCorners& part, Box& box) {
    if (part.points.empty()) return part.status;
    ProAsmcomppath path = {};
    ProMatrix toAssembly = {};
    ProError status = ProAsmcomppathInit(static_cast<ProSolid>(assembly), ids, level, &path);
    if (!Failed(status)) status = ProAsmcomppathTrfGet(&path, PRO_B_TRUE, toAssembly);
    for (Point corner : part.points) {
        if (!Failed(status)) status = ProPntTrfEval(corner.data(), toAssembly, corner.data());
        if (Failed(status)) return status;
        AddPoint(corner, box);
    }
    return part.status;
}

static const PartCorners& CornersOf(ProMdl part, OutlineTask& task) {
    const auto [entry, added] = task.parts.try_emplace(part);
    PartCorners& corners = entry->second;
    if (!added) return corners;
    corners.status =
        ProSolidSurfaceVisit(static_cast<ProSolid>(part), HostCallback<OnSurface>, nullptr, &corners);
    // The host's word for a part without a single surface.
    if (corners.status == PRO_TK_E_NOT_FOUND) corners.status = PRO_TK_NO_ERROR;
    // Surfaces of which none can be read are not the same as none.
    if (!Failed(corners.status) && corners.points.empty()) corners.status = corners.refused;
    return corners;
}

static ProError OnSurface(ProSurface surface, ProError, ProAppData data) {
    auto& corners = *static_cast<PartCorners*>(data);
    GeometryData geometry;
    const ProError status = geometry.Received(ProSurfaceDataGet(surface, geometry.Receive()));
    // The other surfaces still give a box.
    const bool known = !Failed(status) && geometry.Get() != nullptr;
    const ProSurfacedata* box = known ? geometry.Get()->data.p_surface_data : nullptr;
    if (box == nullptr) {
        corners.refused = Failed(status) ? status : PRO_TK_CANT_ACCESS;
        return PRO_TK_NO_ERROR;
    }
    corners.points.push_back(std::to_array(box->xyz_max));
    corners.points.push_back(std::to_array(box->xyz_min));
    return PRO_TK_NO_ERROR;
}

static void AddPoint(const Point& point, Box& box) {
    if (box.empty) box = {false, point, point};
    for (std::size_t axis = 0; axis < point.size(); ++axis) {
        box.low[axis] = std::min(box.low[axis], point[axis]);
        box.high[axis] = std::max(box.high[axis], point[axis]);
    }
}

}  // namespace kv
