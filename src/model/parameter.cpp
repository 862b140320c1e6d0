// Parameters on the toolkit's parameter calls.

#include "model/parameter.h"

#include "base/host_callback.h"
#include "base/status.h"
#include "base/text.h"

namespace kv {

ProError ParameterCreate(ProMdl model, const std::wstring& name, const ProParamvalue& value) {
    ProName key;
    ProModelitem owner = {};
    ProError status = CopyText(name, key);
    if (!Failed(status)) status = ProMdlToModelitem(model, &owner);
    if (Failed(status)) return status;

    ProParamvalue content = value;
    ProParameter parameter = {};
    return ProParameterWithUnitsCreate(&owner, key, &content, nullptr, &parameter);
}

ProError ParameterUpdate(ProMdl model, const std::wstring& name, const ProParamvalue& value) {
    ProParameter parameter = {};
    const ProError status = ParameterFind(model, name, parameter);
    if (Failed(status)) return status;
    ProParamvalue content = value;
    return ProParameterValueWithUnitsSet(&parameter, &content, nullptr);
}

ProError ParameterWrite(ProMdl model, const std::wstring& name, const ProParamvalue& value) {
    const ProError status = ParameterCreate(model, name, value);
    return status == PRO_TK_E_FOUND ? ParameterUpdate(model, name, value) : status;
}

ProError ParameterRead(ProMdl model, const std::wstring& name, ProParamvalue& value) {
    ProModelitem owner = {};
    const ProError status = ProMdlToModelitem(model, &owner);
    return Failed(status) ? status : ParameterValueGet(owner, name, value);
}

ProError ParameterValueGet(ProModelitem owner, const std::wstring& name, ProParamvalue& value) {
    ProName key;
    ProParameter parameter = {};
    ProError status = CopyText(name, key);
    if (!Failed(status)) status = ProParameterInit(&owner, key, &parameter);
    return Failed(status) ? status : ProParameterValueWithUnitsGet(&parameter, &value, nullptr);
}

ProError ParameterDelete(ProMdl model, const std::wstring& name) {
    ProParameter parameter = {};
    const ProError status = ParameterFind(model, name, parameter);
    return Failed(status) ? status : ProParameterDelete(&parameter);
}

ProError ParameterFind(ProMdl model, const std::wstring& name, ProParameter& parameter) {
    ProName key;
    ProModelitem owner = {};
    ProError status = CopyText(name, key);
    if (!Failed(status)) status = ProMdlToModelitem(model, &owner);
    return Failed(status) ? status : ProParameterInit(&owner, key, &parameter);
}

static ProError OnParameter(ProParameter* parameter, ProError, ProAppData data) {
    static_cast<std::vector<std::wstring>*>(data)->emplace_back(parameter->id);
    return PRO_TK_NO_ERROR;
}

ProError ParameterNamesGet(ProMdl model, std::vector<std::wstring>& names) {
    names.clear();
    ProModelitem owner = {};
    ProError status = ProMdlToModelitem(model, &owner);
    if (Failed(status)) return status;
    status = ProParameterVisit(&owner, nullptr, HostCallback<OnParameter>, &names);
    return status == PRO_TK_E_NOT_FOUND ? PRO_TK_NO_ERROR : status;
}

}  // namespace kv
