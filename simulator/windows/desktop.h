// Windows calls of the plug-in that need a person, start something or wait: recorded and answered for the
// user.

#pragma once

#include <string>
#include <vector>

#include <windows.h>

#include "simulator/windows/import_table.h"

namespace sim {

class Session;

// A timer without a window, as SetTimer makes it: its identifier is the system's, not the caller's.
struct DesktopTimer {
    UINT_PTR id;
    UINT period;  // milliseconds
    TIMERPROC procedure;
};

// Redirects the calls that `module` imports to the session, which has to outlive that. Returns a line for
// each imported call of the same purpose that is not caught, and would reach the real desktop.
std::vector<std::string> PatchDesktop(Session& session, HMODULE module, std::vector<ImportPatch>& patches);

const std::vector<DesktopTimer>& DesktopTimers();
// Lets every timer tick once, as the message loop would after its period.
void FireDesktopTimers();
void ForgetDesktopTimers();

// Makes Windows calls of the plug-in fail: the n-th call of `function`, and as many as `times` says in a row,
// answer their failure with `error` as last error. Known functions: the profile and file calls that the
// plug-in imports. False: not imported.
bool FailWindowsCall(const std::string& function, long long nth, DWORD error, long long times = 1);
// Names of the calls that can be made to fail.
std::vector<std::string> WindowsCallsThatCanFail();
void HealWindowsCalls();
// How often such a call was made since HealWindowsCalls.
long long WindowsCallCount(const std::string& function);

}  // namespace sim
