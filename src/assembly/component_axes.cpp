#include "assembly/component_axes.h"

#include <algorithm>
#include <cmath>
#include <cstddef>

#include <ProAsmcomppath.h>
#include <ProGeomitem.h>
#include <ProGeomitemdata.h>
#include <ProModelitem.h>
#include <ProSelection.h>

#include "base/host_handle.h"
#include "base/status.h"
#include "base/text.h"

namespace kv {

static constexpr char kSystemFilter[] = "csys";

static ProError SystemAxesGet(ProGeomitem item, AxisDirections& axes);
static AxisDirections ThroughRotation(const AxisDirections& axes, const ProMatrix placement, bool back);

ProError SystemPick(ProMdl top, PickedSystem& system) {
    ProSelection* picked = nullptr;  // stays the host's
    int count = 0;
    ProError status =
        ProSelect(HostName(kSystemFilter), 1, nullptr, nullptr, nullptr, nullptr, &picked, &count);
    if (Failed(status)) return status;
    if (picked == nullptr || count < 1) return PRO_TK_E_NOT_FOUND;
    ProModelitem item = {};
    ProAsmcomppath path = {};
    status = ProSelectionModelitemGet(*picked, &item);
    if (!Failed(status)) status = ProSelectionAsmcomppathGet(*picked, &path);
    if (!Failed(status) && path.owner != top) status = PRO_TK_E_NOT_FOUND;
    AxisDirections axes = {};
    if (!Failed(status)) status = SystemAxesGet(item, axes);
    ProMatrix placement = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    if (!Failed(status) && path.table_num > 0) status = ProAsmcomppathTrfGet(&path, PRO_B_TRUE, placement);
    if (Failed(status)) return status;
    ProName name = {};
    const bool isNamed = !Failed(ProModelitemNameGet(&item, name));
    system = {isNamed ? std::wstring(name) : L"坐标系 " + std::to_wstring(item.id),
              ThroughRotation(axes, placement, false)};
    return PRO_TK_NO_ERROR;
}

ProError ComponentAxesGet(ProMdl top, const ComponentIds& ids, const AxisDirections& axes,
                          AxisDirections& own) {
    ProIdTable table = {};
    if (ids.size() > PRO_MAX_ASSEM_LEVEL) return PRO_TK_BAD_INPUTS;
    std::ranges::copy(ids, table);
    ProAsmcomppath path = {};
    ProMatrix placement = {};
    ProError status =
        ProAsmcomppathInit(static_cast<ProSolid>(top), table, static_cast<int>(ids.size()), &path);
    if (!Failed(status)) status = ProAsmcomppathTrfGet(&path, PRO_B_TRUE, placement);
    if (!Failed(status)) own = ThroughRotation(axes, placement, true);
    return status;
}

static ProError SystemAxesGet(ProGeomitem item, AxisDirections& axes) {
    GeometryData data;
    const ProError status = data.Received(ProGeomitemdataGet(&item, data.Receive()));
    if (Failed(status)) return status;
    const ProCsysdata* system = data.Get() == nullptr ? nullptr : data.Get()->data.p_csys_data;
    if (system == nullptr) return PRO_TK_CANT_ACCESS;
    std::ranges::copy(system->x_vector, axes[0].begin());
    std::ranges::copy(system->y_vector, axes[1].begin());
    std::ranges::copy(system->z_vector, axes[2].begin());
    return status;
}

// Directions through the rotation of a placement, which leads from a member to the assembly, or back. The
// rows of a placement may carry the ratio of two length units.
static AxisDirections ThroughRotation(const AxisDirections& axes, const ProMatrix placement, bool back) {
    AxisDirections turned = {};
    for (std::size_t axis = 0; axis < axes.size(); ++axis) {
        for (std::size_t i = 0; i < 3; ++i)
            for (std::size_t j = 0; j < 3; ++j)
                turned[axis][i] += axes[axis][j] * (back ? placement[i][j] : placement[j][i]);
        const double length = std::hypot(turned[axis][0], turned[axis][1], turned[axis][2]);
        if (length > 0)
            for (double& coordinate : turned[axis]) coordinate /= length;
    }
    return turned;
}

}  // namespace kv
