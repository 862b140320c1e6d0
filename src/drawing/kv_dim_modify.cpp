// KvDimModify: the texts of several dimensions of a drawing.
//
// The dialog ends for a pick and comes again as it was. Each press makes a plan of new texts from the fields,
// shows it, and, for 应用, writes it.

#include "drawing/kv_dim_modify.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>
#include <vector>

#include <ProDrawing.h>

#include "base/status.h"
#include "drawing/dimension_item.h"
#include "drawing/dimension_text.h"
#include "drawing/scale_push.h"
#include "model/batch_run.h"
#include "model/selection.h"
#include "ui/dialog.h"
#include "ui/message_box.h"
#include "ui/table.h"

namespace kv {

static constexpr char kTextsDialog[] = "KvDimModify";
static constexpr TableName kTextsTable = {kTextsDialog, "dim_list"};
static constexpr char kOldText[] = "old_text";
static constexpr char kNewText[] = "new_text";
static constexpr char kTextNote[] = "note";
static constexpr char kPrefixInput[] = "DimPrefix";
static constexpr char kSuffixInput[] = "DimSuffix";
static constexpr char kBelowArea[] = "DimBelow";
static constexpr char kRuleChoice[] = "DimRule";
static constexpr char kRuleAdd[] = "Add";
static constexpr char kRuleReplace[] = "Replace";
static constexpr char kInsertChoice[] = "InsertAt";
static constexpr char kInsertPrefix[] = "Prefix";
static constexpr char kInsertSuffix[] = "Suffix";

static constexpr wchar_t kDrawingsOnly[] = L"\t此功能仅工程图环境可用！\t";
static constexpr wchar_t kNoDimension[] = L"\t没有可修改文字的尺寸\t";
static constexpr wchar_t kNotWritten[] = L"以下尺寸的文字未能修改：";
static constexpr wchar_t kReadOnlyOwner[] = L"所在模型只读，跳过";
static constexpr wchar_t kSeparator[] = L" ┃ ";
static constexpr wchar_t kTooLong[] = L"有一行超过80个字符";
static constexpr wchar_t kSignTyped[] = L"文字中不能有 @D、@O、@S，原文字中须有尺寸值";
static constexpr wchar_t kStepWriteText[] = L"写入尺寸文字";
static constexpr wchar_t kStepReadOnly[] = L"模型只读";
static constexpr wchar_t kStepUndoText[] = L"恢复尺寸文字";
static constexpr wchar_t kDimensionItems[] = L"尺寸";

// A button and what it inserts.
struct InsertRow {
    const char* button;
    const wchar_t* text;
};
static constexpr InsertRow kInsertRows[] = {
    {"InsDiameter", L"Ø"},   {"InsPlusMinus", L"±"},  {"InsDegree", L"°"},     {"InsTimes", L"×"},
    {"InsEqually", L"均布"}, {"InsThrough", L"通孔"}, {"InsMatched", L"配作"}, {"InsBothEnds", L"两端"},
};

// What the fields hold, also while the dialog is away.
struct TextFields {
    std::wstring prefix = {};
    std::wstring suffix = {};
    std::wstring below = {};
    std::string rule = kRuleAdd;
    std::string insertAt = kInsertPrefix;
};

struct PlannedText {
    DimensionLines lines = {};
    ProError status = PRO_TK_NO_ERROR;
};

struct TextsDialog {
    ProDrawing drawing = nullptr;
    std::vector<DimensionItem> dimensions = {};
    TextFields fields = {};
    DimensionUndo undo = {};
    bool picksAgain = false;
    std::wstring report = {};
};

static ProError ShowTextsDialog(TextsDialog& dialog);
static void FillTextsDialog(TextsDialog& dialog);
static void OnInsert(const TextsDialog& dialog, const char* component);
static void OnPreview(TextsDialog& dialog);
static void OnWriteTexts(TextsDialog& dialog);
static void OnPlainTexts(TextsDialog& dialog);
static void OnUndoTexts(TextsDialog& dialog);
static void OnPickAgain(TextsDialog& dialog);
static void OnShowTextsReport(const TextsDialog& dialog);
static ProError FieldsRead(TextFields& fields);
static DimensionTextChange ChangeOf(const TextFields& fields);
static PlannedText PlanFor(const DimensionItem& dimension, const DimensionTextChange& change);
static std::wstring PlanNote(const DimensionItem& dimension, const PlannedText& plan);
static void PlanShow(const TextsDialog& dialog, const DimensionTextChange& change);
static void PlanWrite(TextsDialog& dialog, const DimensionTextChange& change);
static RunEntry TextEntry(const TextsDialog& dialog, std::size_t index);

ProError KvDimModify() {
    TextsDialog dialog;
    ProError status = CurrentDrawingGet(dialog.drawing);
    if (Failed(status)) return ShowFailure(kDrawingsOnly, status);
    dialog.dimensions = SelectedDimensions();
    if (dialog.dimensions.empty()) status = DimensionsPick(kNoLimit, dialog.dimensions);
    if (Failed(status)) return status;
    if (dialog.dimensions.empty()) return ShowFailure(kNoDimension, PRO_TK_USER_ABORT);
    status = ShowTextsDialog(dialog);
    while (!Failed(status) && dialog.picksAgain) {
        std::vector<DimensionItem> picked;
        // A pick that comes to nothing leaves the dimensions that there were.
        if (!Failed(DimensionsPick(kNoLimit, picked)) && !picked.empty())
            dialog.dimensions = std::move(picked);
        status = ShowTextsDialog(dialog);
    }
    return status;
}

static ProError ShowTextsDialog(TextsDialog& dialog) {
    dialog.picksAgain = false;
    DialogRows<TextsDialog> rows = {
        Pressed<OnPreview>("KvPreview"),     Pressed<OnWriteTexts>("ApplyBt"),
        Pressed<OnPlainTexts>("KvDefault"),  Pressed<OnUndoTexts>("KvUndo"),
        Pressed<OnPickAgain>("KvPickAgain"), Pressed<OnShowTextsReport>("KvShowReport"),
        Chosen<OnPreview>(kRuleChoice),      Closes("Close"),
    };
    for (const InsertRow& row : kInsertRows) rows.push_back(Pressed<OnInsert>(row.button));
    return RunDialog(kTextsDialog, rows, dialog, FillTextsDialog);
}

static void FillTextsDialog(TextsDialog& dialog) {
    InputTextSet(kTextsDialog, kPrefixInput, dialog.fields.prefix);
    InputTextSet(kTextsDialog, kSuffixInput, dialog.fields.suffix);
    AreaTextSet(kTextsDialog, kBelowArea, dialog.fields.below);
    RadioChoiceSet(kTextsDialog, kRuleChoice, dialog.fields.rule);
    RadioChoiceSet(kTextsDialog, kInsertChoice, dialog.fields.insertAt);
    // What the table does not show is not changed either.
    if (Failed(TableRowsNumber(kTextsTable, dialog.dimensions.size()))) dialog.dimensions.clear();
    for (std::size_t i = 0; i < dialog.dimensions.size(); ++i) {
        const DimensionItem& dimension = dialog.dimensions[i];
        const std::string row = std::to_string(i + 1);
        CellTextSet(kTextsTable, row, "num", std::to_wstring(i + 1));
        CellTextSet(kTextsTable, row, "symbol", dimension.symbol);
        CellTextSet(kTextsTable, row, "value", dimension.value);
        CellTextSet(kTextsTable, row, "owner", dimension.owner);
    }
    PlanShow(dialog, ChangeOf(dialog.fields));
}

static void OnInsert(const TextsDialog& dialog, const char* component) {
    const std::string button = component;
    const auto* row =
        std::ranges::find_if(kInsertRows, [&](const InsertRow& one) { return button == one.button; });
    TextFields fields;
    if (row == std::end(kInsertRows) || Failed(FieldsRead(fields))) return;
    if (fields.insertAt == kInsertPrefix) {
        InputTextSet(kTextsDialog, kPrefixInput, fields.prefix + row->text);
    } else if (fields.insertAt == kInsertSuffix) {
        InputTextSet(kTextsDialog, kSuffixInput, fields.suffix + row->text);
    } else {
        AreaTextSet(kTextsDialog, kBelowArea, fields.below + row->text);
    }
    if (!Failed(FieldsRead(fields))) PlanShow(dialog, ChangeOf(fields));
}

static void OnPreview(TextsDialog& dialog) {
    if (!Failed(FieldsRead(dialog.fields))) PlanShow(dialog, ChangeOf(dialog.fields));
}

static void OnWriteTexts(TextsDialog& dialog) {
    // A field that cannot be read might be the one that counts.
    if (!Failed(FieldsRead(dialog.fields))) PlanWrite(dialog, ChangeOf(dialog.fields));
}

static void OnPlainTexts(TextsDialog& dialog) {
    DimensionTextChange plain;
    plain.replaces = true;
    PlanWrite(dialog, plain);
}

static void OnUndoTexts(TextsDialog& dialog) {
    const std::vector<DimensionItem>& kept = dialog.undo.Kept();
    BatchRun run(kTextsDialog, kept.size());
    for (const DimensionItem& former : kept) {
        const std::wstring name = former.symbol + L" (" + former.owner + L")";
        if (!run.Begin(name)) continue;
        const ProError status = DimensionRestore(former);
        run.Add({name, kStepUndoText, status});
        if (Failed(status)) continue;
        for (DimensionItem& listed : dialog.dimensions)
            if (IsSameDimension(listed, former)) listed = former;
    }
    dialog.report = run.ReportPath();
    DimensionsShow(dialog.drawing);
    OnPreview(dialog);
    ShowFailures(kNotWritten, run.Record());
    TellCount(run, kDimensionItems);
}

static void OnPickAgain(TextsDialog& dialog) {
    if (Failed(FieldsRead(dialog.fields))) return;
    dialog.picksAgain = true;
    DialogClose(kTextsDialog);
}

static void OnShowTextsReport(const TextsDialog& dialog) {
    ShowReport(dialog.report);
}

static ProError FieldsRead(TextFields& fields) {
    ProError status = InputTextGet(kTextsDialog, kPrefixInput, fields.prefix);
    if (!Failed(status)) status = InputTextGet(kTextsDialog, kSuffixInput, fields.suffix);
    if (!Failed(status)) status = AreaTextGet(kTextsDialog, kBelowArea, fields.below);
    fields.rule = RadioChoice(kTextsDialog, kRuleChoice);
    fields.insertAt = RadioChoice(kTextsDialog, kInsertChoice);
    return fields.rule.empty() && !Failed(status) ? PRO_TK_GENERAL_ERROR : status;
}

static DimensionTextChange ChangeOf(const TextFields& fields) {
    return {fields.prefix, fields.suffix, TypedLines(fields.below), fields.rule == kRuleReplace};
}

static PlannedText PlanFor(const DimensionItem& dimension, const DimensionTextChange& change) {
    PlannedText plan;
    plan.status = DimensionTextMake(dimension.lines, change, plan.lines);
    return plan;
}

static std::wstring PlanNote(const DimensionItem& dimension, const PlannedText& plan) {
    if (dimension.isReadOnly) return kReadOnlyOwner;
    if (!Failed(plan.status)) return {};
    return plan.status == PRO_TK_LINE_TOO_LONG ? kTooLong : kSignTyped;
}

static void PlanShow(const TextsDialog& dialog, const DimensionTextChange& change) {
    for (std::size_t i = 0; i < dialog.dimensions.size(); ++i) {
        const DimensionItem& dimension = dialog.dimensions[i];
        const PlannedText plan = PlanFor(dimension, change);
        const std::wstring note = PlanNote(dimension, plan);
        const std::string row = std::to_string(i + 1);
        CellTextSet(kTextsTable, row, kOldText, DimensionTextShown(dimension.lines, kSeparator));
        CellTextSet(kTextsTable, row, kNewText,
                    note.empty() ? DimensionTextShown(plan.lines, kSeparator) : std::wstring());
        CellTextSet(kTextsTable, row, kTextNote, note);
    }
}

static void PlanWrite(TextsDialog& dialog, const DimensionTextChange& change) {
    BatchRun run(kTextsDialog, dialog.dimensions.size());
    for (std::size_t i = 0; i < dialog.dimensions.size(); ++i) {
        DimensionItem& dimension = dialog.dimensions[i];
        const PlannedText plan = PlanFor(dimension, change);
        RunEntry entry = TextEntry(dialog, i);
        if (!run.Begin(entry.model)) continue;
        entry.status = dimension.isReadOnly ? PRO_TK_NO_ERROR : plan.status;
        entry.skipped = dimension.isReadOnly || (!Failed(plan.status) && plan.lines == dimension.lines);
        if (dimension.isReadOnly) entry.step = kStepReadOnly;
        if (!entry.skipped && !Failed(entry.status)) {
            dialog.undo.Keep(dimension);
            entry.note = DimensionTextShown(dimension.lines, kSeparator);
            entry.status = DimensionTextWrite(dimension, plan.lines);
        }
        run.Add(std::move(entry));
    }
    dialog.report = run.ReportPath();
    DimensionsShow(dialog.drawing);
    PlanShow(dialog, ChangeOf(dialog.fields));
    ShowFailures(kNotWritten, run.Record());
    TellCount(run, kDimensionItems);
    ShowCancelled(run);
}

// By its row, for it is there that the user finds it.
static RunEntry TextEntry(const TextsDialog& dialog, std::size_t index) {
    const DimensionItem& dimension = dialog.dimensions[index];
    return {L"第" + std::to_wstring(index + 1) + L"行 " + dimension.symbol + L" (" + dimension.owner + L")",
            kStepWriteText};
}

}  // namespace kv
