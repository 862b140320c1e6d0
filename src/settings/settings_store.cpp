// INI files on the Windows profile calls.

#include "settings/settings_store.h"

#include <ProUtil.h>

#include <windows.h>

#include "base/file.h"
#include "base/status.h"
#include "settings/settings_file.h"

namespace kv {

static constexpr wchar_t kModule[] = L"korvane5.1C9.dll";
static constexpr char kUnicodeMark[] = "\xFF\xFE";
static constexpr DWORD kValueSize = kLongestSetting + 1;

static std::wstring FittingPath(const std::wstring& path);

std::wstring SettingsPath(std::wstring_view relativeName) {
    // Without a module of this name the handle would stand for the host's own executable.
    const HMODULE module = GetModuleHandleW(kModule);
    if (module == nullptr) return {};
    wchar_t modulePath[MAX_PATH] = {};
    const DWORD length = GetModuleFileNameW(module, modulePath, MAX_PATH);
    if (length >= MAX_PATH) return {};

    std::wstring path = modulePath;
    const std::size_t name = path.rfind(kModule);
    if (name == std::wstring::npos) return {};
    return FittingPath(path.replace(name, std::size(kModule) - 1, relativeName));
}

std::wstring TextDirSettingsPath(std::wstring_view relativeName) {
    ProPath folder = {};
    if (Failed(ProToolkitApplTextPathGet(folder))) return {};
    return FittingPath(std::wstring(folder).append(relativeName));
}

std::wstring SettingRead(const std::wstring& path, const wchar_t* section, const wchar_t* key) {
    // The profile calls take an empty path for a file of Windows itself.
    if (path.empty() || !SettingsFileIsSound(path)) return {};
    wchar_t value[kValueSize] = {};
    GetPrivateProfileStringW(section, key, L"", value, kValueSize, path.c_str());
    return value;
}

void SettingWrite(const std::wstring& path, const wchar_t* section, const wchar_t* key,
                  const std::wstring& value) {
    // What is in a file that cannot be read would suffer from a further line.
    if (path.empty() || !SettingsFileIsSound(path)) return;
    // The profile calls keep an existing file's encoding, but would start a new one in the ANSI code page.
    if (!FileExists(path)) (void)FileNewWrite(path, kUnicodeMark);
    WritePrivateProfileStringW(section, key, value.c_str(), path.c_str());
    SettingsFileWritten(path);
}

// A path that the Windows calls cannot take counts as no path at all.
static std::wstring FittingPath(const std::wstring& path) {
    return path.size() < MAX_PATH ? path : std::wstring();
}

}  // namespace kv
