// A drawing exported to a format, one file a sheet or all sheets in one.
#pragma once

#include "export/drawing_task.h"
#include "export/drawing_writers.h"
#include "export/export_folder.h"
#include "model/batch_run.h"

namespace kv {

// True when the sheets become a file each.
bool GoesBySheet(const DrawingTask& task, const DrawingSettings& settings);

// Exports the drawing in one format. A sheet that fails does not stop the others. The current sheet is left
// as the last file needed it.
void ExportDrawing(const DrawingTask& task, const DrawingFormat& format, WriterRun& writer,
                   ExportFolder& folder, BatchRun& run);

// Exports one sheet, counted from 1, to a file of its own.
void ExportSheet(const DrawingTask& task, const DrawingFormat& format, int sheet, WriterRun& writer,
                 ExportFolder& folder, BatchRun& run);

// Sets the version of DWG and DXF files unless the user has chosen one. It stays set.
void DwgVersionChoose();

}  // namespace kv
