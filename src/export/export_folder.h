// The folder that exports go to.
#pragma once

#include <functional>
#include <string>

#include "base/scratch_folder.h"
#include "model/run_record.h"

namespace kv {

// Files are written in the scratch folder and then take their place in the folder itself, so that an earlier
// file stays whole until its replacement is complete.
struct ExportFolder {
    explicit ExportFolder(const std::wstring& folder);

    std::wstring path;  // with a backslash at the end
    ScratchFolder scratch;
};

struct OutputFile {
    std::wstring name;  // without extension
    const wchar_t* extension;
    // The file keeps its own name inside, or belongs to others that do: it has to be written under it.
    bool nameInside;
};

// Writes a file of this name, with or without its extension, into `folder`, which ends with a backslash.
using OutputWriter = std::function<ProError(const std::wstring& folder, const std::wstring& name)>;

// Has a file written and moves it to its place, whatever extension the host gave it.
//
// entry   gets the file's name, whether it replaced another one, and the status
// Errors  PRO_TK_LINE_TOO_LONG for a path that is too long, PRO_TK_CANT_WRITE for a file that is not there or
//         cannot take its place, else those of the scratch folder and of `write`
void WriteOutput(ExportFolder& folder, const OutputFile& file, const OutputWriter& write, RunEntry& entry);

}  // namespace kv
