// The batch export of drawings.

#include "export/export_run.h"

#include <algorithm>
#include <deque>

#include <windows.h>

#include "base/file.h"
#include "base/scope_exit.h"
#include "base/status.h"
#include "export/drawing_export.h"
#include "export/model_output.h"
#include "model/drawing_sheets.h"
#include "model/drawing_window.h"
#include "model/model_data.h"
#include "model/parameter.h"
#include "model/parameter_text.h"
#include "settings/settings_store.h"

namespace kv {

// clang-format off
static constexpr ExportFormat kFormats[] = {
    // check       folder       extension  step          type               of sheets  needs window  sets version  writer
    {"DWGCheck", L"DWG\\", {L".dwg",   L"导出DWG", PRO_DWG_FILE,      true,      false,        true,         SheetDrawingWrite}},
    {"DXFCheck", L"DXF\\", {L".dxf",   L"导出DXF", PRO_DXF_FILE,      true,      false,        true,         SheetDrawingWrite}},
    {"PDFCheck", L"PDF\\", {L".pdf",   L"导出PDF", {},                true,      true,         false,        SheetPdfWrite}},
    {"STPCheck", L"STP\\", {L".stp",   L"导出STEP", PRO_STEP_FILE,     false,     false,        false,        ShownModelWrite}},
    {"IGSCheck", L"IGS\\", {L".igs",   L"导出IGES", PRO_IGES_3D_FILE,  false,     false,        false,        ShownModelWrite}},
};
// clang-format on

static constexpr wchar_t kProfileSource[] = L"KVconfig\\kvdop.dop";
static constexpr wchar_t kProfileCopy[] = L"kvdop.dop";
// The host keeps every drawing with its models in memory until it is told otherwise.
static constexpr std::size_t kDrawingsInMemory = 30;

struct ExportRun {
    explicit ExportRun(const ExportRequest& asked) : request(asked), writer{{asked.oneFile, asked.pdf}} {}

    const ExportRequest& request;
    WriterRun writer;
    std::deque<ExportFolder> folders;  // of the formats; they cannot be moved
    UserWindows windows;
};

static void FormatsPrepare(ExportRun& run);
static void ExportByName(ExportRun& run, const std::wstring& name, BatchRun& batch);
static bool NeedsWindow(const ExportRun& run, const DrawingTask& task);
static bool NeedsModel(const ExportRun& run);
static void FileNamesCompose(const NameRule& rule, DrawingTask& task);
static NamePieces DrawingPieces(const NameRule& rule, const DrawingTask& task);

// Copies a file unless there is one of that name, and deletes the copy when the guard dies.
[[nodiscard]] static auto FileBorrow(bool wanted, const std::wstring& from, const std::wstring& to) {
    const bool copied = wanted && CopyFileW(from.c_str(), to.c_str(), TRUE);
    return ScopeExit([copied, to] {
        if (!copied) return;
        // A copy is read-only when its source is.
        SetFileAttributesW(to.c_str(), FILE_ATTRIBUTE_NORMAL);
        DeleteFileW(to.c_str());
    });
}

std::span<const ExportFormat> ExportFormats() {
    return kFormats;
}

bool PdfProfileExists(const std::wstring& directory) {
    const std::wstring shipped = SettingsPath(kProfileSource);
    return FileExists(WithBackslash(directory) + kProfileCopy) || (!shipped.empty() && FileExists(shipped));
}

void ExportDrawings(const ExportRequest& request, BatchRun& batch) {
    const auto profile = FileBorrow(request.pdf.useProfile, SettingsPath(kProfileSource),
                                    WithBackslash(request.directory) + kProfileCopy);
    ExportRun run(request);
    FormatsPrepare(run);
    std::size_t done = 0;
    for (const std::wstring& name : request.drawings) {
        if (!batch.Begin(name)) continue;
        ExportByName(run, name, batch);
        if (++done % kDrawingsInMemory == 0) ProMdlEraseNotDisplayed();
    }
}

static void FormatsPrepare(ExportRun& run) {
    for (const ExportFormat* wanted : run.request.formats) {
        const std::wstring folder = WithBackslash(run.request.directory) + wanted->folder;
        // Every file of a folder that cannot be made will be recorded as not written.
        (void)FolderMake(folder);
        run.folders.emplace_back(folder);
        if (wanted->format.setsDwgVersion) DwgVersionChoose();
    }
}

static void ExportByName(ExportRun& run, const std::wstring& name, BatchRun& batch) {
    DrawingTask task;
    ProMdl model = nullptr;
    ProError status = ModelRetrieveByType(name, PRO_MDLFILE_DRAWING, model);
    if (!Failed(status)) status = DrawingTaskGet(model, task);
    if (Failed(status)) {
        batch.Add({name, kStepDrawing, status});
        return;
    }

    DrawingWindow window(run.windows);
    if (NeedsWindow(run, task)) task.displayed = window.Open(task.name, model);
    if (NeedsModel(run) && Failed(ShownModelGet(task.drawing, task.shown))) task.shown = nullptr;
    FileNamesCompose(run.request.name, task);
    const ScopeExit turnBack([&task] { SheetRestore(task); });
    for (std::size_t i = 0; i < run.folders.size(); ++i)
        ExportDrawing(task, run.request.formats[i]->format, run.writer, run.folders[i], batch);
}

// Sheets are turned in a window too: there the host can always do it.
static bool NeedsWindow(const ExportRun& run, const DrawingTask& task) {
    const bool bySheet = GoesBySheet(task, run.writer.settings);
    return std::ranges::any_of(run.request.formats, [bySheet](const ExportFormat* wanted) {
        return wanted->format.needsWindow || (wanted->format.ofSheets && bySheet);
    });
}

static bool NeedsModel(const ExportRun& run) {
    return std::ranges::any_of(run.request.formats,
                               [](const ExportFormat* wanted) { return !wanted->format.ofSheets; });
}

// A size or parameter that cannot be read leaves its piece out of the name.
static void FileNamesCompose(const NameRule& rule, DrawingTask& task) {
    NamePieces pieces = DrawingPieces(rule, task);
    const bool bySize = std::ranges::find(rule.tokens, kSheetSizeToken) != rule.tokens.end();
    std::wstring& size = pieces[kSheetSizeToken];
    for (int sheet = 1; sheet <= task.sheets; ++sheet) {
        if (bySize && Failed(SheetSizeGet(task.drawing, sheet, size))) size.clear();
        task.fileNames.push_back(NameCompose(rule, pieces, task.name));
    }
}

// The pieces that all sheets share. Each parameter is read once.
static NamePieces DrawingPieces(const NameRule& rule, const DrawingTask& task) {
    NamePieces pieces = {{kSheetSizeToken, L""}, {kDrawingNameToken, task.name}};
    for (const std::wstring& token : rule.tokens) {
        if (pieces.contains(token)) continue;
        ProParamvalue value = {};
        const bool known = !Failed(ParameterRead(task.drawing, token, value));
        pieces.emplace(token, known ? ParameterText(value).value_or(L"") : std::wstring());
    }
    return pieces;
}

}  // namespace kv
