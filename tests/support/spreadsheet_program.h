// The spreadsheet application's stand-in as a program, beside the running one.

#pragma once

#include <string>

namespace test {

// Runs it to its end and gives its exit code; -1: it does not start.
int RunSpreadsheetProgram(const std::wstring& arguments);

}  // namespace test
