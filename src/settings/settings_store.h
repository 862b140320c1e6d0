// Settings that outlive a command: INI files in the folder KVconfig beside the plug-in.
//
// Each setting is a section of its own with one key.
#pragma once

#include <string>
#include <string_view>

namespace kv {

// The file of the common settings, for SettingsPath.
inline constexpr wchar_t kCommonSettings[] = L"KVconfig\\KvConfig.ini";

// The keys: of choices and ticks, of templates, and of texts in the files of single commands.
inline constexpr wchar_t kValueKey[] = L"value";
inline constexpr wchar_t kPathKey[] = L"path";
inline constexpr wchar_t kContentKey[] = L"content";

// What a tick, or a choice between yes and no, is stored as.
inline constexpr wchar_t kSettingOn[] = L"1";
inline constexpr wchar_t kSettingOff[] = L"0";

// Full path of a file of the plug-in's home, found through the loaded module, such as
// "KVconfig\KvConfig.ini". Empty, which reads as a missing file, when the module goes by another name or
// the path gets too long.
std::wstring SettingsPath(std::wstring_view relativeName);

// The same found through the text directory that the host knows; `relativeName` begins with a backslash.
std::wstring TextDirSettingsPath(std::wstring_view relativeName);

// A longer value would be cut when it is read again.
inline constexpr std::size_t kLongestSetting = 254;

// A setting as it is stored, cut at 254 characters; empty when file, section or key is missing, and for a
// file in an encoding that Windows does not read, which the user is told. The caller strips blanks where they
// do not count.
std::wstring SettingRead(const std::wstring& path, const wchar_t* section, const wchar_t* key);

// Stores a setting. A file that cannot be written loses the change without a word; one that cannot be read is
// left alone. A new file is made Unicode, so that it keeps every language's text; the folder is never made.
void SettingWrite(const std::wstring& path, const wchar_t* section, const wchar_t* key,
                  const std::wstring& value);

}  // namespace kv
