// A drawing exported to a format.

#include "export/drawing_export.h"

#include <string>
#include <utility>

#include <ProUtil.h>

#include "base/status.h"
#include "base/text.h"

namespace kv {

static constexpr wchar_t kVersionOption[] = L"dwg_export_format";
static constexpr wchar_t kVersion[] = L"2000";

static void ExportFile(SheetFile& file, const std::wstring& name, ExportFolder& folder, BatchRun& run);
static const std::wstring& NameOf(const DrawingTask& task, int sheet);
static ProError SheetWrite(const SheetFile& file);

bool GoesBySheet(const DrawingTask& task, const DrawingSettings& settings) {
    return task.sheets > 1 && !settings.oneFile;
}

void ExportDrawing(const DrawingTask& task, const DrawingFormat& format, WriterRun& writer,
                   ExportFolder& folder, BatchRun& run) {
    if (format.ofSheets && GoesBySheet(task, writer.settings)) {
        for (int sheet = 1; sheet <= task.sheets; ++sheet)
            ExportSheet(task, format, sheet, writer, folder, run);
        return;
    }
    SheetFile file = {task, format, kAllSheets, {}, writer};
    ExportFile(file, NameOf(task, task.currentSheet), folder, run);
}

void ExportSheet(const DrawingTask& task, const DrawingFormat& format, int sheet, WriterRun& writer,
                 ExportFolder& folder, BatchRun& run) {
    SheetFile file = {task, format, sheet, {}, writer};
    ExportFile(file, NameOf(task, sheet) + L"-" + std::to_wstring(sheet), folder, run);
}

void DwgVersionChoose() {
    ProPath value = {};
    if (!Failed(ProConfigoptionGet(HostText(kVersionOption), value))) return;
    // Without it the host takes its own version: the export is still worth having.
    (void)ProConfigoptSet(HostText(kVersionOption), HostText(kVersion));
}

static void ExportFile(SheetFile& file, const std::wstring& name, ExportFolder& folder, BatchRun& run) {
    RunEntry entry = {file.task.name, file.format.step};
    const OutputFile output = {name, file.format.extension, !file.format.ofSheets};
    entry.status = OutputBegin(folder, output, file.scratch, entry);
    if (!Failed(entry.status)) entry.status = SheetWrite(file);
    if (!Failed(entry.status)) entry.status = OutputDeliver(folder, output, file.scratch, entry);
    run.Add(std::move(entry));
}

static const std::wstring& NameOf(const DrawingTask& task, int sheet) {
    return task.fileNames[static_cast<std::size_t>(sheet - 1)];
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
