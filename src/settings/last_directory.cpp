// The last working directory, in a file of its own.
//
// korvane.ini is no INI file: it holds the directory's text in code page 936 and nothing else. The code
// page is the same on every machine, so that a folder set up on one is understood on another.

#include "settings/last_directory.h"

#include <clocale>
#include <string>

#include <ProUtil.h>

#include "base/file.h"
#include "base/scope_exit.h"
#include "base/status.h"
#include "base/text.h"
#include "settings/settings_store.h"

namespace kv {

static constexpr wchar_t kDirectoryFile[] = L"KVconfig\\korvane.ini";
// A character takes at most two bytes in this code page.
static constexpr std::size_t kLongestFile = std::size_t{2} * PRO_PATH_SIZE;

// The locale belongs to the whole process, so the guard puts back what was set before.
static auto UseCharacterLocale(const char* locale) {
    const char* current = std::setlocale(LC_CTYPE, nullptr);
    const std::string previous = current == nullptr ? "C" : current;
    std::setlocale(LC_CTYPE, locale);
    return ScopeExit([previous] { std::setlocale(LC_CTYPE, previous.c_str()); });
}

void RestoreLastDirectory() {
    const std::wstring wanted = SettingRead(SettingsPath(kCommonSettings), L"SetLastDir", kValueKey);
    if (WithoutBlanks(wanted) != kSettingOn) return;

    std::string bytes;
    std::wstring text;
    ProPath directory = {};
    ProError status = FileRead(SettingsPath(kDirectoryFile), kLongestFile, bytes);
    if (!Failed(status)) status = DecodeText(bytes, CodePage::Chinese, text);
    if (!Failed(status)) status = CopyText(text, directory);
    if (Failed(status) || text.empty()) return;
    // A directory that is gone is refused by the host, which then stays where it is.
    ProDirectoryChange(directory);
}

void SaveLastDirectory() {
    ProPath directory = {};
    if (Failed(ProDirectoryCurrentGet(directory))) return;
    const std::wstring path = SettingsPath(kDirectoryFile);
    if (path.empty()) return;

    // The text is encoded by the code page's number below: a machine without this locale loses nothing.
    const auto locale = UseCharacterLocale("chs");
    std::string bytes;
    // Better no directory than one with substitutes in its name, which might lead somewhere else.
    if (Failed(EncodeText(directory, CodePage::Chinese, bytes))) bytes.clear();
    (void)FileWrite(path, bytes);
}

}  // namespace kv
