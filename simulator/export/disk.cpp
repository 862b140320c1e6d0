#include "simulator/export/disk.h"

#include <algorithm>
#include <system_error>

#include <windows.h>

namespace sim {

namespace fs = std::filesystem;

namespace {

bool IsSameFolder(const fs::path& one, const fs::path& other) {
    std::error_code error;
    return fs::equivalent(one, other, error) && !error;
}

bool WriteBytes(const fs::path& file, std::string_view bytes) {
    const HANDLE handle = CreateFileW(file.c_str(), GENERIC_WRITE, FILE_SHARE_READ, nullptr, CREATE_ALWAYS,
                                      FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE) return false;
    DWORD written = 0;
    const BOOL isDone = WriteFile(handle, bytes.data(), static_cast<DWORD>(bytes.size()), &written, nullptr);
    CloseHandle(handle);
    return isDone != 0 && written == bytes.size();
}

}  // namespace

WriteResult Disk::Write(const fs::path& file, std::string_view bytes) {
    std::error_code error;
    const fs::path folder = file.parent_path();
    if (!fs::is_directory(folder, error)) return WriteResult::kNoFolder;
    const bool isReadOnly = std::ranges::any_of(
        readOnlyFolders, [&folder](const fs::path& locked) { return IsSameFolder(locked, folder); });
    if (isReadOnly) return WriteResult::kRefused;
    const auto size = static_cast<long long>(bytes.size());
    const long long fits = std::clamp(bytesLeft.value_or(size), 0LL, size);
    if (!WriteBytes(file, bytes.substr(0, static_cast<std::size_t>(fits)))) return WriteResult::kRefused;
    if (bytesLeft) *bytesLeft -= fits;
    return fits == size ? WriteResult::kWritten : WriteResult::kDiskFull;
}

}  // namespace sim
