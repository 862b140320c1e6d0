// Arguments and results of automation calls as plain values.

#pragma once

#include <string>

#include <windows.h>

#include <oaidl.h>

namespace sim {

// ---- Results; a caller that wants none passes null
HRESULT GiveTruth(bool value, VARIANT* result);
HRESULT GiveNumber(double value, VARIANT* result);
HRESULT GiveText(const std::wstring& text, VARIANT* result);

// ---- Arguments: DISP_E_TYPEMISMATCH for a value that cannot be one, and the output stays as it was
HRESULT TakeTruth(const VARIANT& value, bool& truth);
HRESULT TakeNumber(const VARIANT& value, double& number);
HRESULT TakeText(const VARIANT& value, std::wstring& text);
// A value as another type; the copy is the caller's to clear.
HRESULT Convert(const VARIANT& value, VARTYPE type, VARIANT& copy);

}  // namespace sim
