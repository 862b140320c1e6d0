// Programs beside the running one, foremost the spreadsheet application's stand-in.

#pragma once

#include <filesystem>
#include <string>

namespace test {

// Runs it to its end and gives its exit code; -1: it does not start.
int RunSpreadsheetProgram(const std::wstring& arguments);

// The same of another one; what it prints as errors goes into a file, if one is named.
int RunProgramBeside(const std::wstring& name, const std::wstring& arguments,
                     const std::filesystem::path& errors = {});

}  // namespace test
