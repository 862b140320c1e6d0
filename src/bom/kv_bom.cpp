// KvBom: the bill of materials of an assembly.
//
// Two lists take turns in one table: the summed list has each model once, with its number on all levels; the
// level list follows the tree. The columns behind the first are the user's, from the settings. A click on a
// title sorts, a filter keeps the rows with a text, a double click opens a row's model. The list stays in
// memory while the dialog is open: what the table shows of it is a matter of the view, and every export is
// whole.

#include "bom/kv_bom.h"

#include <string>
#include <utility>

#include <ProMdl.h>
#include <ProUIDialog.h>

#include "base/number.h"
#include "base/status.h"
#include "base/text.h"
#include "bom/bom_column_choice.h"
#include "bom/bom_compare_dialog.h"
#include "bom/bom_export.h"
#include "bom/bom_list.h"
#include "bom/bom_table.h"
#include "bom/bom_view.h"
#include "model/current_model.h"
#include "model/model_data.h"
#include "model/refusals.h"
#include "settings/settings_store.h"
#include "ui/dialog.h"
#include "ui/picture.h"
#include "ui/shell.h"

namespace kv {

static constexpr char kFormChoice[] = "BomRadio";
static constexpr char kSummedForm[] = "SumBom";
static constexpr char kLevelForm[] = "LevelBom";
static constexpr char kLevelLimit[] = "LevelOption";
static constexpr wchar_t kAllLevels[] = L"25";
static constexpr char kFilter[] = "BomFilter";
static constexpr char kShownCount[] = "BomShown";
static constexpr char kLeftOutLine[] = "BomLeftOut";
static constexpr wchar_t kShownStart[] = L"显示 ";
static constexpr char kPictureArea[] = "DrawingArea";
// An assembly with a single component needs no list.
static constexpr std::size_t kLeastPlacements = 2;

struct BomState {
    ProMdl current = nullptr;  // when the dialog was opened
    BomSource source = {};
    BomSheet sheet = {};  // what is loaded
    int deepest = 0;      // level of a list by level
    BomView view = {};
    bool opened = false;
    bool elsewhere = false;  // a double click has put another model on the screen
};

static void FillDialog(BomState& state);
static void OnForm(BomState& state);
static void OnLoad(BomState& state);
static void OnTitle(BomState& state);
static void OnFilter(BomState& state);
static void OnOpenRow(BomState& state);
static void OnPictureArea();
static void OnEditSettings();
static void OnColumns(BomState& state);
static void OnExport(BomState& state);
static void OnExportCsv(BomState& state);
static void OnExportPage(BomState& state);
static void OnCompare(BomState& state);
static void ShowStart(BomState& state);
static void ListDrop(BomState& state);
static void ListLoad(BomState& state, BomList list);
static void ViewShow(const BomState& state);
static BomForm ChosenForm();
static ProError ChosenLevelGet(int& deepest);
static std::string ModelNameColumn();

ProError KvBom() {
    BomState state;
    ProMdl assembly = nullptr;
    ProError status = ProMdlCurrentGet(&state.current);
    if (!Failed(status)) status = CurrentAssemblyGet(kAssembliesOnly, assembly);
    if (Failed(status)) return status;
    status = BomSourceGet(assembly, state.source);
    if (Failed(status) || state.source.placed.size() < kLeastPlacements) return status;

    status = RunDialog(kBomDialog,
                       {
                           Chosen<OnForm>(kFormChoice),
                           Activated<OnOpenRow>(kBomTable.component),
                           TitleClicks<OnTitle>(kBomTable.component),
                           Shown<OnPictureArea>(kPictureArea),
                           Pressed<OnEditSettings>("KvOpenBomIni"),
                           Pressed<OnForm>("KvUpdateBomIni"),
                           Pressed<OnLoad>("KvLoadBom"),
                           Pressed<OnFilter>("KvFilterBom"),
                           Pressed<OnColumns>("KvColumnsBom"),
                           Pressed<OnExport>("KvExportBom"),
                           Pressed<OnExportCsv>("KvExportCsv"),
                           Pressed<OnExportPage>("KvExportPage"),
                           Pressed<OnCompare>("KvCompareBom"),
                           Closes("Close"),
                       },
                       state, FillDialog);
    // A double click may have put another model on the screen.
    if (state.opened) ProMdlDisplay(state.current);
    return status;
}

static void FillDialog(BomState& state) {
    state.opened = true;
    RadioChoiceSet(kBomDialog, kFormChoice, kSummedForm);
    OptionLabelSet(kBomDialog, kLevelLimit, kAllLevels);
    TableReturnActivates(kBomTable);
    TableTitlesClickable(kBomTable);
    if (!Failed(BomColumnsReset(BomTitlesOfSettings(BomForm::Summed))))
        ListLoad(state, SummedBom(state.source));
    if (ChosenForm() == BomForm::Summed) OptionEnabledSet(kBomDialog, kLevelLimit, false);
}

// The rows come back with the next load.
static void OnForm(BomState& state) {
    const BomForm form = ChosenForm();
    OptionEnabledSet(kBomDialog, kLevelLimit, form == BomForm::Levels);
    ListDrop(state);
    state.view = {};
    (void)BomColumnsReset(BomTitlesOfSettings(form));
}

static void OnLoad(BomState& state) {
    ShowStart(state);
    ListDrop(state);
    if (Failed(TableRowsClear(kBomTable))) return;
    ProMdl assembly = nullptr;
    if (Failed(CurrentAssemblyGet(kAssembliesOnly, assembly))) return;
    const BomForm form = ChosenForm();
    if (form == BomForm::Levels && Failed(ChosenLevelGet(state.deepest))) return;
    BomSource source;
    if (Failed(BomSourceGet(assembly, source))) return;
    state.source = std::move(source);
    ListLoad(state,
             form == BomForm::Levels ? LevelBom(state.source, state.deepest) : SummedBom(state.source));
}

static void OnTitle(BomState& state) {
    const std::string column = ClickedColumn(kBomTable);
    if (column.empty()) return;
    TitleClicked(state.view, column);
    ViewShow(state);
}

static void OnFilter(BomState& state) {
    state.view.filter = InputText(kBomDialog, kFilter);
    ViewShow(state);
}

// The table knows a row's model by its name and, through the colour, its type.
static void OnOpenRow(BomState& state) {
    ProUIDialogAboveactivewindowSet(HostName(kBomDialog), PRO_B_TRUE);
    const std::string row = SelectedRow(kBomTable);
    const std::string column = ModelNameColumn();
    if (row.empty() || column.empty()) return;

    const std::wstring name = CellText(kBomTable, row, column);
    const bool isAssembly = CellHasColor(kBomTable, row, column, kAssemblyColor);
    ProMdl model = nullptr;
    const ProMdlfileType type = isAssembly ? PRO_MDLFILE_ASSEMBLY : PRO_MDLFILE_PART;
    if (name.empty() || Failed(ModelRetrieveByType(name, type, model))) return;
    state.elsewhere = true;
    ProMdlDisplay(model);
}

static void OnPictureArea() {
    ShowPicture(kBomDialog, kPictureArea);
}

static void OnEditSettings() {
    const std::wstring path = SettingsPath(kBomSettings);
    if (!path.empty()) EditTextFile(path);
}

// The list that is loaded, under other columns.
static void OnColumns(BomState& state) {
    std::vector<std::wstring> titles;
    if (!BomColumnsChoose(state.sheet, titles)) return;
    const BomForm form = state.sheet.form;
    // What is shown stands under columns that go now.
    ListDrop(state);
    state.view = {};
    if (Failed(BomColumnsReset(BomTitlesOf(titles, form)))) return;
    ListLoad(state,
             form == BomForm::Levels ? LevelBom(state.source, state.deepest) : SummedBom(state.source));
}

static void OnExport(BomState& state) {
    ShowStart(state);
    BomExport(state.sheet);
}

static void OnExportCsv(BomState& state) {
    ShowStart(state);
    BomCsvExport(state.sheet);
}

// The summed list has no level of its own: the tree beside it goes down to the one that the dialog shows.
static void OnExportPage(BomState& state) {
    ShowStart(state);
    const bool isKnown = state.sheet.form == BomForm::Levels || !Failed(ChosenLevelGet(state.deepest));
    if (isKnown) BomPageExport(state.source, state.sheet, state.deepest);
}

static void OnCompare(BomState& state) {
    ShowStart(state);
    BomCompare(state.sheet);
}

// What is loaded and exported is the assembly that the dialog was opened for.
static void ShowStart(BomState& state) {
    if (state.elsewhere) state.elsewhere = Failed(ProMdlDisplay(state.current));
}

static void ListDrop(BomState& state) {
    state.sheet = {};
    InputTextSet(kBomDialog, kShownCount, {});
    InputTextSet(kBomDialog, kLeftOutLine, {});
}

// The list under the columns that the table has, in the view that the user has chosen.
static void ListLoad(BomState& state, BomList list) {
    std::vector<BomTitle> titles;
    if (Failed(BomTitlesGet(list.form, titles))) return;
    state.sheet = BomSheetOf(state.source, std::move(list), std::move(titles));
    state.view.filter = InputText(kBomDialog, kFilter);
    ViewShow(state);
    InputTextSet(kBomDialog, kLeftOutLine, LeftOutText(state.source.left, state.sheet.skeletons));
}

static void ViewShow(const BomState& state) {
    if (Failed(TableRowsClear(kBomTable))) return;
    const std::vector<unsigned int> order = BomOrder(state.sheet, state.view);
    (void)BomRowsShow(state.sheet, order);
    InputTextSet(
        kBomDialog, kShownCount,
        kShownStart + std::to_wstring(order.size()) + L" / " + std::to_wstring(state.sheet.rows.size()));
}

static BomForm ChosenForm() {
    return RadioChoice(kBomDialog, kFormChoice) == kLevelForm ? BomForm::Levels : BomForm::Summed;
}

static ProError ChosenLevelGet(int& deepest) {
    std::wstring limit;
    const ProError status = OptionLabelGet(kBomDialog, kLevelLimit, limit);
    return Failed(status) ? status : IntegerFromText(limit, deepest);
}

// Empty when the user has no such column.
static std::string ModelNameColumn() {
    std::vector<TableColumn> columns;
    if (Failed(TableColumnsGet(kBomTable, columns))) return {};
    for (const TableColumn& column : columns)
        if (BomColumnOf(column.title, ChosenForm()) == BomColumn::ModelName) return column.name;
    return {};
}

}  // namespace kv
