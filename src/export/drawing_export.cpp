// A drawing exported to a format.

#include "export/drawing_export.h"

#include <ProUtil.h>

#include "base/status.h"
#include "base/text.h"

namespace kv {

static constexpr wchar_t kVersionOption[] = L"dwg_export_format";
static constexpr wchar_t kVersion[] = L"2000";

static void SheetFileExport(const DrawingTask& task, const DrawingFormat& format, WriterRun& run,
                            ExportFolder& folder, const std::wstring& name, int sheet, RunRecord& record);
static ProError SheetWrite(const SheetFile& file);

bool GoesBySheet(const DrawingTask& task, const DrawingSettings& settings) {
    return task.sheets > 1 && !settings.oneFile;
}

void ExportDrawing(const DrawingTask& task, const DrawingFormat& format, WriterRun& run, ExportFolder& folder,
                   RunRecord& record) {
    const auto nameOf = [&task](int sheet) { return task.fileNames[static_cast<std::size_t>(sheet - 1)]; };
    if (!format.ofSheets || !GoesBySheet(task, run.settings)) {
        SheetFileExport(task, format, run, folder, nameOf(task.currentSheet), kAllSheets, record);
        return;
    }
    for (int sheet = 1; sheet <= task.sheets; ++sheet) {
        const std::wstring name = nameOf(sheet) + L"-" + std::to_wstring(sheet);
        SheetFileExport(task, format, run, folder, name, sheet, record);
    }
}

void DwgVersionChoose() {
    ProPath value = {};
    if (!Failed(ProConfigoptionGet(HostText(kVersionOption), value))) return;
    // Without it the host takes its own version: the export is still worth having.
    (void)ProConfigoptSet(HostText(kVersionOption), HostText(kVersion));
}

static void SheetFileExport(const DrawingTask& task, const DrawingFormat& format, WriterRun& run,
                            ExportFolder& folder, const std::wstring& name, int sheet, RunRecord& record) {
    RunEntry entry = {task.name, format.step, PRO_TK_NO_ERROR};
    const OutputFile file = {name, format.extension, !format.ofSheets};
    ScratchFile scratch;
    entry.status = OutputBegin(folder, file, scratch, entry);
    if (!Failed(entry.status)) entry.status = SheetWrite({task, format, sheet, scratch, run});
    if (!Failed(entry.status)) entry.status = OutputDeliver(folder, file, scratch, entry);
    record.push_back(std::move(entry));
}

static ProError SheetWrite(const SheetFile& file) {
    const DrawingTask& task = file.task;
    if (file.format.needsWindow && Failed(task.displayed)) return task.displayed;
    // A file must never hold another sheet than its name says.
    ProError status = PRO_TK_NO_ERROR;
    if (file.sheet != kAllSheets) status = ProDrawingCurrentSheetSet(task.drawing, file.sheet);
    return Failed(status) ? status : file.format.write(file);
}

}  // namespace kv
