// The batch export: drawings by name, each to any of the formats.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "export/drawing_writers.h"
#include "export/export_name.h"
#include "model/run_record.h"

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

// Exports the drawings. Each is retrieved once and gets a window at most once. The host's memory stays
// bounded: what no window shows is erased from it now and then.
//
// Gives      an entry for every file, and one for a drawing that could not be had
RunRecord ExportDrawings(const ExportRequest& request);

}  // namespace kv
