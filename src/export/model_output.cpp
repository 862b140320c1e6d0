// Parts and assemblies exported to files.

#include "export/model_output.h"

#include <span>

#include "base/host_handle.h"
#include "base/status.h"
#include "base/text.h"

namespace kv {

static ProError FirstModelGet(ProDrawing drawing, ProMdl& model);

ProError ModelWrite(ProMdl model, ProImportExportFile type, const std::wstring& file) {
    ProMdlFileName name;
    const ProError status = CopyText(file, name);
    return Failed(status) ? status
                          : ProOutputFileMdlnameWrite(model, name, type, nullptr, nullptr, nullptr, nullptr);
}

ProError ShownModelGet(ProDrawing drawing, ProMdl& model) {
    HostArray<ProView> views;
    ProSolid solid = nullptr;
    ProError status = views.Received(ProDrawingViewsCollect(drawing, views.Receive()));
    const std::span<ProView> found = Items(views);
    if (!Failed(status) && !found.empty()) {
        // A first view without its model does not make another model the one that is shown.
        status = ProDrawingViewSolidGet(drawing, found.front(), &solid);
        if (!Failed(status)) model = solid;
        return status;
    }
    if (Failed(status) && status != PRO_TK_E_NOT_FOUND) return status;
    return FirstModelGet(drawing, model);
}

static ProError FirstModelGet(ProDrawing drawing, ProMdl& model) {
    HostArray<ProSolid> solids;
    const ProError status = solids.Received(ProDrawingSolidsCollect(drawing, solids.Receive()));
    if (Failed(status)) return status;
    const std::span<ProSolid> found = Items(solids);
    if (found.empty()) return PRO_TK_E_NOT_FOUND;
    model = found.front();
    return PRO_TK_NO_ERROR;
}

}  // namespace kv
