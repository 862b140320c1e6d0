#include "simulator/cli/plugin_copy.h"

#include <array>
#include <system_error>

#include <windows.h>

#include "simulator/cli/actions.h"
#include "simulator/report/utf8.h"

namespace sim::cli {

namespace fs = std::filesystem;

namespace {

constexpr wchar_t kUsualKey[] = L"value";

bool HasSection(const fs::path& file, const std::wstring& section) {
    std::array<wchar_t, 1024> lines = {};
    const auto size = static_cast<DWORD>(lines.size());
    return GetPrivateProfileSectionW(section.c_str(), lines.data(), size, file.c_str()) != 0;
}

}  // namespace

fs::path PluginSettingsFile(const fs::path& home) {
    return home / "KVconfig" / "KvConfig.ini";
}

std::wstring PluginSetting(const fs::path& home, const std::wstring& section) {
    // The profile calls look into the Windows folder for a file that is not named by its whole path.
    const fs::path file = fs::absolute(PluginSettingsFile(home));
    std::array<wchar_t, 1024> value = {};
    GetPrivateProfileStringW(section.c_str(), kUsualKey, L"", value.data(), static_cast<DWORD>(value.size()),
                             file.c_str());
    return value.data();
}

PluginCopy::PluginCopy(const fs::path& home)
    : home_(fs::temp_directory_path() / (L"hostsim-plugin-" + std::to_wstring(GetCurrentProcessId()))) {
    std::error_code error;
    fs::remove_all(home_, error);
    fs::copy(home, home_, fs::copy_options::recursive, error);
    if (error) throw BadInput("cannot copy the plug-in to " + Utf8(home_.wstring()));
}

PluginCopy::~PluginCopy() {
    std::error_code error;
    fs::remove_all(home_, error);
}

void PluginCopy::Set(const std::string& setting) const {
    const std::wstring text = Wide(setting);
    const std::size_t equals = text.find(L'=');
    if (equals == std::wstring::npos || equals == 0)
        throw BadInput("expected --setting SECTION=VALUE or SECTION.KEY=VALUE, not \"" + setting + "\"");
    std::wstring section = text.substr(0, equals);
    std::wstring key = kUsualKey;
    if (const std::size_t dot = section.find(L'.'); dot != std::wstring::npos) {
        key = section.substr(dot + 1);
        section.resize(dot);
    }
    const fs::path file = PluginSettingsFile(home_);
    if (!HasSection(file, section)) throw BadInput("KvConfig.ini has no section [" + Utf8(section) + "]");
    if (WritePrivateProfileStringW(section.c_str(), key.c_str(), text.c_str() + equals + 1, file.c_str()) ==
        0)
        throw BadInput("cannot write " + Utf8(file.wstring()));
}

}  // namespace sim::cli
