#include "support/plugin_home.h"

#include <array>
#include <fstream>
#include <iterator>
#include <map>

#include <windows.h>

#include "simulator/host/sim_host.h"

namespace test {

namespace fs = std::filesystem;

namespace {

// Where the build staged the plug-in, before SetDefaultPluginHome hides it.
fs::path StagedHome() {
    std::array<wchar_t, 32768> program = {};
    GetModuleFileNameW(nullptr, program.data(), static_cast<DWORD>(program.size()));
    return fs::path(program.data()).parent_path().parent_path() / "korvane";
}

// Lives as long as the process and takes the copy with it.
struct PrivateHome {
    PrivateHome()
        : path(fs::temp_directory_path() / (L"korvane-home-" + std::to_wstring(GetCurrentProcessId()))) {
        std::error_code error;
        fs::remove_all(path, error);
        CopyPluginHome(path);
    }
    ~PrivateHome() {
        std::error_code error;
        fs::remove_all(path, error);
    }
    fs::path path;
};

// The files of a folder with all that changes when somebody writes to one.
using Listing = std::map<std::wstring, std::array<unsigned long long, 3>>;

Listing List(const fs::path& folder) {
    Listing files;
    WIN32_FIND_DATAW entry = {};
    const HANDLE search = FindFirstFileW((folder / "*").c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) return files;
    do {
        const auto joined = [](DWORD high, DWORD low) {
            return (static_cast<unsigned long long>(high) << 32U) | low;
        };
        const std::wstring name = entry.cFileName;
        if (name == L"." || name == L"..") continue;
        files[name] = {entry.dwFileAttributes, joined(entry.nFileSizeHigh, entry.nFileSizeLow),
                       joined(entry.ftLastWriteTime.dwHighDateTime, entry.ftLastWriteTime.dwLowDateTime)};
    } while (FindNextFileW(search, &entry));
    FindClose(search);
    return files;
}

}  // namespace

void CopyPluginHome(const fs::path& target) {
    fs::create_directories(target);
    fs::copy(StagedHome(), target, fs::copy_options::recursive | fs::copy_options::overwrite_existing);
}

const fs::path& PluginHome() {
    static const PrivateHome home;
    return home.path;
}

fs::path SettingsFile(std::wstring_view name) {
    return PluginHome() / "KVconfig" / name;
}

void RestoreSettings() {
    static Listing asRestored;
    static const fs::path staged = StagedHome() / "KVconfig";
    const fs::path settings = PluginHome() / "KVconfig";
    Listing found = List(settings);
    if (!asRestored.empty() && found == asRestored) return;

    for (const auto& [name, stamp] : found) {
        const auto before = asRestored.find(name);
        if (before != asRestored.end() && before->second == stamp) continue;
        SetFileAttributesW((settings / name).c_str(), FILE_ATTRIBUTE_NORMAL);
        std::error_code error;
        fs::remove_all(settings / name, error);
    }
    fs::create_directories(settings);
    found = List(settings);
    for (const auto& [name, stamp] : List(staged))
        if (!found.contains(name)) fs::copy(staged / name, settings / name, fs::copy_options::recursive);
    asRestored = List(settings);
}

void WriteSettings(std::wstring_view name, std::wstring_view text, IniEncoding encoding) {
    std::string bytes;
    if (encoding == IniEncoding::kUtf16) {
        bytes = "\xFF\xFE";
        bytes.append(reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t));
    } else {
        const int length = static_cast<int>(text.size());
        bytes.resize(static_cast<std::size_t>(
            WideCharToMultiByte(936, 0, text.data(), length, nullptr, 0, nullptr, nullptr)));
        WideCharToMultiByte(936, 0, text.data(), length, bytes.data(), static_cast<int>(bytes.size()),
                            nullptr, nullptr);
    }
    WriteBytes(SettingsFile(name), bytes);
}

std::wstring ReadSettings(std::wstring_view name, std::wstring_view section, std::wstring_view key) {
    std::array<wchar_t, 4096> value = {};
    GetPrivateProfileStringW(std::wstring(section).c_str(), std::wstring(key).c_str(), L"", value.data(),
                             static_cast<DWORD>(value.size()), SettingsFile(name).c_str());
    return value.data();
}

std::string ReadBytes(const fs::path& file) {
    std::ifstream stream(file, std::ios::binary);
    return {std::istreambuf_iterator<char>(stream), {}};
}

void WriteBytes(const fs::path& file, std::string_view bytes) {
    std::ofstream stream(file, std::ios::binary | std::ios::trunc);
    stream.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
}

}  // namespace test
