#include "simulator/windows/plugin.h"

#include <array>

#include "simulator/report/call_plugin.h"
#include "simulator/report/utf8.h"
#include "simulator/session/session.h"
#include "simulator/windows/automation.h"
#include "simulator/windows/desktop.h"
#include "simulator/windows/plugin_heap.h"

namespace sim {

namespace {

using InitializeEntry = int (*)(int argc, char* argv[], char* version, char* build, wchar_t errorText[80]);
using TerminateEntry = void (*)();

template <typename Entry>
Entry FindEntry(HMODULE module, const char* name) {
    return reinterpret_cast<Entry>(reinterpret_cast<void*>(GetProcAddress(module, name)));
}

}  // namespace

Plugin::~Plugin() {
    Unload();
}

std::string Plugin::Load(const std::filesystem::path& home) {
    const std::filesystem::path file = home / kPluginFile;
    module_ = LoadLibraryW(file.c_str());
    if (module_ == nullptr)
        return "cannot load " + Utf8(file.wstring()) + " (system error " + std::to_string(GetLastError()) +
               ")";
    const std::vector<std::string> uncaught = PatchDesktop(session_, module_, patches_);
    PatchAutomation(session_, module_, patches_);
    PatchPluginHeap(module_, patches_);
    if (!uncaught.empty()) return "the plug-in " + uncaught.front();
    if (FindEntry<InitializeEntry>(module_, "user_initialize") == nullptr ||
        FindEntry<TerminateEntry>(module_, "user_terminate") == nullptr)
        return "the plug-in lacks user_initialize or user_terminate";
    return {};
}

int Plugin::Initialize(const std::string& version, std::wstring& message) {
    std::string host = "hostsim";
    std::string release = version;
    std::string build = "1";
    std::array<char*, 2> arguments = {host.data(), nullptr};
    std::array<wchar_t, 80> text = {};
    int status = -1;
    try {
        status = CallPlugin(session_.report, FindEntry<InitializeEntry>(module_, "user_initialize"), 1,
                            arguments.data(), release.data(), build.data(), text.data());
    } catch (...) {
        session_.report.Violation("an exception crossed user_initialize");
    }
    text.back() = L'\0';
    message = text.data();
    return status;
}

void Plugin::Terminate() {
    try {
        CallPlugin(session_.report, FindEntry<TerminateEntry>(module_, "user_terminate"));
    } catch (...) {
        session_.report.Violation("an exception crossed user_terminate");
    }
}

void Plugin::Unload() {
    if (module_ == nullptr) return;
    Restore(patches_);
    FreeLibrary(module_);
    module_ = nullptr;
    FreePluginThreadSlots();
    ForgetDesktopTimers();
    HealWindowsCalls();
    FailPluginAllocation(0);
}

}  // namespace sim
