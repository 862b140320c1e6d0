// The disk that exports are written to. A test can let it fail.

#pragma once

#include <filesystem>
#include <optional>
#include <string_view>
#include <vector>

namespace sim {

enum class WriteResult {
    kWritten,
    kNoFolder,  // the folder does not exist, or is a file
    kRefused,   // read-only, locked by somebody, or the name is a folder's
    kDiskFull   // a part was written and is still there
};

class Disk {
public:
    // After so many more bytes the disk is full; nothing: never.
    std::optional<long long> bytesLeft;
    // Folders in which the host may write no file.
    std::vector<std::filesystem::path> readOnlyFolders;

    // Writes straight into the file, as the host does: what was there before is gone from the first byte on.
    WriteResult Write(const std::filesystem::path& file, std::string_view bytes);
};

}  // namespace sim
