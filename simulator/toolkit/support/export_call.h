// What the export functions share: the paths they take and the files they write.

#pragma once

#include <filesystem>
#include <optional>
#include <string_view>

#include "simulator/export/export_file.h"
#include "simulator/session/session.h"

namespace sim {

// A whole path: with a drive or a share in front. A relative one is a violation.
bool IsWholePath(Session& host, std::wstring_view path);

// Writes the file; `noFolder` when its folder does not exist, CANT_WRITE when it is read-only or locked,
// GENERAL_ERROR when the disk is full, and then a part of the file is there.
ProError WriteExport(Session& host, const std::filesystem::path& file, std::string_view bytes,
                     ProError noFolder);

// The sheets of a drawing as a record lists them.
ExportedSheet SheetOf(const SimModel& drawing, int sheet, std::string_view space = {});

}  // namespace sim
