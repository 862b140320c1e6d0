#include "simulator/toolkit/support/export_call.h"

#include <cwctype>

#include "simulator/report/utf8.h"

namespace sim {

bool IsWholePath(Session& host, std::wstring_view path) {
    const bool hasDrive = path.size() > 3 && std::iswalpha(path[0]) != 0 && path[1] == L':' &&
                          (path[2] == L'\\' || path[2] == L'/');
    if (hasDrive || path.starts_with(L"\\\\")) return true;
    host.report.Violation("is given \"" + Utf8(path) + "\", which is no whole path");
    return false;
}

namespace {

// "pump_out.log" for "pump.stp". That it cannot be written is nobody's concern.
void LeaveLog(Session& host, const std::filesystem::path& file) {
    const std::filesystem::path log = file.parent_path() / (file.stem().wstring() + L"_out.log");
    (void)host.disk.Write(log, "written\n");
}

}  // namespace

ProError WriteExport(Session& host, const std::filesystem::path& file, std::string_view bytes,
                     ProError noFolder) {
    switch (host.disk.Write(file, bytes)) {
        case WriteResult::kWritten:
            if (host.strict.exportsLeaveLog) LeaveLog(host, file);
            return PRO_TK_NO_ERROR;
        case WriteResult::kNoFolder:
            return noFolder;
        case WriteResult::kRefused:
            return PRO_TK_CANT_WRITE;
        case WriteResult::kDiskFull:
            break;
    }
    return PRO_TK_GENERAL_ERROR;
}

ExportedSheet SheetOf(const SimModel& drawing, int sheet, std::string_view space) {
    return {sheet, drawing.Sheets()[static_cast<std::size_t>(sheet) - 1].size, std::string(space)};
}

}  // namespace sim
