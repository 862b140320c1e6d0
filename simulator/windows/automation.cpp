#include "simulator/windows/automation.h"

#include "simulator/session/session.h"

namespace sim {

namespace {

HRESULT WINAPI ClassOfProgram(LPCOLESTR program, LPCLSID programClass) {
    return Host().spreadsheet.ClassOfProgram(program, programClass);
}

HRESULT WINAPI CreateInstance(REFCLSID programClass, LPUNKNOWN outer, DWORD context, REFIID id,
                              LPVOID* object) {
    return Host().spreadsheet.Create(programClass, outer, context, id, object);
}

HRESULT WINAPI EnterCom(LPVOID, DWORD model) {
    return Host().spreadsheet.EnterCom(model);
}

void WINAPI LeaveCom() {
    if (!Host().spreadsheet.LeaveCom()) Host().report.Violation("CoUninitialize without CoInitializeEx");
}

template <typename Function>
void* Address(Function* function) {
    return reinterpret_cast<void*>(function);
}

}  // namespace

void PatchAutomation(HMODULE module, std::vector<ImportPatch>& patches) {
    PatchImport(module, "CLSIDFromProgID", Address(&ClassOfProgram), patches);
    PatchImport(module, "CoCreateInstance", Address(&CreateInstance), patches);
    PatchImport(module, "CoInitializeEx", Address(&EnterCom), patches);
    PatchImport(module, "CoUninitialize", Address(&LeaveCom), patches);
}

}  // namespace sim
