// Late-bound automation on IDispatch.

#include "office/automation.h"

#include <array>
#include <new>
#include <utility>

#include <oleauto.h>

namespace kv {

// An application that shows a question or is still loading turns calls away for a while.
static constexpr int kBusyAttempts = 40;
static constexpr DWORD kBusyPause = 50;  // milliseconds
static constexpr std::size_t kMaxArguments = 3;

static bool IsBusy(HRESULT result);
static BSTR NewText(std::wstring_view text);

// ---- COM on this thread

ComApartment::ComApartment()
    : status_(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED | COINIT_DISABLE_OLE1DDE)),
      mustLeave_(SUCCEEDED(status_)) {
    // Initialised the other way by somebody else: as good, and theirs to end.
    if (status_ == RPC_E_CHANGED_MODE) status_ = S_FALSE;
}

ComApartment::~ComApartment() {
    if (mustLeave_) CoUninitialize();
}

// ---- Values

Variant::Variant() {
    VariantInit(&value_);
}

Variant::Variant(bool value) : Variant() {
    value_.vt = VT_BOOL;
    value_.boolVal = value ? VARIANT_TRUE : VARIANT_FALSE;
}

Variant::Variant(long value) : Variant() {
    value_.vt = VT_I4;
    value_.lVal = value;
}

Variant::Variant(const std::wstring& text) : Variant() {
    value_.bstrVal = NewText(text);
    value_.vt = VT_BSTR;
}

Variant::Variant(Variant&& other) noexcept : value_(other.value_) {
    VariantInit(&other.value_);
}

Variant::~Variant() {
    VariantClear(&value_);
}

Variant Variant::Omitted() {
    Variant variant;
    variant.value_.vt = VT_ERROR;
    variant.value_.scode = DISP_E_PARAMNOTFOUND;
    return variant;
}

Variant Variant::Block(std::size_t rows, std::size_t columns) {
    // Cells are counted from 1.
    std::array<SAFEARRAYBOUND, 2> bounds = {
        {{static_cast<ULONG>(rows), 1}, {static_cast<ULONG>(columns), 1}}};
    Variant variant;
    variant.value_.parray = SafeArrayCreate(VT_VARIANT, 2, bounds.data());
    if (variant.value_.parray == nullptr) throw std::bad_alloc();
    variant.value_.vt = VT_ARRAY | VT_VARIANT;
    return variant;
}

void Variant::SetText(std::size_t row, std::size_t column, std::wstring_view text) {
    std::array<LONG, 2> index = {static_cast<LONG>(row) + 1, static_cast<LONG>(column) + 1};
    void* place = nullptr;
    if (FAILED(SafeArrayPtrOfIndex(value_.parray, index.data(), &place))) return;
    auto* cell = static_cast<VARIANT*>(place);
    const BSTR copy = NewText(text);
    VariantClear(cell);
    cell->vt = VT_BSTR;
    cell->bstrVal = copy;
}

static BSTR NewText(std::wstring_view text) {
    const BSTR copy = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
    if (copy == nullptr) throw std::bad_alloc();
    return copy;
}

// ---- Objects

HRESULT Dispatch::Create(const wchar_t* programName) {
    CLSID programClass;
    const HRESULT result = CLSIDFromProgID(programName, &programClass);
    if (FAILED(result)) return result;
    Release();
    void* object = nullptr;
    const HRESULT created =
        CoCreateInstance(programClass, nullptr, CLSCTX_LOCAL_SERVER, IID_IDispatch, &object);
    if (SUCCEEDED(created)) object_ = static_cast<IDispatch*>(object);
    return created;
}

void Dispatch::Release() {
    if (object_ != nullptr) std::exchange(object_, nullptr)->Release();
}

HRESULT Dispatch::Get(DISPID property, Dispatch& result, std::span<const Variant> arguments) const {
    return Fetch(property, DISPATCH_PROPERTYGET, result, arguments);
}

HRESULT Dispatch::CallFor(DISPID method, Dispatch& result, std::span<const Variant> arguments) const {
    return Fetch(method, DISPATCH_METHOD, result, arguments);
}

HRESULT Dispatch::GetValue(DISPID property, Variant& value) const {
    return Invoke(property, DISPATCH_PROPERTYGET, {}, value.Receive());
}

HRESULT Dispatch::PutNamed(const wchar_t* property, const Variant& value) const {
    if (object_ == nullptr) return E_POINTER;
    auto* name = const_cast<wchar_t*>(property);  // the interface takes it without const
    DISPID id = DISPID_UNKNOWN;
    const HRESULT status = object_->GetIDsOfNames(IID_NULL, &name, 1, LOCALE_NEUTRAL, &id);
    return SUCCEEDED(status) ? Put(id, value) : status;
}

HRESULT Dispatch::Put(DISPID property, const Variant& value) const {
    return Invoke(property, DISPATCH_PROPERTYPUT, {&value, 1}, nullptr);
}

HRESULT Dispatch::Call(DISPID method, std::span<const Variant> arguments) const {
    Variant ignored;
    return Invoke(method, DISPATCH_METHOD, arguments, ignored.Receive());
}

HRESULT Dispatch::Fetch(DISPID member, WORD kind, Dispatch& result,
                        std::span<const Variant> arguments) const {
    Variant fetched;
    const HRESULT status = Invoke(member, kind, arguments, fetched.Receive());
    if (FAILED(status)) return status;
    const VARIANT& value = fetched.Get();
    if (value.vt != VT_DISPATCH || value.pdispVal == nullptr) return DISP_E_TYPEMISMATCH;
    result.Release();
    result.object_ = value.pdispVal;
    result.object_->AddRef();
    return status;
}

HRESULT Dispatch::Invoke(DISPID member, WORD kind, std::span<const Variant> arguments,
                         VARIANT* result) const {
    if (object_ == nullptr) return E_POINTER;
    if (arguments.size() > kMaxArguments) return DISP_E_BADPARAMCOUNT;
    // Plain copies, last argument first; the texts in them stay the caller's.
    std::array<VARIANT, kMaxArguments> passed;
    for (std::size_t i = 0; i < arguments.size(); ++i) passed[arguments.size() - 1 - i] = arguments[i].Get();
    DISPID assigned = DISPID_PROPERTYPUT;
    DISPPARAMS parameters = {passed.data(), nullptr, static_cast<UINT>(arguments.size()), 0};
    if (kind == DISPATCH_PROPERTYPUT) {
        parameters.rgdispidNamedArgs = &assigned;
        parameters.cNamedArgs = 1;
    }

    HRESULT status = RPC_E_CALL_REJECTED;
    for (int attempt = 0; attempt < kBusyAttempts && IsBusy(status); ++attempt) {
        if (attempt > 0) Sleep(kBusyPause);
        status =
            object_->Invoke(member, IID_NULL, LOCALE_NEUTRAL, kind, &parameters, result, nullptr, nullptr);
    }
    return status;
}

static bool IsBusy(HRESULT result) {
    return result == RPC_E_CALL_REJECTED || result == RPC_E_SERVERCALL_RETRYLATER;
}

}  // namespace kv
