#include "support/spreadsheet_program.h"

#include <windows.h>

namespace test {

int RunSpreadsheetProgram(const std::wstring& arguments) {
    return RunProgramBeside(L"spreadsheet.exe", arguments);
}

int RunProgramBeside(const std::wstring& name, const std::wstring& arguments,
                     const std::filesystem::path& errors) {
    std::wstring program(MAX_PATH, L'\0');
    program.resize(GetModuleFileNameW(nullptr, program.data(), MAX_PATH));
    const std::wstring folder = program.substr(0, program.rfind(L'\\'));
    std::wstring line = L"\"" + folder + L"\\" + name + L"\" " + arguments;
    STARTUPINFOW start = {};
    start.cb = sizeof start;
    SECURITY_ATTRIBUTES inherited = {sizeof inherited, nullptr, TRUE};
    if (!errors.empty()) {
        start.dwFlags = STARTF_USESTDHANDLES;
        start.hStdError = CreateFileW(errors.c_str(), GENERIC_WRITE, FILE_SHARE_READ, &inherited,
                                      CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr);
    }
    PROCESS_INFORMATION process = {};
    const BOOL started = CreateProcessW(nullptr, line.data(), nullptr, nullptr, !errors.empty(), 0, nullptr,
                                        nullptr, &start, &process);
    if (!errors.empty()) CloseHandle(start.hStdError);
    if (!started) return -1;
    DWORD code = 0;
    WaitForSingleObject(process.hProcess, INFINITE);
    GetExitCodeProcess(process.hProcess, &code);
    CloseHandle(process.hThread);
    CloseHandle(process.hProcess);
    return static_cast<int>(code);
}

}  // namespace test
