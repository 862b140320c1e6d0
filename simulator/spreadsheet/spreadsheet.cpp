#include "simulator/spreadsheet/spreadsheet.h"

#include "simulator/report/utf8.h"

namespace sim {

bool Spreadsheet::IsRegistered() {
    CLSID programClass;
    return SUCCEEDED(CLSIDFromProgID(kSpreadsheetName, &programClass));
}

std::vector<std::string> Spreadsheet::TakeLeftovers() {
    std::vector<std::string> lines = server_->TakeProblems();
    for (const std::string& object : server_->OpenObjects()) lines.push_back("left open: " + object);
    if (comDepth_ != 0) lines.push_back("COM was left initialised " + std::to_string(comDepth_) + " times");
    comDepth_ = 0;
    return lines;
}

HRESULT Spreadsheet::ClassOfProgram(LPCOLESTR program, CLSID* programClass) const {
    const bool isOurs = program != nullptr && UpperName(program) == UpperName(kSpreadsheetName);
    if (!isOurs || place_ == Place::kRegistered) return CLSIDFromProgID(program, programClass);
    if (place_ == Place::kMissing) return CO_E_CLASSSTRING;
    *programClass = kSpreadsheetClass;
    return S_OK;
}

HRESULT Spreadsheet::Create(REFCLSID programClass, IUnknown* outer, DWORD context, REFIID id,
                            void** object) const {
    if (place_ != Place::kHere || !IsEqualCLSID(programClass, kSpreadsheetClass))
        return CoCreateInstance(programClass, outer, context, id, object);
    APTTYPE apartment = APTTYPE_CURRENT;
    APTTYPEQUALIFIER qualifier = APTTYPEQUALIFIER_NONE;
    const HRESULT status = CoGetApartmentType(&apartment, &qualifier);
    if (FAILED(status)) return status;
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    // The original is a program, never a library.
    if ((context & CLSCTX_LOCAL_SERVER) == 0) return REGDB_E_CLASSNOTREG;
    return CreateApplication(server_, id, object);
}

HRESULT Spreadsheet::EnterCom(DWORD model) {
    const HRESULT status = CoInitializeEx(nullptr, model);
    if (SUCCEEDED(status)) ++comDepth_;
    return status;
}

bool Spreadsheet::LeaveCom() {
    if (comDepth_ == 0) return false;
    --comDepth_;
    CoUninitialize();
    return true;
}

}  // namespace sim
