// What a run leaves in the user's application data: reports, and whatever else has to outlive a command.
//
// Each file is a table of its own in a folder of "Korvane" in the local application data, UTF-8 with
// byte-order mark, and is named after its command, the time and the process:
// "KvParams_20260102-030405-678_4711.csv".
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <ProToolkit.h>

namespace kv {

// The folder of reports, for the functions below.
inline constexpr wchar_t kReportFolder[] = L"reports";

// The folder of relations as they were before a run.
inline constexpr wchar_t kRelationFolder[] = L"relations";

// Path of such a folder, with a backslash at its end; it is made when it is missing. PRO_TK_INVALID_DIR.
[[nodiscard]] ProError RunFolderGet(const wchar_t* folder, std::wstring& path);

// Paths of a command's files in such a folder, the newest first.
std::vector<std::wstring> RunFilesNewestFirst(const wchar_t* folder, const char* command);

// Which of the names in a folder may go: those made like the names of run files, but for the `kept` newest.
std::vector<std::wstring> RunFilesToDelete(std::vector<std::wstring> names, std::size_t kept);

// Path of the newest file of a command in such a folder; empty when there is none.
std::wstring NewestRunFile(const wchar_t* folder, const char* command);

// Owns a file that is written row by row, so that it is whole however the process ends.
class RunFile {
public:
    RunFile() = default;
    RunFile(const RunFile&) = delete;
    RunFile& operator=(const RunFile&) = delete;
    ~RunFile();

    // Begins a new file and deletes older ones of the folder beyond the newest hundred.
    // PRO_TK_INVALID_DIR, PRO_TK_CANT_WRITE.
    [[nodiscard]] ProError Create(const wchar_t* folder, const char* command);

    // Adds a row. PRO_TK_CANT_WRITE, also for a file that was never made.
    [[nodiscard]] ProError RowWrite(std::span<const std::wstring> cells);

    // Adds a row whose last cell is filled later: it keeps `width` characters free for it behind `cells`.
    [[nodiscard]] ProError RowReserve(std::span<const std::wstring> cells, std::size_t width);
    // Fills it; a longer text is left out, and so is one with characters outside ASCII. PRO_TK_CANT_WRITE.
    [[nodiscard]] ProError ReservedWrite(const std::wstring& text);

    // Sees to it that what was written so far outlives the machine's fall. PRO_TK_CANT_WRITE.
    [[nodiscard]] ProError Flush();

    // Full path; empty when there is no file.
    const std::wstring& Path() const { return path_; }

private:
    [[nodiscard]] ProError BytesWrite(std::string_view bytes);

    std::wstring path_;
    void* file_ = nullptr;
    long long reservedAt_ = 0;
    std::size_t reservedWidth_ = 0;
};

}  // namespace kv
