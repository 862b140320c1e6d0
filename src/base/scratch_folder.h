// A folder for files that are not complete yet.
#pragma once

#include <string>
#include <vector>

#include <ProToolkit.h>

namespace kv {

// Owns a new folder inside another one. Being on the same volume, a file that is complete takes its place
// outside in one step. The folder goes with its owner, and what is left in it too.
class ScratchFolder {
public:
    // parent  path of an existing folder
    explicit ScratchFolder(const std::wstring& parent);
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;
    ~ScratchFolder();

    // PRO_TK_CANT_WRITE when the folder could not be made, PRO_TK_LINE_TOO_LONG for a path that does not fit.
    ProError Status() const { return status_; }
    // With a backslash at the end.
    const std::wstring& Path() const { return path_; }
    // Names of the files in it.
    std::vector<std::wstring> Files() const;
    // Deletes the files in it.
    void Clear() noexcept;

private:
    std::wstring path_;
    std::wstring pattern_;  // made before it is needed: clearing must not need memory
    ProError status_ = PRO_TK_CANT_WRITE;
};

}  // namespace kv
