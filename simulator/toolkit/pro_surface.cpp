#include <ProSurface.h>

#include <new>

#include "simulator/memory/host_memory.h"
#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/looks.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

namespace {

// The record and what it points at, in one block.
struct SurfaceRecord {
    ProGeomitemdata item;
    ProSurfacedata surface;
};

constexpr int kSides = 2;

// Where the look of an item is kept. Null, and a violation, for an item that has none or does not exist.
std::optional<Look>* LookPlace(Session& host, const ProModelitem& item, int side) {
    SimModel* owner = FindModel(host, item.owner);
    if (owner == nullptr) return nullptr;
    if (item.type == static_cast<int>(owner->Kind())) return side == 0 ? &owner->look : nullptr;
    SurfaceItem* surface = item.type == PRO_SURFACE ? owner->FindSurface(item.id) : nullptr;
    if (surface != nullptr) return &surface->looks[static_cast<std::size_t>(side)];
    host.report.Violation("is given an item that has no look");
    return nullptr;
}

void CopyPoint(const Vec3& from, Pro3dPnt to) {
    to[0] = from.x;
    to[1] = from.y;
    to[2] = from.z;
}

}  // namespace

ProError ProSurfaceDataGet(ProSurface p_surface, ProGeomitemdata** p_data_ptr) {
    static const CallSite kSite("ProSurfaceDataGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {p_surface, Out(p_data_ptr)}, [&](Session& host) -> ProError {
        if (p_surface == nullptr || p_data_ptr == nullptr) return PRO_TK_BAD_INPUTS;
        const SurfaceItem* surface = host.desk.FindSurface(p_surface);
        if (surface == nullptr) {
            host.report.Violation("is given a pointer that is no surface in memory");
            return PRO_TK_BAD_INPUTS;
        }
        const HostBlock& block = host.memory.Allocate(BlockKind::kGeometryData, 1, sizeof(SurfaceRecord));
        auto* record = new (block.Data()) SurfaceRecord{};
        record->item.obj_type = PRO_SURFACE;
        record->item.data.p_surface_data = &record->surface;
        record->surface.type = PRO_SRF_PLANE;
        record->surface.orient = PRO_SURF_ORIENT_OUT;
        record->surface.id = surface->id;
        CopyPoint(surface->box.minimum, record->surface.xyz_min);
        CopyPoint(surface->box.maximum, record->surface.xyz_max);
        *p_data_ptr = &record->item;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProSurfaceIdGet(ProSurface surface, int* p_id) {
    static const CallSite kSite("ProSurfaceIdGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {surface, Out(p_id)}, [&](Session& host) -> ProError {
        if (surface == nullptr || p_id == nullptr) return PRO_TK_BAD_INPUTS;
        const SurfaceItem* item = host.desk.FindSurface(surface);
        if (item == nullptr) {
            host.report.Violation("is given a pointer that is no surface in memory");
            return PRO_TK_BAD_INPUTS;
        }
        *p_id = item->id;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProGeomitemdataFree(ProGeomitemdata** p_data) {
    static const CallSite kSite("ProGeomitemdataFree", {PRO_TK_BAD_INPUTS}, true);
    return Traced(kSite, {p_data}, [&](Session& host) -> ProError {
        if (p_data == nullptr || !host.memory.Release(BlockKind::kGeometryData, *p_data))
            return PRO_TK_BAD_INPUTS;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProSurfaceSideAppearancepropsGet(ProModelitem* item, int surface_side,
                                          ProSurfaceAppearanceProps* appearance_properties) {
    static const CallSite kSite("ProSurfaceSideAppearancepropsGet", {PRO_TK_BAD_INPUTS, PRO_TK_NOT_EXIST});
    return Traced(kSite, {item, surface_side, Out(appearance_properties)}, [&](Session& host) -> ProError {
        if (item == nullptr || appearance_properties == nullptr) return PRO_TK_BAD_INPUTS;
        if (surface_side < 0 || surface_side >= kSides) return PRO_TK_BAD_INPUTS;
        const std::optional<Look>* look = LookPlace(host, *item, surface_side);
        if (look == nullptr) return PRO_TK_BAD_INPUTS;
        if (!*look) return PRO_TK_NOT_EXIST;
        FillAppearance(**look, *appearance_properties);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProSurfaceSideAppearancepropsSet(ProModelitem* item, int surface_side,
                                          ProSurfaceAppearanceProps* appearance_properties) {
    static const CallSite kSite("ProSurfaceSideAppearancepropsSet", {PRO_TK_BAD_INPUTS, PRO_TK_CANT_MODIFY});
    return Traced(kSite, {item, surface_side, appearance_properties}, [&](Session& host) -> ProError {
        if (item == nullptr || surface_side < 0 || surface_side >= kSides) return PRO_TK_BAD_INPUTS;
        std::optional<Look>* look = LookPlace(host, *item, surface_side);
        if (look == nullptr) return PRO_TK_BAD_INPUTS;
        SimModel& owner = *FindModel(host, item->owner);
        return SetLook(host, owner, *look, appearance_properties);
    });
}

ProError ProSurfaceAppearanceDefaultPropsGet(ProDefaultAppearanceType appearance_type,
                                             ProSurfaceAppearanceProps* props) {
    static const CallSite kSite("ProSurfaceAppearanceDefaultPropsGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {appearance_type, Out(props)}, [&](Session&) -> ProError {
        if (appearance_type != PRO_DEF_APPEARANCE_SOLID || props == nullptr) return PRO_TK_BAD_INPUTS;
        FillAppearance(Look(), *props);
        return PRO_TK_NO_ERROR;
    });
}
