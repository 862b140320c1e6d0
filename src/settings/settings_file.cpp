// Encodings that the profile calls cannot read.

#include "settings/settings_file.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <functional>

#include <windows.h>

#include "base/file.h"
#include "base/host_callback.h"
#include "base/status.h"
#include "base/text.h"
#include "ui/message_box.h"

namespace kv {

static constexpr wchar_t kGarbled[] =
    L"设置文件的编码无法读取，其中的设置按空处理，也不会写入：\n\n%\n\n请将它另存为 UTF-16 LE 或 ANSI 编码。";
// No settings come near it.
static constexpr DWORD kLongestIniFile = DWORD{1} << 20;

// The state in which a file was last looked at; in fixed memory, for it outlives the command.
struct SeenFile {
    std::size_t path = 0;  // its hash
    DWORD size = 0;
    FILETIME written = {};
    bool isSound = true;
    unsigned toldIn = 0;  // number of the command, counted from 1
};
static std::array<SeenFile, 8> seenFiles;
static std::size_t nextSeenFile = 0;

static bool StateOf(const std::wstring& path, SeenFile& state);
static SeenFile& SeenOf(const SeenFile& state);
static bool IsTextInUtf8(std::string_view bytes);
static void TellOnce(const std::wstring& path, SeenFile& seen);

bool ProfileCallsGarble(std::string_view bytes) {
    if (bytes.starts_with("\xFF\xFE")) {
        for (std::size_t i = 2; i + 1 < bytes.size(); i += 2)
            if (bytes[i] == '\0' && bytes[i + 1] == '\0') return true;
        return false;
    }
    // The mark of UTF-8 hides the first section.
    if (bytes.starts_with("\xEF\xBB\xBF") || bytes.find('\0') != std::string_view::npos) return true;
    return GetACP() != CP_UTF8 && IsTextInUtf8(bytes);
}

bool SettingsFileIsSound(const std::wstring& path) {
    SeenFile now;
    if (!StateOf(path, now)) return true;
    SeenFile& seen = SeenOf(now);
    const bool isKnown =
        seen.path == now.path && seen.size == now.size && CompareFileTime(&seen.written, &now.written) == 0;
    if (!isKnown) {
        std::string bytes;
        const bool isRead = now.size <= kLongestIniFile && !Failed(FileRead(path, now.size, bytes));
        now.isSound = !isRead || !ProfileCallsGarble(bytes);
        seen = now;
    }
    if (!seen.isSound) TellOnce(path, seen);
    return seen.isSound;
}

void SettingsFileWritten(const std::wstring& path) {
    SeenFile now;
    if (StateOf(path, now)) SeenOf(now) = now;
}

// False when there is no such file.
static bool StateOf(const std::wstring& path, SeenFile& state) {
    WIN32_FILE_ATTRIBUTE_DATA data;
    if (!GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &data)) return false;
    state.path = std::hash<std::wstring_view>()(path);
    state.size = data.nFileSizeHigh == 0 ? data.nFileSizeLow : MAXDWORD;
    state.written = data.ftLastWriteTime;
    return true;
}

// The place of the file, or one for it.
static SeenFile& SeenOf(const SeenFile& state) {
    const auto found = std::ranges::find(seenFiles, state.path, &SeenFile::path);
    return found != seenFiles.end() ? *found : seenFiles[nextSeenFile++ % seenFiles.size()];
}

// With other than ASCII. On a machine whose own texts have two bytes a character, a short one of them may
// look like UTF-8 by chance: there it takes a character of three bytes, as every Chinese one has.
static bool IsTextInUtf8(std::string_view bytes) {
    CPINFO page = {};
    const bool isPaired = GetCPInfo(CP_ACP, &page) && page.MaxCharSize > 1;
    const unsigned char least = isPaired ? 0xE0 : 0x80;
    const bool hasOther =
        std::ranges::any_of(bytes, [least](char c) { return static_cast<unsigned char>(c) >= least; });
    std::wstring text;
    return hasOther && !Failed(DecodeText(bytes, CodePage::Utf8, text));
}

static void TellOnce(const std::wstring& path, SeenFile& seen) {
    if (seen.toldIn == commandsStarted + 1) return;
    seen.toldIn = commandsStarted + 1;
    std::wstring text = kGarbled;
    text.replace(text.find(L'%'), 1, path);
    ShowMessage(text.c_str());
}

}  // namespace kv
