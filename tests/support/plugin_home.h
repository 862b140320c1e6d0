// The plug-in home that tests may write to: a private copy of the staged one, its settings fresh for every
// test.

#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace test {

// The copy that every SimHost of the process loads unless told otherwise.
const std::filesystem::path& PluginHome();

// Path of a settings file, e.g. L"KvConfig.ini".
std::filesystem::path SettingsFile(std::wstring_view name);

// Puts KVconfig back as it ships and removes files that were added.
void RestoreSettings();

enum class IniEncoding { kUtf16, kAnsi936 };

// Replaces a settings file by `text`.
void WriteSettings(std::wstring_view name, std::wstring_view text,
                   IniEncoding encoding = IniEncoding::kUtf16);

// One value by the profile call of Windows; empty when it is not there.
std::wstring ReadSettings(std::wstring_view name, std::wstring_view section, std::wstring_view key);

// Whole files as bytes.
std::string ReadBytes(const std::filesystem::path& file);
void WriteBytes(const std::filesystem::path& file, std::string_view bytes);

// A second, complete home in a folder of the caller's choice (for tests that damage the text tree).
void CopyPluginHome(const std::filesystem::path& target);

}  // namespace test
