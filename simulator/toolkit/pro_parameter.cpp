#include <ProParameter.h>

#include <algorithm>
#include <cmath>

#include "simulator/memory/host_memory.h"
#include "simulator/report/call_plugin.h"
#include "simulator/report/utf8.h"
#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

namespace {

// Characters with a meaning in relations: no name can hold them.
constexpr std::wstring_view kNotInNames = L" \t\r\n!@#$%^&*()+-=[]{};:'\",.<>/?|\\~`";

// The model that owns parameters through this item; null for an item of another type, whose parameters the
// simulator does not have.
SimModel* OwnerModel(Session& host, const ProModelitem& owner) {
    SimModel* model = FindModel(host, owner.owner);
    return model != nullptr && static_cast<int>(owner.type) == static_cast<int>(model->Kind()) ? model
                                                                                               : nullptr;
}

ProParameter Handle(SimModel& model, const ModelParameter& parameter) {
    ProParameter handle{};
    handle.type = PRO_PARAMETER;
    std::copy_n(parameter.name.begin(), std::min<std::size_t>(parameter.name.size(), PRO_NAME_SIZE - 1),
                handle.id);
    handle.owner.type = PRM_MODEL;
    handle.owner.who.model = &model;
    return handle;
}

// The parameter behind a handle, with the status that says why there is none.
struct Found {
    ProError status;
    SimModel* model = nullptr;
    ModelParameter* parameter = nullptr;
};

Found FindParameter(Session& host, const ProParameter* handle) {
    if (handle == nullptr) return {PRO_TK_BAD_INPUTS};
    if (handle->type != PRO_PARAMETER || handle->owner.type != PRM_MODEL) {
        host.report.Violation("is given a parameter handle that no host function has filled");
        return {PRO_TK_BAD_INPUTS};
    }
    SimModel* model = FindModel(host, handle->owner.who.model);
    if (model == nullptr) return {PRO_TK_E_NOT_FOUND};
    const auto name = TextInput(host, handle->id, PRO_NAME_SIZE);
    if (!name) return {PRO_TK_BAD_INPUTS};
    ModelParameter* parameter = model->FindParameter(*name);
    return {parameter == nullptr ? PRO_TK_GENERAL_ERROR : PRO_TK_NO_ERROR, model, parameter};
}

// Nothing for a value that the host would not take.
std::optional<ParameterValue> ReadValue(Session& host, const ProParamvalue* value) {
    if (value == nullptr) return std::nullopt;
    switch (value->type) {
        case PRO_PARAM_DOUBLE:
            if (std::isfinite(value->value.d_val)) return value->value.d_val;
            return std::nullopt;
        case PRO_PARAM_INTEGER:
            return value->value.i_val;
        case PRO_PARAM_BOOLEAN:
            if (value->value.l_val == 0 || value->value.l_val == 1) return value->value.l_val == 1;
            host.report.Violation("is given a Boolean value that is neither 0 nor 1");
            return std::nullopt;
        case PRO_PARAM_STRING: {
            const auto text = TextInput(host, value->value.s_val, PRO_LINE_SIZE);
            if (!text) return std::nullopt;
            return std::wstring(*text);
        }
        default:
            return std::nullopt;
    }
}

ProParamvalue HostValue(const ParameterValue& value) {
    ProParamvalue result{};
    if (const auto* text = std::get_if<std::wstring>(&value)) {
        result.type = PRO_PARAM_STRING;
        // Tests may hold a longer one; the host cannot.
        std::copy_n(text->begin(), std::min<std::size_t>(text->size(), PRO_LINE_SIZE - 1),
                    result.value.s_val);
    } else if (const auto* number = std::get_if<int>(&value)) {
        result.type = PRO_PARAM_INTEGER;
        result.value.i_val = *number;
    } else if (const auto* truth = std::get_if<bool>(&value)) {
        result.type = PRO_PARAM_BOOLEAN;
        result.value.l_val = *truth ? 1 : 0;
    } else {
        result.type = PRO_PARAM_DOUBLE;
        result.value.d_val = std::get<double>(value);
    }
    return result;
}

// The simulator's models have no units.
bool NamesUnit(const ProUnititem* units) {
    return units != nullptr && units->name[0] != L'\0';
}

}  // namespace

ProError ProParameterInit(ProModelitem* owner, ProName name, ProParameter* param) {
    static const CallSite kSite("ProParameterInit",
                                {PRO_TK_E_NOT_FOUND, PRO_TK_BAD_CONTEXT, PRO_TK_BAD_INPUTS});
    return Traced(kSite, {owner, name, Out(param)}, [&](Session& host) -> ProError {
        const auto text = TextInput(host, name, PRO_NAME_SIZE);
        if (owner == nullptr || !text || text->empty() || param == nullptr) return PRO_TK_BAD_INPUTS;
        SimModel* model = OwnerModel(host, *owner);
        if (model == nullptr) return PRO_TK_BAD_CONTEXT;
        const ModelParameter* parameter = model->FindParameter(*text);
        if (parameter == nullptr) return PRO_TK_E_NOT_FOUND;
        *param = Handle(*model, *parameter);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProParameterWithUnitsCreate(ProModelitem* owner, ProName name, ProParamvalue* proval,
                                     ProUnititem* units, ProParameter* p_param) {
    static const CallSite kSite(
        "ProParameterWithUnitsCreate",
        {PRO_TK_E_FOUND, PRO_TK_CANT_MODIFY, PRO_TK_BAD_CONTEXT, PRO_TK_BAD_INPUTS, PRO_TK_INVALID_NAME});
    return Traced(kSite, {owner, name, proval, units, Out(p_param)}, [&](Session& host) -> ProError {
        const auto text = TextInput(host, name, PRO_NAME_SIZE);
        if (owner == nullptr || !text || text->empty() || p_param == nullptr) return PRO_TK_BAD_INPUTS;
        std::optional<ParameterValue> value = ReadValue(host, proval);
        if (!value) return PRO_TK_BAD_INPUTS;
        SimModel* model = OwnerModel(host, *owner);
        if (model == nullptr) return PRO_TK_BAD_CONTEXT;
        if (model->IsReadOnly()) return PRO_TK_CANT_MODIFY;
        if (text->find_first_of(kNotInNames) != std::wstring_view::npos) return PRO_TK_INVALID_NAME;
        if (model->HasParameter(*text)) return PRO_TK_E_FOUND;
        if (NamesUnit(units)) return PRO_TK_GENERAL_ERROR;
        model->SetParameter(*text, std::move(*value));
        *p_param = Handle(*model, *model->FindParameter(*text));
        return PRO_TK_NO_ERROR;
    });
}

ProError ProParameterValueWithUnitsSet(ProParameter* param, ProParamvalue* proval, ProUnititem* units) {
    static const CallSite kSite("ProParameterValueWithUnitsSet", {PRO_TK_CANT_MODIFY, PRO_TK_E_NOT_FOUND,
                                                                  PRO_TK_INVALID_TYPE, PRO_TK_BAD_INPUTS});
    return Traced(kSite, {param, proval, units}, [&](Session& host) -> ProError {
        std::optional<ParameterValue> value = ReadValue(host, proval);
        if (!value) return PRO_TK_BAD_INPUTS;
        const Found found = FindParameter(host, param);
        if (found.status != PRO_TK_NO_ERROR) return found.status;
        if (found.model->IsReadOnly()) return PRO_TK_CANT_MODIFY;
        if (NamesUnit(units)) return PRO_TK_INVALID_TYPE;
        if (found.parameter->relationDriven || found.parameter->locked) return PRO_TK_GENERAL_ERROR;
        const bool changesType = found.parameter->value.index() != value->index();
        if (changesType && host.strict.typeChangeRefused) return PRO_TK_GENERAL_ERROR;
        found.model->SetParameter(found.parameter->name, std::move(*value));
        return PRO_TK_NO_ERROR;
    });
}

ProError ProParameterValueWithUnitsGet(ProParameter* param, ProParamvalue* proval, ProUnititem* units) {
    static const CallSite kSite("ProParameterValueWithUnitsGet", {PRO_TK_E_NOT_FOUND, PRO_TK_BAD_INPUTS});
    return Traced(kSite, {param, Out(proval), Out(units)}, [&](Session& host) -> ProError {
        if (proval == nullptr) return PRO_TK_BAD_INPUTS;
        const Found found = FindParameter(host, param);
        if (found.status != PRO_TK_NO_ERROR) return found.status;
        *proval = HostValue(found.parameter->value);
        if (units != nullptr) *units = {found.model, {}};
        return PRO_TK_NO_ERROR;
    });
}

ProError ProParameterVisit(ProModelitem* owner, ProParameterFilter filter, ProParameterAction action,
                           ProAppData data) {
    static const CallSite kSite("ProParameterVisit",
                                {PRO_TK_E_NOT_FOUND, PRO_TK_BAD_CONTEXT, PRO_TK_BAD_INPUTS});
    return Traced(kSite, {owner, filter, action, data}, [&](Session& host) -> ProError {
        if (owner == nullptr || action == nullptr) return PRO_TK_BAD_INPUTS;
        SimModel* model = OwnerModel(host, *owner);
        if (model == nullptr) return PRO_TK_BAD_CONTEXT;
        if (model->Parameters().empty()) return PRO_TK_E_NOT_FOUND;
        for (std::size_t i = 0; i < model->Parameters().size(); ++i) {
            // Each callback gets a handle of its own: what it writes there reaches nobody.
            ProParameter seen = Handle(*model, model->Parameters()[i]);
            const ProError chosen =
                filter == nullptr ? PRO_TK_NO_ERROR : CallPlugin(host.report, filter, &seen, data);
            if (chosen == PRO_TK_CONTINUE) continue;
            if (chosen != PRO_TK_NO_ERROR) return chosen;
            ProParameter given = Handle(*model, model->Parameters()[i]);
            const ProError answer = CallPlugin(host.report, action, &given, chosen, data);
            if (answer != PRO_TK_NO_ERROR) return answer;
        }
        return PRO_TK_NO_ERROR;
    });
}

ProError ProParameterDelete(ProParameter* param) {
    static const CallSite kSite("ProParameterDelete",
                                {PRO_TK_CANT_MODIFY, PRO_TK_E_NOT_FOUND, PRO_TK_BAD_INPUTS});
    return Traced(kSite, {param}, [&](Session& host) -> ProError {
        const Found found = FindParameter(host, param);
        if (found.status != PRO_TK_NO_ERROR) return found.status;
        if (found.model->IsReadOnly()) return PRO_TK_CANT_MODIFY;
        if (found.parameter->relationDriven || found.parameter->locked) return PRO_TK_GENERAL_ERROR;
        found.model->RemoveParameter(std::wstring(found.parameter->name));
        return PRO_TK_NO_ERROR;
    });
}
