// The folder that exports go to.

#include "export/export_folder.h"

#include <ProSizeConst.h>

#include "base/file.h"
#include "base/status.h"
#include "base/text.h"

namespace kv {

// Calls that take a path need not be able to take every name in it.
static constexpr wchar_t kPlainName[] = L"temp";

static bool IsNamed(std::wstring_view found, std::wstring_view name, std::wstring_view extension);

ExportFolder::ExportFolder(const std::wstring& folder) : path(WithBackslash(folder)), scratch(path) {}

ProError OutputBegin(ExportFolder& folder, const OutputFile& file, ScratchFile& scratch, RunEntry& entry) {
    entry.file = file.name + file.extension;
    if (folder.path.size() + entry.file.size() >= PRO_PATH_SIZE) return PRO_TK_LINE_TOO_LONG;
    if (folder.delivered.contains(UpperCase(entry.file))) {
        entry.step = kStepFileName;
        return PRO_TK_E_FOUND;
    }
    folder.scratch.Clear();
    scratch = {folder.scratch.Path(), file.nameInside ? file.name : kPlainName};
    return folder.scratch.Status();
}

ProError OutputDeliver(ExportFolder& folder, const OutputFile& file, const ScratchFile& scratch,
                       RunEntry& entry) {
    const std::wstring target = folder.path + entry.file;
    entry.replaced = FileExists(target);
    ProError status = PRO_TK_CANT_WRITE;
    for (const std::wstring& found : folder.scratch.Files()) {
        const bool isIt = IsNamed(found, scratch.name, file.extension);
        // What comes along with a file has a name of its own; beside a plain name it is a log at most.
        if (!isIt && !file.nameInside) continue;
        // A file of this run is worth more than what comes along with another one.
        if (!isIt && folder.delivered.contains(UpperCase(found))) continue;
        const ProError moved = FileMove(scratch.folder + found, isIt ? target : folder.path + found);
        if (isIt || Failed(moved)) status = moved;
        if (Failed(moved)) return status;
    }
    if (!Failed(status)) folder.delivered.insert(UpperCase(entry.file));
    return status;
}

// Whether a file has this name, with its extension as often as host and caller may have added it.
static bool IsNamed(std::wstring_view found, std::wstring_view name, std::wstring_view extension) {
    std::wstring rest = UpperCase(found);
    const std::wstring start = UpperCase(name);
    const std::wstring ending = UpperCase(extension);
    if (!rest.starts_with(start)) return false;
    rest.erase(0, start.size());
    while (rest.starts_with(ending)) rest.erase(0, ending.size());
    return rest.empty();
}

}  // namespace kv
