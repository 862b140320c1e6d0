// KvBox: the box around each selected component and the current model, and the stock to cut it from.
//
// A box is read once for each choice of axes; allowances and rounding are worked out from what was read.

#include "assembly/kv_box.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <optional>
#include <set>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include <ProMdl.h>

#include "assembly/component_axes.h"
#include "assembly/stock_size.h"
#include "base/number.h"
#include "base/status.h"
#include "base/text.h"
#include "model/batch_run.h"
#include "model/current_model.h"
#include "model/model_box.h"
#include "model/model_data.h"
#include "model/parameter.h"
#include "model/run_reasons.h"
#include "model/selection.h"
#include "settings/dialog_settings.h"
#include "settings/settings_store.h"
#include "ui/clipboard.h"
#include "ui/dialog.h"
#include "ui/message_box.h"
#include "ui/prompt.h"
#include "ui/table.h"

namespace kv {

static constexpr char kBoxDialog[] = "KvBox";
static constexpr TableName kBoxTable = {kBoxDialog, "box_list"};
static constexpr wchar_t kBoxSettings[] = L"KVconfig\\KvBox.ini";
static constexpr char kAxesGroup[] = "AxesRadio";
static constexpr char kModelAxes[] = "Model";
static constexpr char kSystemAxes[] = "Csys";

static constexpr wchar_t kStepBoxUnit[] = L"读取长度单位";
static constexpr wchar_t kStepBoxPlace[] = L"读取元件位置";
static constexpr wchar_t kStepBoxSize[] = L"计算外形";
static constexpr wchar_t kStepStock[] = L"写入下料尺寸";
static constexpr wchar_t kStepSameModel[] = L"同一模型已由前面的行写入";

static constexpr wchar_t kNoSystem[] = L"\t请先选取坐标系！\t";
static constexpr wchar_t kBadSystem[] = L"\t无法读取所选坐标系：";
static constexpr wchar_t kBadStockNumber[] = L"\t余量和取整须为不小于0的数字！\t";
static constexpr wchar_t kNoStockNames[] = L"\t请至少输入一个参数名！\t";
static constexpr wchar_t kSameStockNames[] = L"\t四个参数名不能相同！\t";
static constexpr wchar_t kStockFailures[] = L"以下模型未能写入下料尺寸：";
static constexpr wchar_t kTableNotCopied[] = L"\t剪贴板被其他程序占用，表格未复制\t";
static constexpr wchar_t kTableCopied[] = L"表格已复制到剪贴板";
static constexpr wchar_t kPickSystem[] = L"请选取坐标系";
static constexpr char kBoxMessage[] = "Batch result:%0w";

static constexpr const char* kAllowances[] = {"AllowLength", "AllowWidth", "AllowHeight"};
static constexpr char kStep[] = "StockStep";
static constexpr char kStockTextName[] = "StockText";
static constexpr const char* kStockNames[] = {"StockLength", "StockWidth", "StockHeight"};
static constexpr DialogSetting kStockSettings[] = {
    {"AllowLength", SettingKind::Text, kContentKey}, {"AllowWidth", SettingKind::Text, kContentKey},
    {"AllowHeight", SettingKind::Text, kContentKey}, {"StockStep", SettingKind::Text, kContentKey},
    {"StockText", SettingKind::Text, kContentKey},   {"StockLength", SettingKind::Text, kContentKey},
    {"StockWidth", SettingKind::Text, kContentKey},  {"StockHeight", SettingKind::Text, kContentKey},
};

struct BoxRow {
    ProMdl model = nullptr;
    ComponentIds ids;  // empty: the current model
    std::wstring name;
    std::wstring unit;
    RunEntry read;           // what failed, or that nothing did
    StockExtents size = {};  // in millimetres, largest first
    StockExtents stock = {};
};

struct BoxDialog {
    ProMdl top = nullptr;
    std::vector<BoxRow> rows;
    BoxMatrix matrix = BoxMatrix::Unknown;
    std::optional<PickedSystem> system;
    bool usesSystem = false;
    ShownSettings shown = {};
    std::vector<std::wstring> fields;  // as they stood before a pick, in the order of the settings
    bool picks = false;                // it ended for that
    std::wstring report;
};

static ProError RowsOf(BoxDialog& dialog);
static void FillBoxDialog(BoxDialog& dialog);
static void OnAxesChosen(BoxDialog& dialog);
static void OnPickSystem(BoxDialog& dialog);
static void OnUpdateStock(BoxDialog& dialog);
static void OnWriteStock(BoxDialog& dialog);
static void OnCopyTable(BoxDialog& dialog);
static void OnBoxReport(BoxDialog& dialog);
static void ReadBoxes(BoxDialog& dialog);
static void ReadBox(BoxDialog& dialog, BoxRow& row);
static bool FieldRead(const char* field, std::wstring& text);
static bool StockRuleRead(StockRule& rule);
static bool UpdateTable(BoxDialog& dialog);
static std::array<std::wstring, 7> CellsOf(const BoxRow& row);
static bool StockNamesRead(std::wstring& text, std::array<std::wstring, 3>& names);
static ProError StockWrite(const BoxRow& row, const std::wstring& text,
                           const std::array<std::wstring, 3>& names);

ProError KvBox() {
    BoxDialog dialog;
    ProError status = RowsOf(dialog);
    if (Failed(status)) return status;
    ReadBoxes(dialog);
    do {
        dialog.picks = false;
        status = RunDialog(kBoxDialog,
                           {
                               Chosen<OnAxesChosen>(kAxesGroup),
                               Pressed<OnPickSystem>("PickCsys"),
                               Pressed<OnUpdateStock>("UpdateStock"),
                               Pressed<OnWriteStock>("WriteStock"),
                               Pressed<OnCopyTable>("CopyTable"),
                               Pressed<OnBoxReport>("KvShowReport"),
                               Closes("Close"),
                           },
                           dialog, FillBoxDialog);
        if (Failed(status) || !dialog.picks) return status;
        DisplayMessage(kBoxMessage, kPickSystem);
        PickedSystem system;
        const ProError picked = SystemPick(dialog.top, system);
        if (!Failed(picked)) {
            dialog.system = system;
            dialog.usesSystem = true;
            ReadBoxes(dialog);
        } else if (picked != PRO_TK_USER_ABORT && picked != PRO_TK_E_NOT_FOUND) {
            ShowMessage((kBadSystem + ReasonText({{}, L"", picked}) + L"\t").c_str());
        }
    } while (true);
}

// ---- What there is to measure

// The selected components and behind them the current model.
static ProError RowsOf(BoxDialog& dialog) {
    ProMdlType type = PRO_MDL_UNUSED;
    ProError status = CurrentSolidGet(dialog.top, type);
    if (!Failed(status) && type != PRO_MDL_ASSEMBLY && type != PRO_MDL_PART) status = PRO_TK_INVALID_TYPE;
    std::vector<SelectedComponent> selected;
    if (!Failed(status)) status = SelectedComponentsGet(dialog.top, selected);
    if (Failed(status)) return status;
    selected.push_back({{}, dialog.top});
    for (SelectedComponent& component : selected) {
        BoxRow row;
        row.model = component.model;
        row.ids = std::move(component.ids);
        if (Failed(ModelNameGet(row.model, row.name))) row.name = L"?";
        dialog.rows.push_back(std::move(row));
    }
    return PRO_TK_NO_ERROR;
}

static void ReadBoxes(BoxDialog& dialog) {
    for (BoxRow& row : dialog.rows) ReadBox(dialog, row);
}

static void ReadBox(BoxDialog& dialog, BoxRow& row) {
    LengthUnit unit;
    AxisDirections axes = kOwnAxes;
    Extents extents = {};
    row.read = {row.name, kStepBoxUnit, LengthUnitGet(row.model, unit)};
    row.unit = unit.name;
    if (Failed(row.read.status)) return;
    if (dialog.usesSystem && dialog.system) {
        row.read.step = kStepBoxPlace;
        axes = dialog.system->axes;
        if (!row.ids.empty())
            row.read.status = ComponentAxesGet(dialog.top, row.ids, dialog.system->axes, axes);
        if (Failed(row.read.status)) return;
    }
    row.read.step = kStepBoxSize;
    row.read.status = ModelExtentsGet(row.model, axes, dialog.matrix, extents);
    for (double& extent : extents) extent *= unit.millimetres;
    row.size = LargestFirst(extents);
}

// ---- The dialog

static void FillBoxDialog(BoxDialog& dialog) {
    DialogSettingsRestore(kBoxDialog, SettingsPath(kBoxSettings), kStockSettings);
    dialog.shown = DialogSettingsShown(kBoxDialog, kStockSettings);
    for (std::size_t i = 0; i < dialog.fields.size(); ++i)
        InputTextSet(kBoxDialog, kStockSettings[i].component, dialog.fields[i]);
    RadioChoiceSet(kBoxDialog, kAxesGroup, dialog.usesSystem ? kSystemAxes : kModelAxes);
    InputTextSet(kBoxDialog, "CsysName", dialog.system ? dialog.system->name : std::wstring());
    (void)UpdateTable(dialog);
}

static void OnAxesChosen(BoxDialog& dialog) {
    const bool wantsSystem = RadioChoice(kBoxDialog, kAxesGroup) == kSystemAxes;
    if (wantsSystem && !dialog.system) {
        RadioChoiceSet(kBoxDialog, kAxesGroup, kModelAxes);
        return ShowMessage(kNoSystem);
    }
    if (wantsSystem == dialog.usesSystem) return;
    dialog.usesSystem = wantsSystem;
    ReadBoxes(dialog);
    (void)UpdateTable(dialog);
}

static void OnPickSystem(BoxDialog& dialog) {
    dialog.fields.clear();
    for (const DialogSetting& setting : kStockSettings)
        dialog.fields.push_back(InputText(kBoxDialog, setting.component));
    dialog.picks = true;
    DialogClose(kBoxDialog);
}

static void OnUpdateStock(BoxDialog& dialog) {
    if (UpdateTable(dialog))
        DialogSettingsSave(kBoxDialog, SettingsPath(kBoxSettings), kStockSettings, dialog.shown);
}

// A model that stands in several rows gets the stock of the first.
static void OnWriteStock(BoxDialog& dialog) {
    std::wstring text;
    std::array<std::wstring, 3> names;
    if (!StockNamesRead(text, names) || !UpdateTable(dialog)) return;
    DialogSettingsSave(kBoxDialog, SettingsPath(kBoxSettings), kStockSettings, dialog.shown);
    BatchRun run(kBoxDialog, dialog.rows.size());
    dialog.report = run.ReportPath();
    std::set<ProMdl> written;
    for (const BoxRow& row : dialog.rows) {
        if (!run.Begin(row.name)) continue;
        RunEntry entry = row.read;
        if (!Failed(entry.status)) {
            entry.skipped = !written.insert(row.model).second;
            entry.step = entry.skipped ? kStepSameModel : kStepStock;
            if (!entry.skipped) entry.status = StockWrite(row, text, names);
            entry.note = entry.skipped ? std::wstring() : StockText(row.stock);
        }
        run.Add(std::move(entry));
    }
    TellCount(run, kModelItems);
    ShowCancelled(run);
    if (!run.Cancelled()) ShowFailures(kStockFailures, run.Record());
}

static void OnCopyTable(BoxDialog& dialog) {
    std::wstring text = L"模型\t单位\t长(mm)\t宽(mm)\t高(mm)\t下料尺寸\t备注\r\n";
    if (!UpdateTable(dialog)) return;
    for (const BoxRow& row : dialog.rows) {
        const std::array<std::wstring, 7> cells = CellsOf(row);
        for (std::size_t i = 0; i < cells.size(); ++i) text += (i > 0 ? L"\t" : L"") + cells[i];
        text += L"\r\n";
    }
    if (Failed(ClipboardTextSet(text))) return ShowMessage(kTableNotCopied);
    DisplayMessage(kBoxMessage, kTableCopied);
}

static void OnBoxReport(BoxDialog& dialog) {
    ShowReport(dialog.report);
}

// ---- Stock

// What stands in a field, without blanks. False for one that cannot be read: it is not the same as an empty
// one.
static bool FieldRead(const char* field, std::wstring& text) {
    if (Failed(InputTextGet(kBoxDialog, field, text))) return false;
    text = WithoutBlanks(text);
    return true;
}

// An empty field is 0. False, with a box, for what is no number or below 0.
static bool StockRuleRead(StockRule& rule) {
    double* const numbers[] = {&rule.allowance[0], &rule.allowance[1], &rule.allowance[2], &rule.step};
    const char* const fields[] = {kAllowances[0], kAllowances[1], kAllowances[2], kStep};
    for (std::size_t i = 0; i < std::size(numbers); ++i) {
        std::wstring text;
        const bool isRead = FieldRead(fields[i], text);
        const bool isNumber = text.find_first_not_of(L"0123456789.") == std::wstring::npos;
        if (!isRead || !isNumber || Failed(RealFromText(text, *numbers[i]))) {
            ShowMessage(kBadStockNumber);
            return false;
        }
    }
    return true;
}

// Works out the stock and shows it. False, with a box, when the numbers are none.
static bool UpdateTable(BoxDialog& dialog) {
    StockRule rule;
    if (!StockRuleRead(rule)) return false;
    std::size_t count = 0;
    if (Failed(TableRowCountGet(kBoxTable, count))) count = 0;
    const bool isFilled = count == dialog.rows.size();
    if (!isFilled &&
        (Failed(TableRowsClear(kBoxTable)) || Failed(TableRowsNumber(kBoxTable, dialog.rows.size()))))
        return false;
    static constexpr const char* kColumns[] = {"name", "unit", "length", "width", "height", "stock", "note"};
    for (std::size_t i = 0; i < dialog.rows.size(); ++i) {
        BoxRow& row = dialog.rows[i];
        row.stock = StockSize(row.size, rule);
        const std::array<std::wstring, 7> cells = CellsOf(row);
        for (std::size_t column = 0; column < cells.size(); ++column)
            CellTextSet(kBoxTable, std::to_string(i + 1), kColumns[column], cells[column]);
    }
    return true;
}

static std::array<std::wstring, 7> CellsOf(const BoxRow& row) {
    if (Failed(row.read.status))
        return {row.name, row.unit, L"", L"", L"", L"", row.read.step + (L"：" + ReasonText(row.read))};
    return {row.name,
            row.unit,
            MillimetreText(row.size[0]),
            MillimetreText(row.size[1]),
            MillimetreText(row.size[2]),
            StockText(row.stock),
            row.ids.empty() ? L"当前模型" : L""};
}

// Names of the text and of the three numbers; an empty one is not written. False, with a box, when all are
// empty or two are one.
static bool StockNamesRead(std::wstring& text, std::array<std::wstring, 3>& names) {
    bool isRead = FieldRead(kStockTextName, text);
    std::set<std::wstring> met;
    std::size_t filled = 0;
    for (std::size_t i = 0; i < names.size(); ++i) isRead = FieldRead(kStockNames[i], names[i]) && isRead;
    for (const std::wstring& name : {text, names[0], names[1], names[2]}) {
        if (name.empty()) continue;
        ++filled;
        met.insert(UpperCase(name));
    }
    if (isRead && filled > 0 && met.size() == filled) return true;
    ShowMessage(filled == 0 || !isRead ? kNoStockNames : kSameStockNames);
    return false;
}

// Errors: those of ParameterWrite, the first one; PRO_TK_LINE_TOO_LONG for a text that no parameter holds.
static ProError StockWrite(const BoxRow& row, const std::wstring& text,
                           const std::array<std::wstring, 3>& names) {
    ProParamvalue value = {};
    value.type = PRO_PARAM_STRING;
    ProError status = CopyText(StockText(row.stock), value.value.s_val);
    if (!Failed(status) && !text.empty()) status = ParameterWrite(row.model, text, value);
    value = {};
    value.type = PRO_PARAM_DOUBLE;
    for (std::size_t i = 0; i < names.size() && !Failed(status); ++i) {
        value.value.d_val = row.stock[i];
        if (!names[i].empty()) status = ParameterWrite(row.model, names[i], value);
    }
    return status;
}

}  // namespace kv
