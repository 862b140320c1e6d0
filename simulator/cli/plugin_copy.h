// A copy of the plug-in for one run, with other settings than its own.

#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace sim::cli {

// The plug-in's home in a temporary folder; it goes with the object.
class PluginCopy {
public:
    explicit PluginCopy(const std::filesystem::path& home);
    ~PluginCopy();
    PluginCopy(const PluginCopy&) = delete;
    PluginCopy& operator=(const PluginCopy&) = delete;

    const std::filesystem::path& Home() const { return home_; }
    // "SECTION=VALUE" or "SECTION.KEY=VALUE" of KvConfig.ini; without a key it is "value". BadInput: another
    // form, or the file has no such section.
    void Set(const std::string& setting) const;

private:
    std::filesystem::path home_;
};

// A value of the KvConfig.ini below a plug-in's home; empty: none.
std::wstring PluginSetting(const std::filesystem::path& home, const std::wstring& section);
std::filesystem::path PluginSettingsFile(const std::filesystem::path& home);

}  // namespace sim::cli
