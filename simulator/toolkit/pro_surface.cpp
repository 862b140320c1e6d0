#include <ProSurface.h>

#include <new>

#include "simulator/memory/host_memory.h"
#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

namespace {

// The record and what it points at, in one block.
struct SurfaceRecord {
    ProGeomitemdata item;
    ProSurfacedata surface;
};

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

ProError ProGeomitemdataFree(ProGeomitemdata** p_data) {
    static const CallSite kSite("ProGeomitemdataFree", {PRO_TK_BAD_INPUTS}, true);
    return Traced(kSite, {p_data}, [&](Session& host) -> ProError {
        if (p_data == nullptr || !host.memory.Release(BlockKind::kGeometryData, *p_data))
            return PRO_TK_BAD_INPUTS;
        return PRO_TK_NO_ERROR;
    });
}
