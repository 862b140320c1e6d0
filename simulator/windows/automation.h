// COM calls that lead to the spreadsheet application, answered by the running session.

#pragma once

#include <vector>

#include <windows.h>

#include "simulator/windows/import_table.h"

namespace sim {

// Redirects these calls of `module`.
void PatchAutomation(HMODULE module, std::vector<ImportPatch>& patches);

}  // namespace sim
