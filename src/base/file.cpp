// Whole files on the Windows file calls.

#include "base/file.h"

#include <windows.h>

#include "base/scope_exit.h"

namespace kv {

static ProError WriteWith(DWORD creation, const std::wstring& path, std::string_view content);

ProError NewFileWrite(const std::wstring& path, std::string_view content) {
    return WriteWith(CREATE_NEW, path, content);
}

ProError FileWrite(const std::wstring& path, std::string_view content) {
    return WriteWith(CREATE_ALWAYS, path, content);
}

ProError FileRead(const std::wstring& path, std::size_t limit, std::string& content) {
    const HANDLE file = CreateFileW(path.c_str(), GENERIC_READ, FILE_SHARE_READ, nullptr, OPEN_EXISTING,
                                    FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE) return PRO_TK_CANT_OPEN;
    const ScopeExit close([file] { CloseHandle(file); });

    // One byte more than allowed tells a longer file from one that just fits.
    content.resize(limit + 1);
    DWORD read = 0;
    const BOOL done = ReadFile(file, content.data(), static_cast<DWORD>(content.size()), &read, nullptr);
    content.resize(done ? read : 0);
    if (!done) return PRO_TK_CANT_OPEN;
    return read > limit ? PRO_TK_LINE_TOO_LONG : PRO_TK_NO_ERROR;
}

static ProError WriteWith(DWORD creation, const std::wstring& path, std::string_view content) {
    const HANDLE file =
        CreateFileW(path.c_str(), GENERIC_WRITE, 0, nullptr, creation, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return GetLastError() == ERROR_FILE_EXISTS ? PRO_TK_E_FOUND : PRO_TK_CANT_WRITE;
    const ScopeExit close([file] { CloseHandle(file); });

    DWORD written = 0;
    const BOOL done = WriteFile(file, content.data(), static_cast<DWORD>(content.size()), &written, nullptr);
    return done && written == content.size() ? PRO_TK_NO_ERROR : PRO_TK_CANT_WRITE;
}

}  // namespace kv
