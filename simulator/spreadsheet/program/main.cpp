// spreadsheet: the stand-in for the spreadsheet application as a program of its own.
//
// --register     enters it in the registry under the application's name (as administrator)
// --unregister   takes the entries out again
// Without either it serves one application for COM, which starts it with -Embedding, and ends with it.

#include <cstdio>
#include <memory>
#include <string>
#include <string_view>

#include <windows.h>

#include <oaidl.h>

#include "simulator/report/utf8.h"
#include "simulator/spreadsheet/automation_server.h"

namespace {

// A server that nobody connects to does not stay.
constexpr UINT kPatience = 60000;  // milliseconds

std::wstring ClassText() {
    wchar_t text[40] = {};
    StringFromGUID2(sim::kSpreadsheetClass, text, 40);
    return text;
}

std::wstring ClassesKey(const std::wstring& name) {
    return L"Software\\Classes\\" + name;
}

std::wstring NameKey() {
    return ClassesKey(sim::kSpreadsheetName);
}

std::wstring ClassKey() {
    return ClassesKey(L"CLSID\\" + ClassText());
}

bool SetKey(const std::wstring& key, const std::wstring& value) {
    HKEY opened = nullptr;
    if (RegCreateKeyExW(HKEY_LOCAL_MACHINE, key.c_str(), 0, nullptr, 0, KEY_SET_VALUE, nullptr, &opened,
                        nullptr) != ERROR_SUCCESS)
        return false;
    const auto size = static_cast<DWORD>((value.size() + 1) * sizeof(wchar_t));
    const LSTATUS status =
        RegSetValueExW(opened, nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(value.c_str()), size);
    RegCloseKey(opened);
    return status == ERROR_SUCCESS;
}

// True when the name belongs to another application, which must never be replaced.
bool IsTaken() {
    CLSID owner;
    return SUCCEEDED(CLSIDFromProgID(sim::kSpreadsheetName, &owner)) &&
           !IsEqualCLSID(owner, sim::kSpreadsheetClass);
}

int Refuse(const char* reason) {
    std::fprintf(stderr, "spreadsheet: %s\n", reason);
    return 1;
}

int Register() {
    if (IsTaken()) return Refuse("another application is registered under the name; nothing was changed");
    wchar_t program[MAX_PATH] = {};
    GetModuleFileNameW(nullptr, program, MAX_PATH);
    const bool done = SetKey(ClassKey() + L"\\LocalServer32", L"\"" + std::wstring(program) + L"\"") &&
                      SetKey(ClassKey() + L"\\ProgID", sim::kSpreadsheetName) &&
                      SetKey(NameKey() + L"\\CLSID", ClassText());
    return done ? 0 : Refuse("cannot write the registry; administrator rights are needed");
}

int Unregister() {
    if (IsTaken()) return Refuse("another application is registered under the name; nothing was changed");
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, NameKey().c_str());
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, ClassKey().c_str());
    return 0;
}

class Factory final : public IClassFactory {
public:
    explicit Factory(std::shared_ptr<sim::AutomationServer> server) : server_(std::move(server)) {}
    Factory(const Factory&) = delete;
    Factory& operator=(const Factory&) = delete;
    virtual ~Factory() = default;

    HRESULT WINAPI QueryInterface(REFIID id, void** object) override {
        const bool known = IsEqualIID(id, IID_IUnknown) || IsEqualIID(id, IID_IClassFactory);
        *object = known ? static_cast<IClassFactory*>(this) : nullptr;
        return known ? S_OK : E_NOINTERFACE;
    }
    // Lives on the stack of Serve.
    ULONG WINAPI AddRef() override { return 2; }
    ULONG WINAPI Release() override { return 1; }
    HRESULT WINAPI CreateInstance(IUnknown* outer, REFIID id, void** object) override {
        return outer != nullptr ? CLASS_E_NOAGGREGATION : sim::CreateApplication(server_, id, object);
    }
    HRESULT WINAPI LockServer(BOOL) override { return S_OK; }

private:
    std::shared_ptr<sim::AutomationServer> server_;
};

void RunMessages(const sim::AutomationServer& server) {
    const UINT_PTR patience = SetTimer(nullptr, 0, kPatience, nullptr);
    MSG message;
    while (GetMessageW(&message, nullptr, 0, 0) > 0) {
        if (message.message == WM_TIMER && message.wParam == patience && server.RunningApplications() == 0)
            break;
        TranslateMessage(&message);
        DispatchMessageW(&message);
    }
    KillTimer(nullptr, patience);
}

int Serve() {
    if (FAILED(CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED))) return Refuse("COM does not start");
    const auto server = std::make_shared<sim::AutomationServer>();
    const DWORD thread = GetCurrentThreadId();
    server->onIdle = [thread] { PostThreadMessageW(thread, WM_QUIT, 0, 0); };
    Factory factory(server);
    DWORD entry = 0;
    // Each application is a process of its own, as with the original.
    const HRESULT status = CoRegisterClassObject(sim::kSpreadsheetClass, &factory, CLSCTX_LOCAL_SERVER,
                                                 REGCLS_SINGLEUSE, &entry);
    if (SUCCEEDED(status)) {
        RunMessages(*server);
        CoRevokeClassObject(entry);
    }
    CoUninitialize();
    return SUCCEEDED(status) ? 0 : Refuse("COM does not take the server");
}

}  // namespace

int wmain(int argc, wchar_t** argv) {
    const std::wstring_view order = argc > 1 ? argv[1] : L"";
    if (order == L"--register") return Register();
    if (order == L"--unregister") return Unregister();
    if (order == L"-Embedding" || order == L"/Embedding") return Serve();
    std::fputs(
        "spreadsheet: a stand-in for the spreadsheet application, started by COM\n"
        "  --register     enter it under the application's name (refused when the name is taken)\n"
        "  --unregister   take it out again\n",
        stderr);
    return 2;
}
