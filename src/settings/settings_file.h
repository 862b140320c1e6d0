// Whether the profile calls of Windows read a settings file as its author wrote it.
#pragma once

#include <string>
#include <string_view>

namespace kv {

// Whether the profile calls garble a file of these bytes: UTF-8 with other than ASCII, UTF-16 without its
// mark, zero characters. They know UTF-16 with its mark and the machine's code page.
bool ProfileCallsGarble(std::string_view bytes);

// False for a file that they garble; the user is told so once in each command. A missing file is sound. The
// file is read when it has changed since the last time, not for each key.
bool SettingsFileIsSound(const std::wstring& path);

// The profile calls themselves have changed a sound file, so that it needs no second look.
void SettingsFileWritten(const std::wstring& path);

}  // namespace kv
