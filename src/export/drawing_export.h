// A drawing exported to a format, one file a sheet or all sheets in one.
#pragma once

#include "export/drawing_task.h"
#include "export/drawing_writers.h"
#include "export/export_folder.h"
#include "model/run_record.h"

namespace kv {

// True when the sheets become a file each.
bool GoesBySheet(const DrawingTask& task, const DrawingSettings& settings);

// Exports the drawing in one format. A sheet that fails does not stop the others. The current sheet is left
// as the last file needed it.
void ExportDrawing(const DrawingTask& task, const DrawingFormat& format, WriterRun& run, ExportFolder& folder,
                   RunRecord& record);

// Sets the version of DWG and DXF files unless the user has chosen one. It stays set.
void DwgVersionChoose();

}  // namespace kv
