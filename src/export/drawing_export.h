// A drawing exported to a format, one file a sheet or all sheets in one.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include <ProDrawing.h>
#include <ProMdl.h>
#include <ProUtil.h>

#include "export/export_folder.h"
#include "export/pdf_options.h"
#include "model/run_record.h"

namespace kv {

// The settings of a run, the same for every drawing.
struct DrawingSettings {
    bool oneFile = false;  // all sheets of a drawing go into one file
    PdfChoice pdf;
    // Where PDF files are made before they go to their folder: a path that the host's call can take. Empty:
    // in the folder.
    std::wstring pdfDetour;
    // Made when they are first needed: for all sheets, and for the current one alone.
    std::optional<PdfOptions> pdfOptions[2];
};

// A drawing in work.
struct DrawingTask {
    ProDrawing drawing = nullptr;
    std::wstring name;
    int sheets = 0;
    int currentSheet = 0;                      // the one that was current at the start
    ProError displayed = PRO_TK_NO_ERROR;      // whether it is in the current window
    ProMdl shown = nullptr;                    // the model of its first view; null when there is none
    std::vector<std::wstring> fileNames = {};  // by sheet, without extension
};

struct DrawingFormat;

// What a format's writer is asked for.
struct SheetFile {
    const DrawingTask& task;
    const DrawingFormat& format;
    int sheet;  // counted from 1; kAllSheets for all of them
    const ScratchFile& scratch;
    DrawingSettings& settings;
};
inline constexpr int kAllSheets = 0;

// How drawings are written in one format.
struct DrawingFormat {
    const wchar_t* extension;
    const char* step;  // for the record
    ProImportExportFile type;
    bool ofSheets;  // else of the model that the drawing shows, once
    bool needsWindow;
    ProError (*write)(const SheetFile& file);
};

// Reads the drawing's name, number of sheets and current sheet. Errors: those of the calls;
// PRO_TK_INVALID_TYPE for a model that is no drawing, PRO_TK_BAD_CONTEXT for one without a sheet.
[[nodiscard]] ProError DrawingTaskGet(ProMdl model, DrawingTask& task);

// True when the sheets become a file each.
bool GoesBySheet(const DrawingTask& task, const DrawingSettings& settings);

// Exports the drawing in one format. A sheet that fails does not stop the others. The current sheet is left
// as the last file needed it.
void ExportDrawing(const DrawingTask& task, const DrawingFormat& format, DrawingSettings& settings,
                   ExportFolder& folder, RunRecord& record);

// Makes the sheet current that was so at the start.
void RestoreSheet(const DrawingTask& task) noexcept;

// Sets the version of DWG and DXF files unless the user has chosen one. It stays set.
void ChooseDwgVersion();

// ---- Writers of formats

// DWG and DXF: all sheets in one file, the last one in model space and the others in paper space, or one
// sheet.
ProError WriteSheetDrawing(const SheetFile& file);
// The same by the host's own defaults, which take the current sheet alone; the host adds the extension.
ProError WriteCurrentSheetDrawing(const SheetFile& file);
ProError WriteSheetPdf(const SheetFile& file);
// STEP and IGES: the model that the drawing shows.
ProError WriteShownModel(const SheetFile& file);

}  // namespace kv
