// Parameters of models, without units.
//
// A name that the host's buffer cannot hold is refused with PRO_TK_LINE_TOO_LONG; the other errors are those
// of the toolkit call named.
#pragma once

#include <string>
#include <vector>

#include <ProMdl.h>
#include <ProParameter.h>

namespace kv {

// The handle of a parameter. Errors: those of ProParameterInit, PRO_TK_E_NOT_FOUND for none of this name.
[[nodiscard]] ProError ParameterFind(ProMdl model, const std::wstring& name, ProParameter& parameter);

// Errors: those of ProParameterWithUnitsCreate, PRO_TK_E_FOUND for a name in use.
[[nodiscard]] ProError ParameterCreate(ProMdl model, const std::wstring& name, const ProParamvalue& value);

// Sets the value of an existing parameter. Errors: those of ProParameterInit, PRO_TK_E_NOT_FOUND for none of
// this name, and of ProParameterValueWithUnitsSet.
[[nodiscard]] ProError ParameterUpdate(ProMdl model, const std::wstring& name, const ProParamvalue& value);

// Creates the parameter or, when it exists, sets its value. Errors: those of both.
[[nodiscard]] ProError ParameterWrite(ProMdl model, const std::wstring& name, const ProParamvalue& value);

// Errors: those of ProParameterInit, PRO_TK_E_NOT_FOUND for none of this name, and of
// ProParameterValueWithUnitsGet. The item stands for a model, as ProMdlToModelitem gives it.
[[nodiscard]] ProError ParameterValueGet(ProModelitem owner, const std::wstring& name, ProParamvalue& value);
// Reads the value. Errors: those of ProParameterInit, PRO_TK_E_NOT_FOUND for none of this name, and of
// ProParameterValueWithUnitsGet.
[[nodiscard]] ProError ParameterRead(ProMdl model, const std::wstring& name, ProParamvalue& value);

// Errors: those of ProParameterInit, PRO_TK_E_NOT_FOUND for none of this name, and of ProParameterDelete.
[[nodiscard]] ProError ParameterDelete(ProMdl model, const std::wstring& name);

// Names of a model's parameters, in the host's order; none is no failure. Errors: those of ProMdlToModelitem
// and ProParameterVisit.
[[nodiscard]] ProError ParameterNamesGet(ProMdl model, std::vector<std::wstring>& names);

}  // namespace kv
