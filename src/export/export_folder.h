// The folder that exports go to.
#pragma once

#include <string>
#include <unordered_set>

#include "base/scratch_folder.h"
#include "model/run_record.h"

namespace kv {

// Files are written in the scratch folder and then take their place in the folder itself, so that an earlier
// file stays whole until its replacement is complete.
struct ExportFolder {
    explicit ExportFolder(const std::wstring& folder);

    std::wstring path;  // with a backslash at the end
    ScratchFolder scratch;
    // Names of this run's files in upper case: none of them is ever replaced by another.
    std::unordered_set<std::wstring> delivered = {};
};

struct OutputFile {
    std::wstring name;  // without extension
    const wchar_t* extension;
    // The file keeps its own name inside, or belongs to others that do: it has to be written under it.
    bool nameInside;
};

// What a file is written as before it takes its place.
struct ScratchFile {
    std::wstring folder;  // with a backslash at the end
    std::wstring name;    // without extension; the host may add it by itself
};

// Makes ready for writing a file. What is left of an earlier one is cleared: it must not pass for a part of
// this one.
//
// entry   gets the file's name
// Errors  PRO_TK_E_FOUND for a name that this run has given to a file already, PRO_TK_LINE_TOO_LONG for a
// path
//         that is too long, else those of the scratch folder
[[nodiscard]] ProError OutputBegin(ExportFolder& folder, const OutputFile& file, ScratchFile& scratch,
                                   RunEntry& entry);

// Moves a file that has been written to its final place, whatever extension the host gave it.
//
// entry   learns whether it replaced another file
// Errors  PRO_TK_CANT_WRITE for a file that is not there or cannot take its place
[[nodiscard]] ProError OutputDeliver(ExportFolder& folder, const OutputFile& file, const ScratchFile& scratch,
                                     RunEntry& entry);

}  // namespace kv
