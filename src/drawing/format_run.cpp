// Another format for the sheets of drawings, on the toolkit's drawing calls.

#include "drawing/format_run.h"

#include <algorithm>
#include <span>
#include <utility>

#include <ProDrawing.h>
#include <ProUtil.h>

#include "base/file.h"
#include "base/host_handle.h"
#include "base/status.h"
#include "base/text.h"
#include "model/drawing_sheets.h"
#include "model/model_data.h"

namespace kv {

static constexpr wchar_t kStepUsers[] = L"已打开、已修改或来自其他文件夹";
static constexpr wchar_t kStepNoSheet[] = L"没有符合条件的页";
static constexpr wchar_t kStepTyped[] = L"有图框表格";
static constexpr wchar_t kStepReadSheets[] = L"读取页面";
static constexpr wchar_t kStepReadTables[] = L"读取表格";
static constexpr wchar_t kStepWindow[] = L"显示工程图";
static constexpr wchar_t kStepTurn[] = L"切换到该页";
static constexpr wchar_t kStepDropTables[] = L"删除图框表格";
static constexpr wchar_t kStepFormat[] = L"更换图框";
static constexpr wchar_t kStepRefresh[] = L"再生该页";
static constexpr wchar_t kStepSaveDrawing[] = L"保存工程图";
static constexpr wchar_t kUsersNote[] = L"未勾选处理这些工程图";
static constexpr wchar_t kUnsavedNote[] = L"尚未保存，请检查后自行保存";
static constexpr wchar_t kHalfNote[] = L"部分页可能已更换，未保存";

static constexpr int kOnlySegment = -1;

// A table of a format, and the sheets that it stands on.
struct FormatTable {
    ProDwgtable table;
    std::vector<int> sheets;
};

// A drawing while it is read or changed. One that was not in memory before goes again, and so does one that
// is half changed: it must not be what the next command finds.
class OpenDrawing {
public:
    OpenDrawing() = default;
    OpenDrawing(const OpenDrawing&) = delete;
    OpenDrawing& operator=(const OpenDrawing&) = delete;
    ~OpenDrawing() {
        if (drawing != nullptr && erases && Failed(ProMdlErase(drawing))) (void)ProMdlErase(drawing);
    }
    [[nodiscard]] ProError Open(const std::wstring& name);

    ProDrawing drawing = nullptr;
    bool erases = false;
    std::vector<FormatTable> tables = {};
};

static DrawingOwner OwnerOf(FormatRun& run, const std::wstring& name);
static ProError SheetsRead(FormatRun& run, const std::wstring& name, OpenDrawing& open, DrawingFormats& found,
                           const wchar_t*& step);
static ProError FormatNameGet(ProDrawing drawing, int sheet, std::wstring& format);
static ProError TablesRead(OpenDrawing& open);
static ProError TableSheetsGet(ProDwgtable& table, std::vector<int>& sheets);
static bool StandsOn(const FormatTable& table, int sheet);
static ProError SheetsReplace(FormatRun& run, OpenDrawing& open, const DrawingFormats& found,
                              const wchar_t*& step);
static ProError SheetReplace(FormatRun& run, OpenDrawing& open, int sheet, const wchar_t*& step);
static void RecordSheets(const FormatRun& run, const std::wstring& name, const DrawingFormats& found,
                         BatchRun& batch);

LoadedFormat::~LoadedFormat() {
    if (model_ != nullptr && isOurs_) (void)ProMdlErase(model_);
}

// The user has chosen this very file: it is not looked for by its name, which others may have as well.
ProError LoadedFormat::Load(const std::wstring& path) {
    ProPath whole;
    ProMdlName name = {};
    ProError status = CopyText(path, whole);
    if (!Failed(status)) status = ProFileMdlnameParse(whole, nullptr, name, nullptr, nullptr);
    if (Failed(status)) return status;
    ProMdl before = nullptr;
    isOurs_ = ProMdlnameInit(name, PRO_MDLFILE_DWGFORM, &before) == PRO_TK_E_NOT_FOUND;
    ProMdl loaded = nullptr;
    status = ModelLoadByType(path, PRO_MDLFILE_DWGFORM, loaded);
    if (Failed(status)) return status;
    model_ = loaded;
    return ModelNameGet(model_, name_);
}

ProError DrawingFormatsRead(FormatRun& run, const std::wstring& name, DrawingFormats& found,
                            const wchar_t*& step) {
    OpenDrawing open;
    return SheetsRead(run, name, open, found, step);
}

void DrawingFormatsReplace(FormatRun& run, const std::wstring& name, BatchRun& batch) {
    OpenDrawing open;
    DrawingFormats found;
    const wchar_t* step = kStepDrawing;
    ProError status = SheetsRead(run, name, open, found, step);
    if (found.isLeft) {
        batch.Add({name, kStepUsers, PRO_TK_NO_ERROR, {}, false, true, kUsersNote});
        return;
    }
    const auto isReplaced = [&](const SheetState& sheet) {
        return FateOf(sheet, run.request) == SheetFate::Replaced;
    };
    const bool changes = !Failed(status) && std::ranges::any_of(found.sheets, isReplaced);
    const bool isUsers = found.owner == DrawingOwner::User;
    if (changes) {
        open.erases = !isUsers;
        status = SheetsReplace(run, open, found, step);
    }
    if (changes && !Failed(status) && !isUsers) {
        step = kStepSaveDrawing;
        status = ProMdlSave(open.drawing);
    }
    if (!Failed(status)) {
        open.erases = found.owner == DrawingOwner::Nobody;
        RecordSheets(run, name, found, batch);
        return;
    }
    batch.Add({name, step, status});
    if (changes && isUsers) batch.Add({name, kStepUsers, PRO_TK_NO_ERROR, {}, false, true, kHalfNote});
}

ProError OpenDrawing::Open(const std::wstring& name) {
    ProMdl model = nullptr;
    const ProError status = ModelRetrieveByType(name, PRO_MDLFILE_DRAWING, model);
    if (!Failed(status)) drawing = static_cast<ProDrawing>(model);
    return status;
}

// A drawing of which that cannot be told counts as the user's.
static DrawingOwner OwnerOf(FormatRun& run, const std::wstring& name) {
    ProMdlName text;
    ProMdl model = nullptr;
    if (Failed(CopyText(name, text))) return DrawingOwner::User;
    const ProError status = ProMdlnameInit(text, PRO_MDLFILE_DRAWING, &model);
    if (status == PRO_TK_E_NOT_FOUND) return DrawingOwner::Nobody;
    ProBoolean isModified = PRO_B_TRUE;
    ModelData data;
    if (Failed(status) || run.windows.Show(model)) return DrawingOwner::User;
    // Another folder's drawing of that name would be saved there.
    if (Failed(ModelDataGet(model, data)) || !IsSamePath(data.folder, run.directory))
        return DrawingOwner::User;
    if (Failed(ProMdlModificationVerify(model, &isModified)) || isModified != PRO_B_FALSE)
        return DrawingOwner::User;
    return DrawingOwner::Memory;
}

static ProError SheetsRead(FormatRun& run, const std::wstring& name, OpenDrawing& open, DrawingFormats& found,
                           const wchar_t*& step) {
    found.owner = OwnerOf(run, name);
    found.isLeft = found.owner == DrawingOwner::User && !run.takesUsers;
    if (found.isLeft) return PRO_TK_NO_ERROR;
    step = kStepDrawing;
    ProError status = open.Open(name);
    if (Failed(status)) return status;
    // A window shows what the host did not find by its name.
    if (found.owner == DrawingOwner::Nobody && run.windows.Show(open.drawing)) {
        found.owner = DrawingOwner::User;
        found.isLeft = !run.takesUsers;
        if (found.isLeft) return PRO_TK_NO_ERROR;
    }
    open.erases = found.owner == DrawingOwner::Nobody;

    step = kStepReadSheets;
    int count = 0;
    status = ProDrawingSheetsCount(open.drawing, &count);
    for (int number = kFirstSheet; number <= count && !Failed(status); ++number) {
        SheetState& sheet = found.sheets.emplace_back(SheetState{number});
        status = SheetSizeGet(open.drawing, number, sheet.size);
        if (!Failed(status)) status = FormatNameGet(open.drawing, number, sheet.format);
    }
    if (Failed(status)) return status;
    step = kStepReadTables;
    status = TablesRead(open);
    for (SheetState& sheet : found.sheets)
        sheet.formatTables = static_cast<std::size_t>(std::ranges::count_if(
            open.tables, [&](const FormatTable& table) { return StandsOn(table, sheet.number); }));
    return status;
}

// No format is no failure.
static ProError FormatNameGet(ProDrawing drawing, int sheet, std::wstring& format) {
    ProName name = {};
    const ProError status = ProDrawingFormatGet(drawing, sheet, name);
    if (status == PRO_TK_E_NOT_FOUND || status == PRO_TK_NOT_EXIST) return PRO_TK_NO_ERROR;
    if (!Failed(status)) format = name;
    return status;
}

static ProError TablesRead(OpenDrawing& open) {
    HostArray<ProDwgtable> tables;
    ProError status = tables.Received(ProDrawingTablesCollect(open.drawing, tables.Receive()));
    if (status == PRO_TK_E_NOT_FOUND) return PRO_TK_NO_ERROR;
    if (Failed(status)) return status;
    std::span<ProDwgtable> all;
    status = ItemsGet(tables, all);
    if (Failed(status)) return status;
    for (ProDwgtable& table : all) {
        ProBoolean isOfFormat = PRO_B_FALSE;
        status = ProDwgtableIsFromFormat(&table, &isOfFormat);
        if (Failed(status)) return status;
        if (isOfFormat != PRO_B_TRUE) continue;
        FormatTable& found = open.tables.emplace_back(FormatTable{table, {}});
        status = TableSheetsGet(table, found.sheets);
        if (Failed(status)) return status;
    }
    return PRO_TK_NO_ERROR;
}

static ProError TableSheetsGet(ProDwgtable& table, std::vector<int>& sheets) {
    int count = 0;
    ProError status = ProDwgtableSegCount(&table, &count);
    for (int i = 0; i < count && !Failed(status); ++i)
        status = ProDwgtableSegSheetGet(&table, count == 1 ? kOnlySegment : i, &sheets.emplace_back());
    return status;
}

static bool StandsOn(const FormatTable& table, int sheet) {
    return std::ranges::find(table.sheets, sheet) != table.sheets.end();
}

// The sheet that was current is so again, and the window is closed, before the drawing is saved.
static ProError SheetsReplace(FormatRun& run, OpenDrawing& open, const DrawingFormats& found,
                              const wchar_t*& step) {
    std::wstring name;
    step = kStepWindow;
    ProError status = ModelNameGet(open.drawing, name);
    if (Failed(status)) return status;
    DrawingWindow window(run.windows);
    status = window.Open(name, open.drawing);
    if (Failed(status)) return status;
    SheetTurn turn(open.drawing);
    for (const SheetState& sheet : found.sheets) {
        if (FateOf(sheet, run.request) != SheetFate::Replaced) continue;
        step = kStepTurn;
        status = turn.To(sheet.number);
        if (!Failed(status)) status = SheetReplace(run, open, sheet.number, step);
        if (Failed(status)) return status;
    }
    return PRO_TK_NO_ERROR;
}

// A format brings its tables and leaves those of the one before it where they are.
static ProError SheetReplace(FormatRun& run, OpenDrawing& open, int sheet, const wchar_t*& step) {
    step = kStepDropTables;
    for (FormatTable& table : open.tables) {
        if (!StandsOn(table, sheet)) continue;
        const ProError status = ProDwgtableDelete(&table.table, 0);
        if (Failed(status)) return status;
        // One that goes over several sheets is gone from all of them.
        table.sheets.clear();
    }
    step = kStepFormat;
    const ProError status =
        ProDrawingFormatAdd(open.drawing, sheet, nullptr, run.format, run.request.formatSheet);
    if (Failed(status)) return status;
    step = kStepRefresh;
    return ProDwgSheetRegenerate(open.drawing, sheet);
}

static void RecordSheets(const FormatRun& run, const std::wstring& name, const DrawingFormats& found,
                         BatchRun& batch) {
    bool isAny = false;
    for (const SheetState& sheet : found.sheets) {
        const SheetFate fate = FateOf(sheet, run.request);
        if (fate == SheetFate::NotWanted) continue;
        isAny = true;
        const bool isSkipped = fate == SheetFate::HasTables;
        std::wstring note = SheetPlanText(sheet, run.request);
        if (!isSkipped && found.owner == DrawingOwner::User) note += std::wstring(L"；") + kUnsavedNote;
        batch.Add({name,
                   isSkipped ? kStepTyped : kStepFormat,
                   PRO_TK_NO_ERROR,
                   {},
                   false,
                   isSkipped,
                   std::move(note)});
    }
    if (!isAny) batch.Add({name, kStepNoSheet, PRO_TK_NO_ERROR, {}, false, true});
}

}  // namespace kv
