// Scratch folders on the Windows file calls.

#include "base/scratch_folder.h"

#include <string_view>

#include <windows.h>

#include "base/file.h"
#include "base/scope_exit.h"
#include "base/status.h"

namespace kv {

static constexpr wchar_t kFolderStart[] = L"~kv";
// Folders of hosts that died or run at the same time are left alone.
static constexpr unsigned long kAttempts = 100;
// Windows keeps room for a short file name in the path of a folder.
static constexpr std::size_t kLongestFolder = MAX_PATH - 12;

static bool IsFolder(const WIN32_FIND_DATAW& entry) {
    return (entry.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

ScratchFolder::ScratchFolder(const std::wstring& parent) {
    const unsigned long first = GetCurrentProcessId();
    for (unsigned long attempt = 0; attempt < kAttempts; ++attempt) {
        const std::wstring folder = WithBackslash(parent) + kFolderStart + std::to_wstring(first + attempt);
        path_ = folder + L'\\';
        pattern_ = path_ + L'*';
        const bool fits = folder.size() < kLongestFolder;
        status_ = fits ? PRO_TK_NO_ERROR : PRO_TK_LINE_TOO_LONG;
        if (!fits || CreateDirectoryW(folder.c_str(), nullptr)) return;
        status_ = PRO_TK_CANT_WRITE;
        if (GetLastError() != ERROR_ALREADY_EXISTS) return;
    }
}

ScratchFolder::~ScratchFolder() {
    if (Failed(status_)) return;
    Clear();
    RemoveDirectoryW(path_.c_str());
}

std::vector<std::wstring> ScratchFolder::Files() const {
    return Failed(status_) ? std::vector<std::wstring>() : FileNamesIn(path_, L"*");
}

void ScratchFolder::Clear() noexcept {
    WIN32_FIND_DATAW entry = {};
    const HANDLE search = Failed(status_) ? INVALID_HANDLE_VALUE : FindFirstFileW(pattern_.c_str(), &entry);
    if (search == INVALID_HANDLE_VALUE) return;
    do {
        wchar_t file[MAX_PATH] = {};
        const std::size_t length = path_.size() + std::wstring_view(entry.cFileName).size();
        if (IsFolder(entry) || length >= MAX_PATH) continue;
        lstrcatW(lstrcatW(file, path_.c_str()), entry.cFileName);
        DeleteFileW(file);
    } while (FindNextFileW(search, &entry));
    FindClose(search);
}

}  // namespace kv
