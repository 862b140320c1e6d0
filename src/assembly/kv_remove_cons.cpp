// KvRemoveCons: selected components lose their constraints and stay where they are.
//
// The list tells what would happen before anything does. What the constraints were is written to the report,
// in words, for nothing brings them back.

#include "assembly/kv_remove_cons.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include <ProMdl.h>
#include <ProWindows.h>

#include "assembly/component_ties.h"
#include "assembly/constraint_words.h"
#include "base/host_handle.h"
#include "base/status.h"
#include "model/batch_run.h"
#include "model/current_model.h"
#include "model/selection.h"
#include "ui/dialog.h"
#include "ui/message_box.h"
#include "ui/table.h"

namespace kv {

static constexpr char kRemoveDialog[] = "KvRemoveCons";
static constexpr TableName kTiesTable = {kRemoveDialog, "comp_list"};
static constexpr char kTickColumn[] = "use";
static constexpr char kTiedName[] = "comp_name";
static constexpr char kTieCount[] = "count";
static constexpr char kTieWords[] = "constraints";
static constexpr char kTieNote[] = "note";
static constexpr char kTickSource[] = "comp_tick";
static constexpr char kWayChoice[] = "RemoveWay";
static constexpr char kWayFix[] = "Fix";
static constexpr char kWayFree[] = "Free";

static constexpr wchar_t kNoAssemblyToFree[] = L"\t当前激活的模型不是组件/制造，无法移除元件约束\t";
static constexpr wchar_t kNothingToFree[] = L"\t请先选择需要移除约束的元件\t";
static constexpr wchar_t kNothingTicked[] = L"\t请先勾选需要移除约束的元件\t";
static constexpr wchar_t kNoComponent[] = L"不是元件";
static constexpr wchar_t kMovableNote[] = L"约束后仍可运动（连接或接口），默认不勾选";
static constexpr wchar_t kFixedNote[] = L"已固定";
static constexpr wchar_t kFreedNote[] = L"已移除约束";
static constexpr wchar_t kRefusedNote[] = L"未能完成，见报告";
static constexpr wchar_t kFormerNote[] = L"原约束：";
static constexpr wchar_t kNoFormer[] = L"无";
static constexpr wchar_t kTiedItems[] = L"元件";

struct TiedRow {
    ComponentTies ties;
    std::string tick = {};  // name of its check button; empty: it cannot be chosen
};

struct RemoveDialog {
    ProMdl assembly = nullptr;
    std::vector<TiedRow> rows = {};
    std::wstring report = {};
};

static ProError RowsOfSelection(RemoveDialog& dialog);
static void FillRemoveDialog(RemoveDialog& dialog);
static void OnRelease(RemoveDialog& dialog);
static void OnShowTieReport(const RemoveDialog& dialog);
static bool IsTicked(const TiedRow& row);
static void ReleaseRow(RemoveDialog& dialog, std::size_t index, Released released, BatchRun& run);
static void RowShow(std::size_t index, const ComponentTies& ties, const std::wstring& note);

ProError KvRemoveCons() {
    RemoveDialog dialog;
    ProError status = ActiveAssemblyGet(kNoAssemblyToFree, dialog.assembly);
    if (!Failed(status)) status = RowsOfSelection(dialog);
    if (Failed(status)) return status;
    return RunDialog(kRemoveDialog,
                     {
                         Pressed<OnRelease>("ApplyBt"),
                         Pressed<OnShowTieReport>("KvShowReport"),
                         Closes("Close"),
                     },
                     dialog, FillRemoveDialog);
}

// A component that is selected twice, or by two ways to its assembly, is one.
static ProError RowsOfSelection(RemoveDialog& dialog) {
    SelectionArray selections;
    const ProError status = SelectionRead(selections);
    if (Failed(status)) return ShowFailure(kNothingToFree, status);
    for (ProSelection selection : Items(selections)) {
        ProAsmcomp component = {};
        if (Failed(SelectedComponentGet(selection, component))) {
            dialog.rows.push_back({{component, L"-", {}, kNoComponent}});
            continue;
        }
        const bool isListed = std::ranges::any_of(dialog.rows, [&](const TiedRow& row) {
            const ProAsmcomp& listed = row.ties.component;
            return listed.owner == component.owner && listed.id == component.id && row.ties.name != L"-";
        });
        if (!isListed) dialog.rows.push_back({TiesRead(dialog.assembly, component)});
    }
    return PRO_TK_NO_ERROR;
}

static void FillRemoveDialog(RemoveDialog& dialog) {
    RadioChoiceSet(kRemoveDialog, kWayChoice, kWayFix);
    if (Failed(TableRowsNumber(kTiesTable, dialog.rows.size()))) return;
    for (std::size_t i = 0; i < dialog.rows.size(); ++i) {
        TiedRow& row = dialog.rows[i];
        const std::string number = std::to_string(i + 1);
        const bool isMovable = row.ties.leftOut.empty() && row.ties.isMovable;
        RowShow(i, row.ties, isMovable ? kMovableNote : row.ties.leftOut);
        if (!row.ties.leftOut.empty()) continue;
        const std::string tick = kTickSource + number;
        if (Failed(CellComponentSet(kTiesTable, number, kTickColumn, kTickSource, tick))) continue;
        row.tick = tick;
        CheckTickedSet(kRemoveDialog, row.tick.c_str(), !isMovable);
    }
}

static void OnRelease(RemoveDialog& dialog) {
    const std::string way = RadioChoice(kRemoveDialog, kWayChoice);
    if (way != kWayFix && way != kWayFree) return;
    const Released released = way == kWayFix ? Released::Fixed : Released::Free;
    if (std::ranges::none_of(dialog.rows, IsTicked)) {
        ShowMessage(kNothingTicked);
        return;
    }
    BatchRun run(kRemoveDialog, dialog.rows.size());
    for (std::size_t i = 0; i < dialog.rows.size(); ++i)
        if (run.Begin(dialog.rows[i].ties.name)) ReleaseRow(dialog, i, released, run);
    dialog.report = run.ReportPath();
    ProTreetoolRefresh(dialog.assembly);
    ProWindowRepaint(PRO_VALUE_UNUSED);
    TellCount(run, kTiedItems);
    ShowCancelled(run);
}

static void OnShowTieReport(const RemoveDialog& dialog) {
    ShowReport(dialog.report);
}

// A box that cannot be read counts as empty: what it stands for is left alone.
static bool IsTicked(const TiedRow& row) {
    bool ticked = false;
    return !row.tick.empty() && !Failed(CheckTickedGet(kRemoveDialog, row.tick.c_str(), ticked)) && ticked;
}

static void ReleaseRow(RemoveDialog& dialog, std::size_t index, Released released, BatchRun& run) {
    TiedRow& row = dialog.rows[index];
    RunEntry entry = {row.ties.name, L"未勾选"};
    if (!IsTicked(row)) {
        entry.skipped = true;
        entry.note = row.ties.leftOut;
        run.Add(std::move(entry));
        return;
    }
    const std::wstring former = ConstraintWords(row.ties.types);
    entry.note = kFormerNote + (former.empty() ? kNoFormer : former);
    entry.status = TiesRelease(row.ties, released, entry.step);
    if (entry.status == PRO_TK_NO_CHANGE) {
        entry.status = PRO_TK_NO_ERROR;
        entry.skipped = true;
    }
    const bool isDone = !Failed(entry.status);
    // A step that failed may have come after the constraints had gone.
    if (!isDone) run.Add({entry.model, L"处理前", PRO_TK_NO_ERROR, {}, false, true, entry.note});
    run.Add(std::move(entry));
    row.ties = TiesRead(dialog.assembly, row.ties.component);
    RowShow(index, row.ties, !isDone ? kRefusedNote : released == Released::Fixed ? kFixedNote : kFreedNote);
    CheckTickedSet(kRemoveDialog, row.tick.c_str(), false);
}

static void RowShow(std::size_t index, const ComponentTies& ties, const std::wstring& note) {
    const std::string row = std::to_string(index + 1);
    CellTextSet(kTiesTable, row, kTiedName, ties.name);
    CellTextSet(kTiesTable, row, kTieCount, std::to_wstring(ties.types.size()));
    CellTextSet(kTiesTable, row, kTieWords, ConstraintWords(ties.types));
    CellTextSet(kTiesTable, row, kTieNote, note);
}

}  // namespace kv
