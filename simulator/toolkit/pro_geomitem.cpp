#include <ProGeomitem.h>

#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

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
