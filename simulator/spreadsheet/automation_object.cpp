#include "simulator/spreadsheet/automation_object.h"

#include <algorithm>
#include <array>
#include <utility>

#include <oleauto.h>

#include "simulator/report/utf8.h"

namespace sim {

namespace {

constexpr wchar_t kRefused[] = L"应用程序定义或对象定义错误";

class AutomationObject final : public IDispatch {
public:
    explicit AutomationObject(ObjectState state) : state_(std::move(state)) {
        std::string note = KindName(state_.kind);
        if (state_.kind == ObjectKind::kRange) note += " " + Utf8(AreaText(state_.area));
        number_ = Server().Opened(note);
    }
    AutomationObject(const AutomationObject&) = delete;
    AutomationObject& operator=(const AutomationObject&) = delete;
    virtual ~AutomationObject() = default;

    HRESULT WINAPI QueryInterface(REFIID id, void** object) override {
        if (object == nullptr) return E_POINTER;
        const bool known = IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IDispatch);
        *object = known ? static_cast<IDispatch*>(this) : nullptr;
        if (!known) return E_NOINTERFACE;
        AddRef();
        return S_OK;
    }
    ULONG WINAPI AddRef() override { return static_cast<ULONG>(InterlockedIncrement(&references_)); }
    ULONG WINAPI Release() override;

    HRESULT WINAPI GetTypeInfoCount(UINT* count) override {
        *count = 0;
        return S_OK;
    }
    HRESULT WINAPI GetTypeInfo(UINT, LCID, ITypeInfo**) override { return DISP_E_BADINDEX; }
    HRESULT WINAPI GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
    HRESULT WINAPI Invoke(DISPID id, REFIID, LCID, WORD access, DISPPARAMS* parameters, VARIANT* result,
                          EXCEPINFO* exception, UINT*) override;

private:
    AutomationServer& Server() const { return *state_.application->server; }
    const Member* Find(DISPID id, WORD access) const;
    HRESULT Act(const Member& member, const DISPPARAMS& parameters, VARIANT* result);

    LONG references_ = 1;
    long long number_ = 0;  // in the server's books
    ObjectState state_;
};

ULONG AutomationObject::Release() {
    const LONG left = InterlockedDecrement(&references_);
    if (left > 0) return static_cast<ULONG>(left);
    // The application's end comes before the news that nothing is open any more.
    const std::shared_ptr<AutomationServer> server = state_.application->server;
    const long long number = number_;
    delete this;
    server->Closed(number);
    return 0;
}

HRESULT AutomationObject::GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) {
    std::fill_n(ids, count, DISPID_UNKNOWN);
    if (count == 0) return S_OK;
    const std::wstring wanted = UpperName(names[0]);
    for (const Member& member : Members())
        if (member.kind == state_.kind && UpperName(Wide(member.name)) == wanted) ids[0] = member.id;
    return count == 1 && ids[0] != DISPID_UNKNOWN ? S_OK : DISP_E_UNKNOWNNAME;
}

const Member* AutomationObject::Find(DISPID id, WORD access) const {
    for (const Member& member : Members())
        if (member.kind == state_.kind && member.id == id && (member.access & access) != 0) return &member;
    return nullptr;
}

bool IsQuit(const Member* member) {
    return member != nullptr && member->kind == ObjectKind::kApplication &&
           member->name == std::string("Quit");
}

void FillException(EXCEPINFO* exception) {
    if (exception == nullptr) return;
    *exception = {};
    exception->scode = kApplicationError;
    exception->bstrDescription = SysAllocString(kRefused);
}

HRESULT AutomationObject::Invoke(DISPID id, REFIID, LCID, WORD access, DISPPARAMS* parameters,
                                 VARIANT* result, EXCEPINFO* exception, UINT*) {
    if (parameters == nullptr) return E_INVALIDARG;
    const Member* member = Find(id, access);
    const std::string name = member == nullptr ? "member " + std::to_string(id) : std::string(member->name);
    HRESULT status = Server().EnterCall(std::string(KindName(state_.kind)) + "." + name);
    if (SUCCEEDED(status) && state_.application->ended) status = kApplicationError;
    if (SUCCEEDED(status))
        status = member == nullptr ? DISP_E_MEMBERNOTFOUND : Act(*member, *parameters, result);
    if (IsQuit(member) && SUCCEEDED(status)) state_.application->toldToQuit = true;
    if (status != kApplicationError) return status;
    FillException(exception);
    return DISP_E_EXCEPTION;
}

bool IsLeftOut(const VARIANT& argument) {
    return argument.vt == VT_ERROR && argument.scode == DISP_E_PARAMNOTFOUND;
}

HRESULT AutomationObject::Act(const Member& member, const DISPPARAMS& parameters, VARIANT* result) {
    const bool isPut = member.access == DISPATCH_PROPERTYPUT;
    const bool isNamed = parameters.cNamedArgs == 1 && parameters.rgdispidNamedArgs[0] == DISPID_PROPERTYPUT;
    if (!isPut && parameters.cNamedArgs != 0) return DISP_E_NONAMEDARGS;
    if (isPut && (!isNamed || parameters.cArgs == 0)) return DISP_E_BADPARAMCOUNT;

    CallArguments arguments;
    if (isPut) arguments.assigned = &parameters.rgvarg[0];
    for (UINT i = parameters.cArgs; i > (isPut ? 1U : 0U); --i) {
        const VARIANT& passed = parameters.rgvarg[i - 1];
        const bool isReference = passed.vt == (VT_BYREF | VT_VARIANT);
        arguments.given.push_back(isReference ? *passed.pvarVal : passed);
    }
    while (!arguments.given.empty() && IsLeftOut(arguments.given.back())) arguments.given.pop_back();
    const std::size_t count = arguments.given.size();
    if (count < member.minArguments || count > member.maxArguments) return DISP_E_BADPARAMCOUNT;
    return member.action(state_, arguments, result);
}

}  // namespace

ApplicationState::ApplicationState(std::shared_ptr<AutomationServer> owner) : server(std::move(owner)) {
    server->ApplicationStarted();
}

ApplicationState::~ApplicationState() {
    server->ApplicationEnded(toldToQuit);
}

const char* KindName(ObjectKind kind) {
    constexpr std::array<const char*, 9> kNames = {"Application", "Workbooks", "Workbook",
                                                   "Sheets",      "Worksheet", "Range",
                                                   "Interior",    "Font",      "Borders"};
    return kNames[static_cast<std::size_t>(kind)];
}

HRESULT GiveObject(ObjectState state, VARIANT* result) {
    if (result == nullptr) return S_OK;
    result->vt = VT_DISPATCH;
    result->pdispVal = new AutomationObject(std::move(state));
    return S_OK;
}

HRESULT CreateApplication(const std::shared_ptr<AutomationServer>& server, REFIID id, void** object) {
    *object = nullptr;
    if (FAILED(server->CreationFailure())) return server->CreationFailure();
    ObjectState state;
    state.application = std::make_shared<ApplicationState>(server);
    auto* application = new AutomationObject(std::move(state));
    const HRESULT status = application->QueryInterface(id, object);
    application->Release();
    return status;
}

}  // namespace sim
