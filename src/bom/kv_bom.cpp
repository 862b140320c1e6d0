// KvBom: the bill of materials of an assembly.
//
// Two lists take turns in one table: the summed list has each model once, with its number on all levels; the
// level list follows the tree. The columns behind the first are the user's, from the settings. A double click
// opens a row's model, and the table can be exported as a workbook.

#include "bom/kv_bom.h"

#include <string>
#include <utility>

#include <ProMdl.h>
#include <ProUIDialog.h>

#include "base/number.h"
#include "base/status.h"
#include "base/text.h"
#include "bom/bom_export.h"
#include "bom/bom_list.h"
#include "bom/bom_table.h"
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
static constexpr char kPictureArea[] = "DrawingArea";
// An assembly with a single component needs no list.
static constexpr std::size_t kLeastPlacements = 2;

struct BomState {
    ProMdl current = nullptr;  // when the dialog was opened
    BomList list = {};         // to start with
    bool opened = false;
    bool elsewhere = false;  // a double click has put another model on the screen
};

static void FillDialog(BomState& state);
static void OnForm();
static void OnLoad(BomState& state);
static void OnOpenRow(BomState& state);
static void OnPictureArea();
static void OnEditSettings();
static void OnExport(BomState& state);
static void ShowStart(BomState& state);
static BomForm ChosenForm();
static ProError ChosenListGet(ProMdl assembly, BomList& list);
static std::string ModelNameColumn();

ProError KvBom() {
    BomState state;
    ProMdl assembly = nullptr;
    ProError status = ProMdlCurrentGet(&state.current);
    if (!Failed(status)) status = CurrentAssemblyGet(kAssembliesOnly, assembly);
    if (Failed(status)) return status;
    status = SummedBomGet(assembly, state.list);
    if (Failed(status) || state.list.placements < kLeastPlacements) return status;

    status = RunDialog(kBomDialog,
                       {
                           Chosen<OnForm>(kFormChoice),
                           Activated<OnOpenRow>(kBomTable.component),
                           Shown<OnPictureArea>(kPictureArea),
                           Pressed<OnEditSettings>("KvOpenBomIni"),
                           Pressed<OnForm>("KvUpdateBomIni"),
                           Pressed<OnLoad>("KvLoadBom"),
                           Pressed<OnExport>("KvExportBom"),
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
    const BomList list = std::move(state.list);
    if (!Failed(BomColumnsReset(BomForm::Summed))) (void)BomListShow(list);
    if (ChosenForm() == BomForm::Summed) OptionEnabledSet(kBomDialog, kLevelLimit, false);
}

// The rows come back with the next load.
static void OnForm() {
    const BomForm form = ChosenForm();
    OptionEnabledSet(kBomDialog, kLevelLimit, form == BomForm::Levels);
    (void)BomColumnsReset(form);
}

static void OnLoad(BomState& state) {
    ShowStart(state);
    if (Failed(TableRowsClear(kBomTable))) return;
    ProMdl assembly = nullptr;
    if (Failed(CurrentAssemblyGet(kAssembliesOnly, assembly))) return;
    BomList list;
    if (!Failed(ChosenListGet(assembly, list))) (void)BomListShow(list);
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

static void OnExport(BomState& state) {
    ShowStart(state);
    BomExport();
}

// What is loaded and exported is the assembly that the dialog was opened for.
static void ShowStart(BomState& state) {
    if (state.elsewhere) state.elsewhere = Failed(ProMdlDisplay(state.current));
}

static BomForm ChosenForm() {
    return RadioChoice(kBomDialog, kFormChoice) == kLevelForm ? BomForm::Levels : BomForm::Summed;
}

static ProError ChosenListGet(ProMdl assembly, BomList& list) {
    if (ChosenForm() == BomForm::Summed) return SummedBomGet(assembly, list);
    std::wstring limit;
    int deepest = 0;
    ProError status = OptionLabelGet(kBomDialog, kLevelLimit, limit);
    if (!Failed(status)) status = IntegerFromText(limit, deepest);
    return Failed(status) ? status : LevelBomGet(assembly, deepest, list);
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
