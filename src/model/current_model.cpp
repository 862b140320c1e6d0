// The model that a command works on.

#include "model/current_model.h"

#include <ProAssembly.h>
#include <ProMfg.h>

#include "base/status.h"

namespace kv {

ProError CurrentModelGet(ProMdl& model, ProMdlType& type) {
    const ProError status = ProMdlCurrentGet(&model);
    return Failed(status) ? status : ProMdlTypeGet(model, &type);
}

ProError CurrentSolidGet(ProMdl& model, ProMdlType& type) {
    const ProError status = ProMdlCurrentGet(&model);
    return Failed(status) ? status : SolidOf(model, type);
}

ProError SolidOf(ProMdl& model, ProMdlType& type) {
    const ProError status = ProMdlTypeGet(model, &type);
    if (Failed(status) || type != PRO_MDL_MFG) return status;
    ProAssembly assembly = nullptr;
    const ProError found = ProMfgAssemGet(static_cast<ProMfg>(model), &assembly);
    if (Failed(found)) return found;
    model = assembly;
    type = PRO_MDL_ASSEMBLY;
    return PRO_TK_NO_ERROR;
}

ProError CurrentAssemblyGet(const wchar_t* refusal, ProMdl& assembly, MessageBoxForm show) {
    ProMdlType type = PRO_MDL_UNUSED;
    const ProError status = CurrentSolidGet(assembly, type);
    if (Failed(status) || type == PRO_MDL_ASSEMBLY) return status;
    show(refusal);
    return PRO_TK_INVALID_TYPE;
}

ProError ActiveAssemblyGet(const wchar_t* refusal, ProMdl& assembly) {
    ProMdlType type = PRO_MDL_UNUSED;
    ProError status = ProMdlActiveGet(&assembly);
    if (!Failed(status)) status = SolidOf(assembly, type);
    if (!Failed(status) && type == PRO_MDL_ASSEMBLY) return PRO_TK_NO_ERROR;
    return ShowFailure(refusal, PRO_TK_INVALID_TYPE);
}

}  // namespace kv
