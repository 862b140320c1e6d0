#include <ProGeomitem.h>
#include <ProGeomitemdata.h>

#include <algorithm>
#include <new>

#include "simulator/memory/host_memory.h"
#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

namespace {

// The record and what it points at, in one block.
struct SystemRecord {
    ProGeomitemdata item;
    ProCsysdata system;
};

}  // namespace

ProError ProGeomitemdataGet(ProGeomitem* p_geom_item, ProGeomitemdata** p_data) {
    static const CallSite kSite("ProGeomitemdataGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {p_geom_item, Out(p_data)}, [&](Session& host) -> ProError {
        if (p_geom_item == nullptr || p_data == nullptr) return PRO_TK_BAD_INPUTS;
        const SimModel* owner = FindModel(host, p_geom_item->owner);
        const CoordinateSystem* system = owner == nullptr || p_geom_item->type != PRO_CSYS
                                             ? nullptr
                                             : owner->FindCoordinateSystem(p_geom_item->id);
        if (system == nullptr) {
            host.report.Violation("is given an item that is no coordinate system of its model");
            return PRO_TK_BAD_INPUTS;
        }
        const HostBlock& block = host.memory.Allocate(BlockKind::kGeometryData, 1, sizeof(SystemRecord));
        auto* record = new (block.Data()) SystemRecord{};
        record->item.obj_type = PRO_CSYS;
        record->item.data.p_csys_data = &record->system;
        const Matrix& place = system->placement;
        std::copy_n(place[0].begin(), 3, record->system.x_vector);
        std::copy_n(place[1].begin(), 3, record->system.y_vector);
        std::copy_n(place[2].begin(), 3, record->system.z_vector);
        std::copy_n(place[3].begin(), 3, record->system.origin);
        *p_data = &record->item;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProCsysToGeomitem(ProSolid solid, ProCsys csys_handle, ProGeomitem* r_geom_item) {
    static const CallSite kSite("ProCsysToGeomitem", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {solid, csys_handle, Out(r_geom_item)}, [&](Session& host) -> ProError {
        SimModel* model = FindSolid(host, solid);
        if (model == nullptr || r_geom_item == nullptr) return PRO_TK_BAD_INPUTS;
        const CoordinateSystem* system = host.desk.FindCoordinateSystem(*model, csys_handle);
        if (system == nullptr) {
            host.report.Violation("is given a pointer that is no coordinate system of the model");
            return PRO_TK_BAD_INPUTS;
        }
        *r_geom_item = {PRO_CSYS, system->id, model};
        return PRO_TK_NO_ERROR;
    });
}
