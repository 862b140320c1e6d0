// The formats that drawings are exported to, and what writes a file in each.
#pragma once

#include <string>

#include <ProUtil.h>

#include "export/drawing_task.h"
#include "export/export_folder.h"
#include "export/pdf_options.h"

namespace kv {

// The settings of a run, the same for every drawing.
struct DrawingSettings {
    bool oneFile = false;  // all sheets of a drawing go into one file
    PdfChoice pdf = {};
    // Where PDF files are made before they go to their folder: a path that the host's call can take. Empty:
    // in the folder.
    std::wstring pdfDetour = {};
};

// What the writers have from the first file of a run to the last.
struct WriterRun {
    const DrawingSettings settings = {};
    // Made when they are first needed.
    PdfOptions pdfAllSheets = {};
    PdfOptions pdfCurrentSheet = {};
};

struct DrawingFormat;

// What a writer is asked for.
struct SheetFile {
    const DrawingTask& task;
    const DrawingFormat& format;
    int sheet;  // counted from 1; kAllSheets for all of them
    ScratchFile scratch;
    WriterRun& run;
};
inline constexpr int kAllSheets = 0;

// How drawings are written in one format.
struct DrawingFormat {
    const wchar_t* extension;
    const wchar_t* step;  // in words, for the record
    ProImportExportFile type;
    bool ofSheets;  // else of the model that the drawing shows, once
    bool needsWindow;
    bool setsDwgVersion;  // before the first file
    ProError (*write)(const SheetFile& file);
};

// DWG and DXF: all sheets in one file, the last one in model space and the others in paper space, or one
// sheet.
[[nodiscard]] ProError SheetDrawingWrite(const SheetFile& file);
// The same by the host's own defaults, which take the current sheet alone; the host adds the extension.
[[nodiscard]] ProError CurrentSheetDrawingWrite(const SheetFile& file);
[[nodiscard]] ProError SheetPdfWrite(const SheetFile& file);
// STEP and IGES: the model that the drawing shows.
[[nodiscard]] ProError ShownModelWrite(const SheetFile& file);

}  // namespace kv
