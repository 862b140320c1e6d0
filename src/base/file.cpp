// Whole files on the Windows file calls.

#include "base/file.h"

#include <algorithm>

#include <windows.h>

#include "base/scope_exit.h"
#include "base/status.h"
#include "base/text.h"

namespace kv {

static constexpr wchar_t kAsidePrefix[] = L"kv";

static DWORD OpenErrorOf(const std::wstring& path, DWORD access);

static ProError ContentWrite(DWORD creation, const std::wstring& path, std::string_view content);

ProError FileNewWrite(const std::wstring& path, std::string_view content) {
    return ContentWrite(CREATE_NEW, path, content);
}

ProError FileWrite(const std::wstring& path, std::string_view content) {
    return ContentWrite(CREATE_ALWAYS, path, content);
}

ProError FileReplace(const std::wstring& path, std::string_view content) {
    const std::wstring folder = path.substr(0, path.find_last_of(L"\\/") + 1);
    // From here on nothing is allocated that could leave the file behind.
    std::wstring scratch(MAX_PATH, L'\0');
    if (GetTempFileNameW(folder.c_str(), kAsidePrefix, 0, scratch.data()) == 0) return PRO_TK_CANT_WRITE;
    scratch.resize(scratch.find(L'\0'));
    ProError status = FileWrite(scratch, content);
    if (!Failed(status)) status = FileMove(scratch, path);
    if (Failed(status)) FileDelete(scratch);
    return status;
}

ProError FileRead(const std::wstring& path, std::size_t limit, std::string& content) {
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return PRO_TK_CANT_OPEN;
    const ScopeExit close([file] { CloseHandle(file); });

    LARGE_INTEGER size = {};
    const bool isSmall = GetFileSizeEx(file, &size) && static_cast<unsigned long long>(size.QuadPart) < limit;
    // One byte more than allowed tells a longer file from one that just fits.
    content.resize((isSmall ? static_cast<std::size_t>(size.QuadPart) : limit) + 1);
    DWORD read = 0;
    const BOOL done = ReadFile(file, content.data(), static_cast<DWORD>(content.size()), &read, nullptr);
    content.resize(done ? read : 0);
    if (!done) return PRO_TK_CANT_OPEN;
    return read > limit ? PRO_TK_LINE_TOO_LONG : PRO_TK_NO_ERROR;
}

bool FileExists(const std::wstring& path) {
    const DWORD attributes = GetFileAttributesW(path.c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

ProError FileMove(const std::wstring& from, const std::wstring& to) {
    const DWORD how = MOVEFILE_REPLACE_EXISTING | MOVEFILE_COPY_ALLOWED | MOVEFILE_WRITE_THROUGH;
    return MoveFileExW(from.c_str(), to.c_str(), how) ? PRO_TK_NO_ERROR : PRO_TK_CANT_WRITE;
}

ProError FolderMake(const std::wstring& path) {
    if (CreateDirectoryW(path.c_str(), nullptr)) return PRO_TK_NO_ERROR;
    const DWORD attributes = GetFileAttributesW(path.c_str());
    const bool isFolder =
        attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    return isFolder ? PRO_TK_NO_ERROR : PRO_TK_INVALID_DIR;
}

bool IsSamePath(std::wstring_view one, std::wstring_view other) {
    const auto plain = [](std::wstring_view path) {
        std::wstring text = UpperCase(path);
        std::ranges::replace(text, L'/', L'\\');
        while (text.ends_with(L'\\')) text.pop_back();
        return text;
    };
    return plain(one) == plain(other);
}

std::vector<std::wstring> FileNamesIn(const std::wstring& path, const wchar_t* pattern) {
    std::vector<std::wstring> names;
    WIN32_FIND_DATAW found = {};
    const HANDLE search = FindFirstFileW((path + pattern).c_str(), &found);
    if (search == INVALID_HANDLE_VALUE) return names;
    const ScopeExit close([search] { FindClose(search); });
    do {
        if ((found.dwFileAttributes & FILE_ATTRIBUTE_DIRECTORY) == 0) names.emplace_back(found.cFileName);
    } while (FindNextFileW(search, &found));
    return names;
}

std::wstring WithBackslash(std::wstring folder) {
    const bool ended = !folder.empty() && (folder.back() == L'\\' || folder.back() == L'/');
    if (!ended) folder += L'\\';
    return folder;
}

static ProError ContentWrite(DWORD creation, const std::wstring& path, std::string_view content) {
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, creation, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return GetLastError() == ERROR_FILE_EXISTS ? PRO_TK_E_FOUND : PRO_TK_CANT_WRITE;
    const ScopeExit close([file] { CloseHandle(file); });

    DWORD written = 0;
    const BOOL done = WriteFile(file, content.data(), static_cast<DWORD>(content.size()), &written, nullptr);
    return done && written == content.size() ? PRO_TK_NO_ERROR : PRO_TK_CANT_WRITE;
}

bool FileIsLocked(const std::wstring& path) {
    DWORD error = OpenErrorOf(path, GENERIC_ALL);
    // All access takes in the right to change owners, which not everyone has over a file that he may write.
    if (error == ERROR_ACCESS_DENIED) error = OpenErrorOf(path, GENERIC_READ | GENERIC_WRITE | DELETE);
    return error == ERROR_ACCESS_DENIED || error == ERROR_SHARING_VIOLATION;
}

static DWORD OpenErrorOf(const std::wstring& path, DWORD access) {
    const HANDLE file = CreateFileW(path.c_str(), access, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return GetLastError();
    CloseHandle(file);
    return ERROR_SUCCESS;
}

std::wstring FileSetAside(const std::wstring& path) {
    if (GetFileAttributesW(path.c_str()) == INVALID_FILE_ATTRIBUTES) return {};
    const std::wstring folder = path.substr(0, path.find_last_of(L"\\/") + 1);
    // Makes an empty file of a new name, which the move replaces.
    wchar_t aside[MAX_PATH] = {};
    if (GetTempFileNameW(folder.c_str(), kAsidePrefix, 0, aside) == 0) return {};
    if (MoveFileExW(path.c_str(), aside, MOVEFILE_REPLACE_EXISTING)) return aside;
    DeleteFileW(aside);
    return {};
}

void FileBringBack(const std::wstring& aside, const std::wstring& path) {
    if (!aside.empty()) MoveFileExW(aside.c_str(), path.c_str(), MOVEFILE_REPLACE_EXISTING);
}

void FileDelete(const std::wstring& path) {
    if (!path.empty()) DeleteFileW(path.c_str());
}

}  // namespace kv
