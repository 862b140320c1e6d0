// The batch export: drawings by name, each to any of the formats.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "export/drawing_writers.h"
#include "export/export_name.h"
#include "model/batch_run.h"

namespace kv {

// A format as the dialog offers it.
struct ExportFormat {
    const char* check;      // its check button
    const wchar_t* folder;  // sub-folder of the working directory
    DrawingFormat format;
};

// In working order.
std::span<const ExportFormat> ExportFormats();

struct ExportRequest {
    std::wstring directory;              // the working directory
    std::vector<std::wstring> drawings;  // names, in working order
    std::vector<const ExportFormat*> formats;
    NameRule name;
    bool oneFile = false;
    PdfChoice pdf;
};

// Whether there is a profile for PDF files, in the directory or among the settings.
bool PdfProfileExists(const std::wstring& directory);

// Exports the drawings, an item of the run each, with an entry for every file. Each drawing is retrieved once
// and gets a window at most once. The host's memory stays bounded: what no window shows is erased from it now
// and then.
void ExportDrawings(const ExportRequest& request, BatchRun& run);

}  // namespace kv
