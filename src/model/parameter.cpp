// Parameters on the toolkit's parameter calls.

#include "model/parameter.h"

#include "base/status.h"
#include "base/text.h"

namespace kv {

static ProError ParameterGet(ProMdl model, const std::wstring& name, ProParameter& parameter);

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
    const ProError status = ParameterGet(model, name, parameter);
    if (Failed(status)) return status;
    ProParamvalue content = value;
    return ProParameterValueWithUnitsSet(&parameter, &content, nullptr);
}

ProError ParameterWrite(ProMdl model, const std::wstring& name, const ProParamvalue& value) {
    const ProError status = ParameterCreate(model, name, value);
    return status == PRO_TK_E_FOUND ? ParameterUpdate(model, name, value) : status;
}

ProError ParameterDelete(ProMdl model, const std::wstring& name) {
    ProParameter parameter = {};
    const ProError status = ParameterGet(model, name, parameter);
    return Failed(status) ? status : ProParameterDelete(&parameter);
}

static ProError ParameterGet(ProMdl model, const std::wstring& name, ProParameter& parameter) {
    ProName key;
    ProModelitem owner = {};
    ProError status = CopyText(name, key);
    if (!Failed(status)) status = ProMdlToModelitem(model, &owner);
    return Failed(status) ? status : ProParameterInit(&owner, key, &parameter);
}

}  // namespace kv
