// The plug-in as the host holds it: loaded, patched, started, stopped.

#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include <windows.h>

#include "simulator/windows/import_table.h"

namespace sim {

// File name of the plug-in's module; the plug-in finds itself by it.
inline constexpr wchar_t kPluginFile[] = L"korvane5.1C9.dll";

class Session;

class Plugin {
public:
    explicit Plugin(Session& session) : session_(session) {}
    ~Plugin();
    Plugin(const Plugin&) = delete;
    Plugin& operator=(const Plugin&) = delete;

    // Loads `<home>/korvane5.1C9.dll` and redirects its imports. Empty: loaded; else what is wrong, in one
    // line.
    std::string Load(const std::filesystem::path& home);
    // The entry points. A non-zero answer of user_initialize is a failed start; `message` gets the plug-in's
    // text.
    int Initialize(const std::string& version, std::wstring& message);
    void Terminate();

    bool IsLoaded() const { return module_ != nullptr; }

private:
    void Unload();

    Session& session_;
    HMODULE module_ = nullptr;
    std::vector<ImportPatch> patches_;
};

}  // namespace sim
