#include "simulator/spreadsheet/variant_values.h"

#include <oleauto.h>

namespace sim {

HRESULT GiveTruth(bool value, VARIANT* result) {
    if (result == nullptr) return S_OK;
    result->vt = VT_BOOL;
    result->boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
}

HRESULT GiveNumber(double value, VARIANT* result) {
    if (result == nullptr) return S_OK;
    result->vt = VT_R8;
    result->dblVal = value;
    return S_OK;
}

HRESULT GiveText(const std::wstring& text, VARIANT* result) {
    if (result == nullptr) return S_OK;
    result->vt = VT_BSTR;
    result->bstrVal = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    return S_OK;
}

HRESULT Convert(const VARIANT& value, VARTYPE type, VARIANT& copy) {
    VARIANT source = value;
    VariantInit(&copy);
    return FAILED(VariantChangeType(&copy, &source, 0, type)) ? DISP_E_TYPEMISMATCH : S_OK;
}

HRESULT TakeTruth(const VARIANT& value, bool& truth) {
    VARIANT copy;
    const HRESULT status = Convert(value, VT_BOOL, copy);
    if (SUCCEEDED(status)) truth = copy.boolVal != VARIANT_FALSE;
    return status;
}

HRESULT TakeNumber(const VARIANT& value, double& number) {
    VARIANT copy;
    const HRESULT status = Convert(value, VT_R8, copy);
    if (SUCCEEDED(status)) number = copy.dblVal;
    return status;
}

HRESULT TakeText(const VARIANT& value, std::wstring& text) {
    if (value.vt != VT_BSTR) return DISP_E_TYPEMISMATCH;
    text.assign(value.bstrVal == nullptr ? L"" : value.bstrVal, SysStringLen(value.bstrVal));
    return S_OK;
}

}  // namespace sim
