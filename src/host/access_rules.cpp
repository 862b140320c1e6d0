// Availability rules: the host's mode, or what is selected.

#include "host/access_rules.h"

#include <algorithm>
#include <initializer_list>
#include <limits>

#include <ProMode.h>
#include <ProSelbuffer.h>

#include "base/host_handle.h"
#include "base/status.h"

namespace kv {

static uiCmdAccessState AvailableIn(std::initializer_list<ProMode> modes) noexcept;
static ProError SelectionGet(int& count, ProType& firstType) noexcept;
static uiCmdAccessState AvailableFor(std::initializer_list<ProType> types, int mostItems) noexcept;

uiCmdAccessState AccessSolid(uiCmdAccessMode) noexcept {
    return AvailableIn({PRO_MODE_ASSEMBLY, PRO_MODE_MOLD});
}

uiCmdAccessState AccessModel(uiCmdAccessMode) noexcept {
    return AvailableIn({PRO_MODE_PART, PRO_MODE_SHEET_METAL, PRO_MODE_ASSEMBLY, PRO_MODE_MOLD});
}

uiCmdAccessState AccessPart(uiCmdAccessMode) noexcept {
    return AvailableIn({PRO_MODE_PART, PRO_MODE_SHEET_METAL, PRO_MODE_ASSEMBLY});
}

uiCmdAccessState AccessDrawing(uiCmdAccessMode) noexcept {
    return AvailableIn({PRO_MODE_DRAWING});
}

uiCmdAccessState AccessAlways(uiCmdAccessMode) noexcept {
    return ACCESS_AVAILABLE;
}

uiCmdAccessState AccessSelComponent(uiCmdCmdId, ProAppData, ProSelection*) noexcept {
    return AvailableFor({PRO_ASSEMBLY, PRO_PART}, std::numeric_limits<int>::max());
}

uiCmdAccessState AccessSelItem(uiCmdCmdId, ProAppData, ProSelection*) noexcept {
    return AvailableFor({PRO_ASSEMBLY, PRO_PART, PRO_SURFACE, PRO_EDGE, PRO_CSYS, PRO_POINT, PRO_EDGE_START,
                         PRO_EDGE_END, PRO_DATUM_PLANE},
                        1);
}

static uiCmdAccessState AvailableIn(std::initializer_list<ProMode> modes) noexcept {
    ProMode mode = PRO_MODE_UNUSED;
    if (Failed(ProModeCurrentGet(&mode))) return ACCESS_UNAVAILABLE;
    return std::ranges::find(modes, mode) != modes.end() ? ACCESS_AVAILABLE : ACCESS_UNAVAILABLE;
}

static uiCmdAccessState AvailableFor(std::initializer_list<ProType> types, int mostItems) noexcept {
    int count = 0;
    ProType first = PRO_TYPE_UNUSED;
    if (Failed(SelectionGet(count, first))) return ACCESS_UNAVAILABLE;
    const bool fits = count >= 1 && count <= mostItems && std::ranges::find(types, first) != types.end();
    return fits ? ACCESS_AVAILABLE : ACCESS_INVISIBLE;
}

// How many items are selected, and the type of the first. An empty selection is no failure.
static ProError SelectionGet(int& count, ProType& firstType) noexcept {
    SelectionArray selections;
    ProError status = selections.Received(ProSelbufferSelectionsGet(selections.Receive()));
    if (status == PRO_TK_E_NOT_FOUND) return PRO_TK_NO_ERROR;
    if (!Failed(status)) status = ProArraySizeGet(selections.Get(), &count);
    if (Failed(status) || count < 1) return status;

    ProModelitem item = {};
    status = ProSelectionModelitemGet(*selections.Get(), &item);
    if (!Failed(status)) firstType = item.type;
    return status;
}

}  // namespace kv
