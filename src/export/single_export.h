// The commands KvExportDwg, KvExportPdf and KvExportStp: the current drawing or model, into the folder that
// the settings choose.
#pragma once

#include <ProToolkit.h>

namespace kv {

// Write the current drawing, a file for each sheet. Errors: those of finding the drawing and the folder; a
// file that cannot be written is told.
[[nodiscard]] ProError KvExportDwg();
[[nodiscard]] ProError KvExportPdf();

// Writes the current part or assembly as one STEP file. Errors: those of finding model and folder, and of
// writing.
[[nodiscard]] ProError KvExportStp();

}  // namespace kv
