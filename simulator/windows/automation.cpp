#include "simulator/windows/automation.h"

#include "simulator/session/session.h"

namespace sim {

namespace {

// Whose plug-in makes the calls: they come without a word of it.
Session* host = nullptr;

HRESULT WINAPI ClassOfProgram(LPCOLESTR program, LPCLSID programClass) {
    return host->spreadsheet.ClassOfProgram(program, programClass);
}

HRESULT WINAPI CreateInstance(REFCLSID programClass, LPUNKNOWN outer, DWORD context, REFIID id,
                              LPVOID* object) {
    return host->spreadsheet.Create(programClass, outer, context, id, object);
}

HRESULT WINAPI EnterCom(LPVOID, DWORD model) {
    return host->spreadsheet.EnterCom(model);
}

void WINAPI LeaveCom() {
    if (!host->spreadsheet.LeaveCom()) host->report.Violation("CoUninitialize without CoInitializeEx");
}

template <typename Function>
void* Address(Function* function) {
    return reinterpret_cast<void*>(function);
}

}  // namespace

void PatchAutomation(Session& session, HMODULE module, std::vector<ImportPatch>& patches) {
    host = &session;
    PatchImport(module, "CLSIDFromProgID", Address(&ClassOfProgram), patches);
    PatchImport(module, "CoCreateInstance", Address(&CreateInstance), patches);
    PatchImport(module, "CoInitializeEx", Address(&EnterCom), patches);
    PatchImport(module, "CoUninitialize", Address(&LeaveCom), patches);
}

}  // namespace sim
