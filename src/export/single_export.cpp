// KvExportDwg, KvExportPdf, KvExportStp: one flow for what is on the screen.
//
// A whole export ends without a message box; files that could not be written are listed.

#include "export/single_export.h"

#include <string>
#include <utility>

#include <ProUtil.h>

#include "base/file.h"
#include "base/file_name.h"
#include "base/scope_exit.h"
#include "base/status.h"
#include "base/text.h"
#include "base/working_directory.h"
#include "export/drawing_export.h"
#include "export/drawing_writers.h"
#include "export/export_name.h"
#include "export/model_output.h"
#include "model/current_model.h"
#include "model/model_data.h"
#include "settings/settings_store.h"
#include "ui/message_box.h"
#include "ui/prompt.h"
#include "ui/shell.h"

namespace kv {

static constexpr wchar_t kDesktop[] = L"deskTop";
static constexpr wchar_t kAskUser[] = L"byUser";
static constexpr wchar_t kFilesNotExported[] = L"以下文件未能导出：";
static constexpr char kStepDone[] = "STP model has exported";
static constexpr wchar_t kSheetMark[] = L" #";
static constexpr wchar_t kTemporaryName[] = L"temp";
static constexpr wchar_t kPdfExtension[] = L".pdf";

// Where a command's files go: a section of the common settings, and the title when the user is asked.
struct FolderChoice {
    const wchar_t* section;
    const wchar_t* title;
};

// Drawings of either format share one title.
static constexpr FolderChoice kDwgFolder = {L"KvExportDwgDIr", L"请选择DWG文件导出位置"};
static constexpr FolderChoice kPdfFolder = {L"KvExportPdfDIr", L"请选择DWG文件导出位置"};
static constexpr FolderChoice kStepFolder = {L"KvExportStpDir", L"请选择STP文件导出位置"};

// clang-format off
// extension  step         type           of sheets  needs window  sets version  writer
static constexpr DrawingFormat kDwg = {
    L".dwg",  L"导出DWG", PRO_DWG_FILE,  true,      false,        true,         CurrentSheetDrawingWrite};
static constexpr DrawingFormat kPdf = {
    L".pdf",  L"导出PDF", {},            true,      true,         false,        SheetPdfWrite};
// clang-format on
static constexpr wchar_t kStepExtension[] = L".stp";

static ProError StepFileWrite(ProMdl model, const std::wstring& target, RunEntry& entry);
static ProError CurrentDrawingGet(DrawingTask& task);
static ProError TargetFolderGet(const FolderChoice& choice, std::wstring& folder);
static ProError UnusedPdfPathGet(std::wstring& path);
static void ExportSheets(const char* command, const DrawingTask& task, const DrawingFormat& format,
                         const DrawingSettings& settings, const std::wstring& folder);
static void SheetsWrite(const DrawingTask& task, const DrawingFormat& format, const DrawingSettings& settings,
                        const std::wstring& folder, BatchRun& run);
static void ShowEnd(const BatchRun& run);

ProError KvExportDwg() {
    DrawingTask task;
    std::wstring folder;
    ProError status = CurrentDrawingGet(task);
    if (!Failed(status)) status = TargetFolderGet(kDwgFolder, folder);
    if (Failed(status)) return status;

    ExportSheets("KvExportDwg", task, kDwg, {}, folder);
    return PRO_TK_NO_ERROR;
}

ProError KvExportPdf() {
    DrawingTask task;
    std::wstring folder;
    DrawingSettings settings;
    settings.pdf.monochrome = true;
    ProError status = CurrentDrawingGet(task);
    if (!Failed(status)) status = TargetFolderGet(kPdfFolder, folder);
    if (!Failed(status)) status = UnusedPdfPathGet(settings.pdfDetour);
    if (!Failed(status)) ExportSheets("KvExportPdf", task, kPdf, settings, folder);
    return status;
}

ProError KvExportStp() {
    ProMdl model = nullptr;
    ProMdlType type = PRO_MDL_UNUSED;
    std::wstring name;
    std::wstring target;
    ProError status = CurrentSolidGet(model, type);
    if (!Failed(status) && type != PRO_MDL_ASSEMBLY && type != PRO_MDL_PART) status = PRO_TK_INVALID_TYPE;
    if (!Failed(status)) status = ModelNameGet(model, name);
    if (!Failed(status)) status = TargetFolderGet(kStepFolder, target);
    if (Failed(status)) return status;

    BatchRun run("KvExportStp", 1);
    if (!run.Begin(name)) return PRO_TK_USER_ABORT;
    RunEntry entry = {name, L"导出STEP"};
    status = StepFileWrite(model, target, entry);
    entry.status = status;
    run.Add(std::move(entry));
    ShowEnd(run);
    return Failed(status) ? status : DisplayMessage(kStepDone);
}

static ProError StepFileWrite(ProMdl model, const std::wstring& target, RunEntry& entry) {
    ExportFolder folder(target);
    const OutputFile file = {FileNameText(entry.model), kStepExtension, true};
    ScratchFile scratch;
    ProError status = OutputBegin(folder, file, scratch, entry);
    if (Failed(status)) return status;

    const auto goBack = UseWorkingDirectory(scratch.folder, status);
    if (!Failed(status)) status = ModelWrite(model, PRO_STEP_FILE, scratch.name + kStepExtension);
    return Failed(status) ? status : OutputDeliver(folder, file, scratch, entry);
}

static ProError CurrentDrawingGet(DrawingTask& task) {
    ProMdl model = nullptr;
    ProMdlType type = PRO_MDL_UNUSED;
    ProError status = CurrentModelGet(model, type);
    if (!Failed(status)) status = DrawingTaskGet(model, task);
    if (Failed(status)) return status;
    task.fileNames.assign(static_cast<std::size_t>(task.sheets), FileNameText(task.name));
    return PRO_TK_NO_ERROR;
}

// Every other setting, an unknown one too, means the working directory.
static ProError TargetFolderGet(const FolderChoice& choice, std::wstring& folder) {
    const std::wstring stored =
        WithoutBlanks(SettingRead(SettingsPath(kCommonSettings), choice.section, kValueKey));
    if (stored == kDesktop) return DesktopFolderGet(folder);
    ProPath path = {};
    const ProError status = stored == kAskUser
                                ? ProDirectoryChoose(HostText(choice.title), nullptr, nullptr, nullptr, path)
                                : ProDirectoryCurrentGet(path);
    if (!Failed(status)) folder = path;
    return status;
}

// The export call does not take every path, but it takes this one in the working directory. A file of that
// name is the user's.
static ProError UnusedPdfPathGet(std::wstring& path) {
    ProPath directory = {};
    const ProError status = ProDirectoryCurrentGet(directory);
    if (Failed(status)) return status;
    const std::wstring start = WithBackslash(directory) + kTemporaryName;
    path = start + kPdfExtension;
    for (int number = 1; FileExists(path); ++number) path = start + std::to_wstring(number) + kPdfExtension;
    return PRO_TK_NO_ERROR;
}

static void ExportSheets(const char* command, const DrawingTask& task, const DrawingFormat& format,
                         const DrawingSettings& settings, const std::wstring& folder) {
    if (format.setsDwgVersion) DwgVersionChoose();
    BatchRun run(command, static_cast<std::size_t>(task.sheets));
    SheetsWrite(task, format, settings, folder, run);
    ShowEnd(run);
}

// The sheet that was current is so again before anything is shown.
static void SheetsWrite(const DrawingTask& task, const DrawingFormat& format, const DrawingSettings& settings,
                        const std::wstring& folder, BatchRun& run) {
    ExportFolder target(folder);
    WriterRun writer = {settings};
    const ScopeExit turnBack([&task] { SheetRestore(task); });
    for (int sheet = 1; sheet <= task.sheets; ++sheet) {
        if (!run.Begin(task.name + kSheetMark + std::to_wstring(sheet))) continue;
        if (GoesBySheet(task, settings)) {
            ExportSheet(task, format, sheet, writer, target, run);
        } else {
            ExportDrawing(task, format, writer, target, run);
        }
    }
}

static void ShowEnd(const BatchRun& run) {
    ShowFailures(kFilesNotExported, run.Record());
    ShowCancelled(run);
}

}  // namespace kv
