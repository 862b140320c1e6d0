// KvFrmReplace: another format for the sheets of many drawings of the working directory.
//
// 预览 tells for every selected drawing what would happen to its sheets, and changes nothing; 更换 does it.

#include "drawing/kv_frm_replace.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <ProDrawing.h>
#include <ProMdl.h>
#include <ProUtil.h>

#include "base/number.h"
#include "base/status.h"
#include "base/text.h"
#include "drawing/format_plan.h"
#include "drawing/format_run.h"
#include "model/batch_run.h"
#include "model/drawing_sheets.h"
#include "model/drawing_table.h"
#include "model/model_files.h"
#include "ui/dialog.h"
#include "ui/message_box.h"
#include "ui/open_file.h"
#include "ui/table.h"

namespace kv {

static constexpr char kFormatDialog[] = "KvFrmReplace";
static constexpr TableName kFormatTable = {kFormatDialog, "drw_list"};
static constexpr char kSheetsCell[] = "sheets";
static constexpr char kSizesCell[] = "sheet_size";
static constexpr char kFormatsCell[] = "formats";
static constexpr char kPlanCell[] = "plan";
static constexpr char kFormatFile[] = "FormatFile";
static constexpr char kFormatSheet[] = "FormatSheet";
static constexpr char kSheetChoice[] = "SheetScope";
static constexpr char kAllSheets[] = "All";
static constexpr char kSheetsByFormat[] = "ByFormat";
static constexpr char kScopeText[] = "ScopeText";
static constexpr char kTablesCheck[] = "ReplaceTables";
static constexpr char kUsersCheck[] = "TakeOpen";

static constexpr wchar_t kFolderMask[] = L"*.drw";
static constexpr wchar_t kFormatMask[] = L"*.frm";
static constexpr wchar_t kChooseTitle[] = L"请选择新图框";
static constexpr wchar_t kFolderEmpty[] = L"当前工作目录下无工程图";
static constexpr wchar_t kNoneSelected[] = L"\t请先选择需要更换图框的工程图\t";
static constexpr wchar_t kNoNewFormat[] = L"\t请先选择新图框\t";
static constexpr wchar_t kBadFormat[] = L"\t新图框无法打开：\t\n";
static constexpr wchar_t kBadFormatSheet[] = L"\t图框页号必须是大于0的整数，且不超过图框的页数\t";
static constexpr wchar_t kNoScopeText[] = L"\t请填写原图框名称或图幅\t";
static constexpr wchar_t kUsersPlan[] = L"已打开、已修改或来自其他文件夹，跳过";
static constexpr wchar_t kCannotRead[] = L"无法读取";
static constexpr wchar_t kNotReplaced[] = L"以下工程图未能更换图框，文件未改动：";
static constexpr wchar_t kStepReadFormats[] = L"读取图框";
static constexpr wchar_t kStepPlan[] = L"预览";
static constexpr wchar_t kDrawingItems[] = L"工程图";

struct FormatDialog {
    std::wstring directory = {};
    std::vector<std::wstring> drawings = {};
    DrawingTable table = {kFormatTable};
    std::wstring formatPath = {};
    std::wstring report = {};
};

static void FillFormatDialog(FormatDialog& dialog);
static void OnAllDrawings(FormatDialog& dialog);
static void OnReverseDrawings(FormatDialog& dialog);
static void OnLoadFormats(FormatDialog& dialog);
static void OnChooseFormat(FormatDialog& dialog);
static void OnPlan(FormatDialog& dialog);
static void OnReplaceFormats(FormatDialog& dialog);
static void OnShowFormatReport(const FormatDialog& dialog);
static void OnErased(const FormatDialog& dialog);
static void EraseAfterAction(FormatDialog& dialog);
static bool IsRequested(const FormatDialog& dialog, LoadedFormat& format, FormatRun& run);
static ProError RequestRead(FormatRequest& request, bool& takesUsers, bool& isNumber);
static bool KnowsSheet(ProMdl format, FormatRequest& request);
static std::string RowOf(const FormatDialog& dialog, const std::wstring& drawing);
static void SheetCellsSet(const std::string& row, const DrawingFormats& found);
static void PlanOne(const FormatDialog& dialog, FormatRun& run, const std::wstring& name, BatchRun& batch);

ProError KvFrmReplace() {
    ProPath directory = {};
    ProError status = ProDirectoryCurrentGet(directory);
    if (Failed(status)) return status;
    FormatDialog dialog = {directory};
    status = ModelFilesGet(kFolderMask, dialog.drawings);
    if (Failed(status)) return ShowFailure(kFolderEmpty, status);
    return RunDialog(kFormatDialog,
                     {
                         Pressed<OnAllDrawings>("selAll"),
                         Pressed<OnReverseDrawings>("reverseSel"),
                         Pressed<OnLoadFormats>("KvLoadFormats"),
                         Pressed<OnChooseFormat>("KvChooseFormat"),
                         Pressed<OnPlan>("KvPlan"),
                         Pressed<OnReplaceFormats>("ApplyBt"),
                         Pressed<OnShowFormatReport>("KvShowReport"),
                         Closes("Close"),
                     },
                     dialog, FillFormatDialog);
}

static void FillFormatDialog(FormatDialog& dialog) {
    // Without the host's consent the user selects as the layout lets them.
    (void)TableSelectionAllow(kFormatTable);
    ShowDrawings(dialog.table, dialog.drawings);
    RadioChoiceSet(kFormatDialog, kSheetChoice, kAllSheets);
}

static void OnAllDrawings(FormatDialog& dialog) {
    SelectAllDrawings(dialog.table);
}

static void OnReverseDrawings(FormatDialog& dialog) {
    ReverseSelection(dialog.table);
}

// What the user has open is read as well: nothing changes.
static void OnLoadFormats(FormatDialog& dialog) {
    EraseAfterAction(dialog);
    BatchRun batch(kFormatDialog, dialog.table.drawings.size());
    FormatRun run = {dialog.directory};
    run.takesUsers = true;
    for (const std::wstring& name : dialog.table.drawings) {
        if (!batch.Begin(name)) continue;
        DrawingFormats found;
        const wchar_t* step = kStepReadFormats;
        const ProError status = DrawingFormatsRead(run, name, found, step);
        const std::string row = RowOf(dialog, name);
        if (Failed(status)) {
            CellTextSet(kFormatTable, row, kFormatsCell, kCannotRead);
        } else {
            SheetCellsSet(row, found);
        }
        batch.Add({name, Failed(status) ? step : kStepReadFormats, status});
    }
    dialog.report = batch.ReportPath();
    TellCount(batch, kDrawingItems);
    ShowCancelled(batch);
}

static void OnChooseFormat(FormatDialog& dialog) {
    std::wstring path;
    if (Failed(ModelFileChoose(kChooseTitle, kFormatMask, path))) return;
    dialog.formatPath = path;
    InputTextSet(kFormatDialog, kFormatFile, path);
}

// The whole run of an action; nothing runs until all that `work` needs is known. `failures` is the headline
// of the box that lists what failed; none where the table tells it.
template <typename Work>
static void ForSelectedDrawings(FormatDialog& dialog, const wchar_t* failures, Work work) {
    EraseAfterAction(dialog);
    LoadedFormat format;
    FormatRun run = {dialog.directory};
    const std::vector<std::wstring> drawings = SelectedDrawings(dialog.table);
    if (drawings.empty()) {
        ShowMessage(kNoneSelected);
        return;
    }
    if (!IsRequested(dialog, format, run)) return;
    BatchRun batch(kFormatDialog, drawings.size());
    for (const std::wstring& name : drawings)
        if (batch.Begin(name)) work(run, name, batch);
    dialog.report = batch.ReportPath();
    if (failures != nullptr) ShowFailures(failures, batch.Record());
    TellCount(batch, kDrawingItems);
    ShowCancelled(batch);
}

static void OnPlan(FormatDialog& dialog) {
    ForSelectedDrawings(dialog, nullptr, [&](FormatRun& run, const std::wstring& name, BatchRun& batch) {
        PlanOne(dialog, run, name, batch);
    });
}

static void OnReplaceFormats(FormatDialog& dialog) {
    ForSelectedDrawings(dialog, kNotReplaced, [&](FormatRun& run, const std::wstring& name, BatchRun& batch) {
        DrawingFormatsReplace(run, name, batch);
        // What was planned and read is no longer so.
        for (const char* cell : {kSheetsCell, kSizesCell, kFormatsCell, kPlanCell})
            CellTextSet(kFormatTable, RowOf(dialog, name), cell, {});
    });
}

static void OnShowFormatReport(const FormatDialog& dialog) {
    ShowReport(dialog.report);
}

static void OnErased(const FormatDialog&) {}

// There are hosts that erase when the action has returned to them: the next one must not find what was
// erased.
static void EraseAfterAction(FormatDialog& dialog) {
    (void)RunAfterAction<OnErased>(kFormatDialog, dialog);
}

// Whether all is known that a run needs; the user is told what is missing.
static bool IsRequested(const FormatDialog& dialog, LoadedFormat& format, FormatRun& run) {
    if (dialog.formatPath.empty()) {
        ShowMessage(kNoNewFormat);
        return false;
    }
    bool isNumber = false;
    // A box that cannot be read might be the one that counts.
    if (Failed(RequestRead(run.request, run.takesUsers, isNumber))) return false;
    if (run.request.scope != SheetScope::All && run.request.wanted.empty()) {
        ShowMessage(kNoScopeText);
        return false;
    }
    if (Failed(format.Load(dialog.formatPath))) {
        ShowMessage((kBadFormat + dialog.formatPath).c_str());
        return false;
    }
    if (!isNumber || !KnowsSheet(format.Model(), run.request)) {
        ShowMessage(kBadFormatSheet);
        return false;
    }
    run.request.newFormat = format.Name();
    run.format = format.Model();
    return true;
}

static ProError RequestRead(FormatRequest& request, bool& takesUsers, bool& isNumber) {
    std::wstring sheet;
    std::wstring wanted;
    ProError status = InputTextGet(kFormatDialog, kFormatSheet, sheet);
    if (!Failed(status)) status = InputTextGet(kFormatDialog, kScopeText, wanted);
    if (!Failed(status)) status = CheckTickedGet(kFormatDialog, kTablesCheck, request.replacesTables);
    if (!Failed(status)) status = CheckTickedGet(kFormatDialog, kUsersCheck, takesUsers);
    const std::string scope = RadioChoice(kFormatDialog, kSheetChoice);
    if (!Failed(status) && scope.empty()) status = PRO_TK_GENERAL_ERROR;
    request.wanted = WithoutBlanks(wanted);
    request.scope = scope == kAllSheets        ? SheetScope::All
                    : scope == kSheetsByFormat ? SheetScope::ByFormat
                                               : SheetScope::BySize;
    isNumber = !Failed(IntegerFromText(sheet, request.formatSheet)) && request.formatSheet > 0;
    return status;
}

// There are hosts that tell nothing of a format's sheets: its own refusal of a sheet then has to do.
static bool KnowsSheet(ProMdl format, FormatRequest& request) {
    auto* sheets = static_cast<ProDrawing>(format);
    int count = 0;
    if (Failed(ProDrawingSheetsCount(sheets, &count))) return true;
    if (request.formatSheet > count) return false;
    if (Failed(SheetSizeGet(sheets, request.formatSheet, request.newSize))) request.newSize.clear();
    return true;
}

static std::string RowOf(const FormatDialog& dialog, const std::wstring& drawing) {
    const std::vector<std::wstring>& all = dialog.table.drawings;
    return std::to_string(std::ranges::find(all, drawing) - all.begin() + 1);
}

static void SheetCellsSet(const std::string& row, const DrawingFormats& found) {
    std::vector<std::wstring> sizes;
    for (const SheetState& sheet : found.sheets) sizes.push_back(sheet.size);
    CellTextSet(kFormatTable, row, kSheetsCell, std::to_wstring(sizes.size()));
    CellTextSet(kFormatTable, row, kSizesCell, SheetSizesText(sizes));
    CellTextSet(kFormatTable, row, kFormatsCell, FormatsText(found.sheets));
}

static void PlanOne(const FormatDialog& dialog, FormatRun& run, const std::wstring& name, BatchRun& batch) {
    DrawingFormats found;
    RunEntry entry = {name, kStepPlan};
    entry.status = DrawingFormatsRead(run, name, found, entry.step);
    entry.note = found.isLeft ? kUsersPlan : DrawingPlanText(found.sheets, run.request);
    if (Failed(entry.status)) {
        entry.note = kCannotRead;
    } else {
        entry.step = kStepPlan;
        if (!found.isLeft) SheetCellsSet(RowOf(dialog, name), found);
    }
    CellTextSet(kFormatTable, RowOf(dialog, name), kPlanCell, entry.note);
    batch.Add(std::move(entry));
}

}  // namespace kv
