// COM calls that lead to the spreadsheet application, answered by the session.

#pragma once

#include <vector>

#include <windows.h>

#include "simulator/windows/import_table.h"

namespace sim {

class Session;

// Redirects these calls of `module` to the session, which has to outlive that.
void PatchAutomation(Session& session, HMODULE module, std::vector<ImportPatch>& patches);

}  // namespace sim
