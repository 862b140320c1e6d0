// KvRename: new names for the models of an assembly, and for the drawings of their names.
//
// The table has a row for each model and an input for its new name. A run first tries every new name and
// renames nothing unless all are good; it leaves behind what leads back. The table can go to a file and come
// back from one, and new names can be made by rule.

#include "rename/kv_rename.h"

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <ProMdl.h>
#include <ProUIDialog.h>

#include "base/config_option.h"
#include "base/number.h"
#include "base/status.h"
#include "base/text.h"
#include "model/batch_run.h"
#include "model/current_model.h"
#include "model/model_data.h"
#include "model/parameter.h"
#include "model/parameter_text.h"
#include "model/refusals.h"
#include "rename/rename_check.h"
#include "rename/rename_file.h"
#include "rename/rename_rule.h"
#include "rename/rename_run.h"
#include "rename/rename_table.h"
#include "rename/rename_tree.h"
#include "rename/reverse_table.h"
#include "settings/settings_store.h"
#include "ui/dialog.h"
#include "ui/message_box.h"
#include "ui/shell.h"

namespace kv {

static constexpr char kFilter[] = "RenameFilter";
static constexpr char kFind[] = "FindText";
static constexpr char kReplacement[] = "ReplaceText";
static constexpr char kPrefix[] = "PrefixText";
static constexpr char kSuffix[] = "SuffixText";
static constexpr char kStart[] = "StartNumber";
static constexpr char kDigits[] = "NumberDigits";
static constexpr char kParameter[] = "NameParameter";

static constexpr wchar_t kSettings[] = L"KVconfig\\KvRename.ini";
static constexpr wchar_t kFilterSection[] = L"RenameFilter";
static constexpr wchar_t kStoreBack[] = L"override_store_back";
static constexpr wchar_t kOn[] = L"yes";
static constexpr wchar_t kOff[] = L"no";

static constexpr wchar_t kTableEmpty[] = L"\t\t重命名表格为空\t\t";
static constexpr wchar_t kDone[] = L"\t批量重命名操作已完成\t";
static constexpr wchar_t kTakenBack[] = L"\t已撤销上次重命名\t";
static constexpr wchar_t kNothingBack[] = L"\t没有可撤销的重命名\t";
static constexpr wchar_t kNoOption[] = L"\t无法设置选项 override_store_back，未做任何改动！\t";
static constexpr wchar_t kAllGood[] = L"\t全部新名称检查通过\t";
static constexpr wchar_t kNoNumber[] = L"\t起始编号和位数须为整数\t";
static constexpr wchar_t kLongStart[] = L"新名称 ";
static constexpr wchar_t kLongEnd[] = L" 长度大于32位，名称无效，请修改后再操作";

struct RenameDialog {
    ProMdl current = nullptr;  // when the dialog was opened
    ProMdl top = nullptr;
    RenameTree tree = {};
    WorkFolder folder = {};
    std::vector<ShownRow> shown = {};
    std::wstring report = {};  // path of the last run's
    // Rows that passed the check and wait for the host to give their names free, with their reverse table.
    std::vector<RenameRow> waiting = {};
    std::unique_ptr<ReverseTable> table = {};
};

static void FillDialog(RenameDialog& state);
static void OnArm();
static void OnStart(RenameDialog& state);
static void OnNamesFree(RenameDialog& state);
static void OnUndo(RenameDialog& state);
static void OnDropUnchanged(RenameDialog& state);
static void OnCheckAll(RenameDialog& state);
static void OnFillNames(const RenameDialog& state);
static void OnExport(const RenameDialog& state);
static void OnExportCsv(const RenameDialog& state);
static void OnLoad(RenameDialog& state);
static void OnLoadCsv(RenameDialog& state);
static void OnOpenFilter();
static void OnUpdateFilter(RenameDialog& state);
static void OnShowReport(const RenameDialog& state);
static ProError Refill(RenameDialog& state);
static ProError ReadRows(const RenameDialog& state, std::vector<RenameRow>& rows);
static void RunRename(RenameDialog& state, std::span<const RenameRow> rows);
static void ShowLoaded(RenameDialog& state, std::vector<LoadedRow> loaded);
static ProError StoreBackSet(std::optional<ChangedOption>& option);
static ProError RuleGet(RenameRule& rule);
static std::wstring BaseName(const RenameDialog& state, const RenameRow& row, const std::wstring& parameter);

ProError KvRename() {
    RenameDialog state;
    ProError status = CurrentAssemblyGet(kAssembliesOnly, state.top);
    if (!Failed(status)) status = ProMdlCurrentGet(&state.current);
    if (!Failed(status)) status = WorkFolderGet(state.folder);
    if (!Failed(status)) status = RenameTreeGet(state.top, state.tree);
    if (Failed(status)) return status;

    status = RunDialog(kRenameDialog,
                       {
                           Armed<OnArm>(kRenameTable.component),
                           Pressed<OnStart>("StartRename"),
                           Pressed<OnUndo>("KvUndoRename"),
                           Pressed<OnDropUnchanged>("KvDropUnchanged"),
                           Pressed<OnCheckAll>("KvCheckAll"),
                           Pressed<OnFillNames>("KvFillNames"),
                           Pressed<OnExport>("KvExportTab"),
                           Pressed<OnLoad>("KvLoadTab"),
                           Pressed<OnExportCsv>("KvExportCsv"),
                           Pressed<OnLoadCsv>("KvLoadCsv"),
                           Pressed<OnOpenFilter>("OpenRenameIni"),
                           Pressed<OnUpdateFilter>("UpdateRenameIni"),
                           Pressed<OnShowReport>("KvShowReport"),
                           Closes("Close"),
                       },
                       state, FillDialog);
    ProMdlDisplay(state.current);
    return status;
}

// ---- The table

static void FillDialog(RenameDialog& state) {
    const std::wstring filter = SettingRead(SettingsPath(kSettings), kFilterSection, kContentKey);
    InputTextSet(kRenameDialog, kFilter, filter);
    (void)TableSingleSelection(kRenameTable);
    (void)RenameRowsShow(RowsOf(state.tree, state.folder.names, filter), kOwnInput, state.shown);
}

// Whatever was renamed meanwhile is read anew.
static ProError Refill(RenameDialog& state) {
    ProError status = RenameRowsClear(state.shown);
    std::wstring filter;
    if (!Failed(status)) status = InputTextGet(kRenameDialog, kFilter, filter);
    WorkFolder folder;
    if (!Failed(status)) status = WorkFolderGet(folder);
    if (!Failed(status)) status = RenameTreeGet(state.top, state.tree);
    if (Failed(status)) return status;
    state.folder = std::move(folder);
    return RenameRowsShow(RowsOf(state.tree, state.folder.names, filter), kOwnInput, state.shown);
}

static void OnArm() {
    ProUIDialogAboveactivewindowSet(HostName(kRenameDialog), PRO_B_TRUE);
    const std::string row = FocusedRow(kRenameTable);
    if (row.empty()) return;
    const RenameRow wanted = {
        CellText(kRenameTable, row, "old_name"), CellText(kRenameTable, row, "type"), {}};
    ProMdl model = nullptr;
    if (wanted.oldName.empty()) return;
    if (Failed(ModelRetrieveByType(wanted.oldName, FileTypeOf(TypeOf(wanted)), model))) return;
    ProMdlDisplay(model);
}

static void OnOpenFilter() {
    const std::wstring path = SettingsPath(kSettings);
    if (!path.empty()) EditTextFile(path);
}

static void OnUpdateFilter(RenameDialog& state) {
    std::wstring filter;
    if (Failed(InputTextGet(kRenameDialog, kFilter, filter))) return;
    SettingWrite(SettingsPath(kSettings), kFilterSection, kContentKey, filter);
    (void)Refill(state);
}

static void OnDropUnchanged(RenameDialog& state) {
    std::vector<RenameRow> rows;
    if (Failed(ReadRows(state, rows))) return;
    std::vector<std::size_t> unchanged;
    for (std::size_t i = 0; i < rows.size(); ++i)
        if (UpperCase(rows[i].newName) == UpperCase(rows[i].oldName)) unchanged.push_back(i);
    if (!unchanged.empty()) (void)RenameRowsDrop(unchanged, state.shown);
}

static void OnCheckAll(RenameDialog& state) {
    std::vector<RenameRow> rows;
    if (Failed(ReadRows(state, rows)) || Failed(WorkFolderGet(state.folder))) return;
    if (rows.empty()) {
        ShowMessage(kTableEmpty);
        return;
    }
    const std::wstring list = FaultList(rows, state.tree, state.folder);
    ShowMessage(list.empty() ? kAllGood : list.c_str());
}

// The rows with their new names as they are used: no name has a blank in it.
static ProError ReadRows(const RenameDialog& state, std::vector<RenameRow>& rows) {
    const ProError status = RenameRowsRead(state.shown, rows);
    for (RenameRow& row : rows) row.newName = WithoutBlanks(row.newName);
    return status;
}

// ---- Renaming

static void OnStart(RenameDialog& state) {
    std::vector<RenameRow> rows;
    if (Failed(ReadRows(state, rows))) return;
    if (rows.empty()) {
        ShowMessage(kTableEmpty);
        return;
    }
    std::optional<ChangedOption> option;
    if (Failed(StoreBackSet(option))) {
        ShowMessage(kNoOption);
        return;
    }
    auto table = std::make_unique<ReverseTable>();
    WorkFolder folder;
    if (Failed(table->Begin())) {
        ShowMessage(kNoReverseTable);
        return;
    }
    if (Failed(WorkFolderGet(folder))) return;
    state.folder = std::move(folder);
    {
        BatchRun check(kRenameDialog, rows.size());
        state.report = check.ReportPath();
        if (Failed(NamesCheck(rows, state.folder, *table, check))) return;
    }
    state.table = std::move(table);
    state.waiting = std::move(rows);
    // A host that erases late has the first trial still.
    const RenameRow& first = state.waiting.front();
    const bool isTaken = IsInSession(first.newName, TypeOf(first));
    if (!isTaken || Failed(RunAfterAction<OnNamesFree>(kRenameDialog, state))) OnNamesFree(state);
}

// The option holds for the run of an action, and this may be the next one.
static void OnNamesFree(RenameDialog& state) {
    std::optional<ChangedOption> option;
    const ProError status = StoreBackSet(option);
    const std::vector<RenameRow> rows = std::exchange(state.waiting, {});
    if (Failed(status))
        ShowMessage(kNoOption);
    else
        RunRename(state, rows);
    state.table.reset();
}

static void RunRename(RenameDialog& state, std::span<const RenameRow> rows) {
    BatchRun run(kRenameDialog, rows.size());
    state.report = run.ReportPath();
    ModelsRename({state.current, state.tree, state.folder, *state.table, run}, rows);
    (void)Refill(state);
    TellCount(run, kModelItems);
    ShowCompletion(run, kDone);
}

static void OnUndo(RenameDialog& state) {
    const std::vector<RenameChange> changes = LastChangesBack();
    if (changes.empty()) {
        ShowMessage(kNothingBack);
        return;
    }
    std::optional<ChangedOption> option;
    if (Failed(StoreBackSet(option))) {
        ShowMessage(kNoOption);
        return;
    }
    ReverseTable table;
    if (Failed(table.Begin())) {
        ShowMessage(kNoReverseTable);
        return;
    }
    if (Failed(WorkFolderGet(state.folder))) return;
    BatchRun run(kRenameDialog, changes.size());
    state.report = run.ReportPath();
    ModelsRenameBack({state.current, state.tree, state.folder, table, run}, changes);
    (void)Refill(state);
    TellCount(run, kModelItems);
    ShowCompletion(run, kTakenBack);
}

static void OnShowReport(const RenameDialog& state) {
    ShowReport(state.report);
}

// Saves go to the working directory as long as `option` lives.
static ProError StoreBackSet(std::optional<ChangedOption>& option) {
    std::wstring before;
    const ProError status = ConfigOptionGet(kStoreBack, before);
    if (Failed(status)) return status;
    if (before.empty()) before = kOff;
    return option.emplace(kStoreBack, before, kOn).Status();
}

// ---- New names by rule

static void OnFillNames(const RenameDialog& state) {
    RenameRule rule;
    std::vector<RenameRow> rows;
    std::wstring parameter;
    if (Failed(RuleGet(rule)) || Failed(RenameRowsRead(state.shown, rows))) return;
    if (Failed(InputTextGet(kRenameDialog, kParameter, parameter))) return;
    std::vector<std::wstring> names;
    names.reserve(rows.size());
    for (const RenameRow& row : rows)
        names.push_back(NameByRule(rule, BaseName(state, row, WithoutBlanks(parameter)), names.size()));
    NewNamesShow(state.shown, names);
}

static ProError RuleGet(RenameRule& rule) {
    std::wstring start;
    std::wstring digits;
    ProError status = InputTextGet(kRenameDialog, kFind, rule.find);
    if (!Failed(status)) status = InputTextGet(kRenameDialog, kReplacement, rule.replacement);
    if (!Failed(status)) status = InputTextGet(kRenameDialog, kPrefix, rule.prefix);
    if (!Failed(status)) status = InputTextGet(kRenameDialog, kSuffix, rule.suffix);
    if (!Failed(status)) status = InputTextGet(kRenameDialog, kStart, start);
    if (!Failed(status)) status = InputTextGet(kRenameDialog, kDigits, digits);
    if (Failed(status) || start.empty()) return status;
    const bool areNumbers = (start + digits).find_first_not_of(L"0123456789") == std::wstring::npos;
    int first = 0;
    if (!areNumbers || Failed(IntegerFromText(start, first)) || Failed(IntegerFromText(digits, rule.digits)))
        return ShowFailure(kNoNumber, PRO_TK_NOT_VALID);
    rule.start = first;
    return status;
}

// What the rule works on: the value of the parameter where the model has one, else the old name.
static std::wstring BaseName(const RenameDialog& state, const RenameRow& row, const std::wstring& parameter) {
    const TreeModel* model = parameter.empty() ? nullptr : FindRow(state.tree, row);
    ProParamvalue value = {};
    if (model == nullptr || Failed(ParameterRead(model->model, parameter, value))) return row.oldName;
    const std::optional<std::wstring> text = ParameterText(value);
    return text && !text->empty() ? *text : row.oldName;
}

// ---- The table in files

static void OnExport(const RenameDialog& state) {
    std::vector<RenameRow> rows;
    if (!Failed(RenameRowsRead(state.shown, rows)))
        TableToWorkbook(state.tree.models.front().name, state.shown, rows);
}

static void OnExportCsv(const RenameDialog& state) {
    std::vector<RenameRow> rows;
    if (!Failed(RenameRowsRead(state.shown, rows)))
        TableToCsv(state.tree.models.front().name, state.shown, rows);
}

static void OnLoad(RenameDialog& state) {
    if (Failed(RenameRowsClear(state.shown))) return;
    std::vector<LoadedRow> loaded;
    if (TableFromWorkbook(loaded)) ShowLoaded(state, std::move(loaded));
}

static void OnLoadCsv(RenameDialog& state) {
    if (Failed(RenameRowsClear(state.shown))) return;
    std::vector<LoadedRow> loaded;
    if (TableFromCsv(loaded)) ShowLoaded(state, std::move(loaded));
}

// All rows are shown; of those with too long a name the first is told.
static void ShowLoaded(RenameDialog& state, std::vector<LoadedRow> loaded) {
    std::vector<RowContent> contents;
    std::wstring tooLong;
    for (LoadedRow& row : loaded) {
        const bool isTooLong = WithoutBlanks(row.row.newName).size() > kLongestNewName;
        if (isTooLong && tooLong.empty()) tooLong = row.row.newName;
        contents.push_back(RowOf(std::move(row), state.tree, state.folder.names));
    }
    (void)RenameRowsShow(std::move(contents), kLoadedInput, state.shown);
    if (!tooLong.empty()) ShowMessage((kLongStart + tooLong + kLongEnd).c_str());
}

}  // namespace kv
