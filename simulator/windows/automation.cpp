#include "simulator/windows/automation.h"

#include "simulator/session/session.h"

namespace sim {

namespace {

// Whose plug-in makes the calls: they come without a word of it.
Session* automated = nullptr;

HRESULT WINAPI ClassOfProgram(LPCOLESTR program, LPCLSID programClass) {
    return automated->spreadsheet.ClassOfProgram(program, programClass);
}

HRESULT WINAPI CreateInstance(REFCLSID programClass, LPUNKNOWN outer, DWORD context, REFIID id,
                              LPVOID* object) {
    return automated->spreadsheet.Create(programClass, outer, context, id, object);
}

HRESULT WINAPI EnterCom(LPVOID, DWORD model) {
    return automated->spreadsheet.EnterCom(model);
}

void WINAPI LeaveCom() {
    if (!automated->spreadsheet.LeaveCom())
        automated->report.Violation("CoUninitialize without CoInitializeEx");
}

}  // namespace

void PatchAutomation(Session& session, HMODULE module, std::vector<ImportPatch>& patches) {
    automated = &session;
    PatchImport(module, "CLSIDFromProgID", Address(&ClassOfProgram), patches);
    PatchImport(module, "CoCreateInstance", Address(&CreateInstance), patches);
    PatchImport(module, "CoInitializeEx", Address(&EnterCom), patches);
    PatchImport(module, "CoUninitialize", Address(&LeaveCom), patches);
}

}  // namespace sim
