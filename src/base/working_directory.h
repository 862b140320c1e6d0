// The host's working directory, changed for a while.
#pragma once

#include <string>

#include <ProUtil.h>

#include "base/scope_exit.h"
#include "base/status.h"
#include "base/text.h"

namespace kv {

// Moves the host to `folder` until the guard dies. Some exports can only land in the working directory.
//
// status  PRO_TK_LINE_TOO_LONG for a path that the host cannot take, else the errors of reading and changing
//         the directory; it is then the same as before
[[nodiscard]] inline auto UseWorkingDirectory(const std::wstring& folder, ProError& status) {
    struct Previous {
        ProPath path = {};
        bool changed = false;
    } previous;
    ProPath target;
    status = CopyText(folder, target);
    if (!Failed(status)) status = ProDirectoryCurrentGet(previous.path);
    if (!Failed(status)) status = ProDirectoryChange(target);
    previous.changed = !Failed(status);
    return ScopeExit([previous]() mutable {
        if (previous.changed) ProDirectoryChange(previous.path);
    });
}

}  // namespace kv
