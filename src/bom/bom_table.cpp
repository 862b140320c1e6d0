// The table of the bill of materials.

#include "bom/bom_table.h"

#include <optional>
#include <vector>

#include <ProSkeleton.h>

#include "base/status.h"
#include "base/text.h"
#include "model/parameter.h"
#include "model/parameter_text.h"
#include "settings/settings_store.h"

namespace kv {

static constexpr wchar_t kSummedTitles[] = L"tableCols_sum";
static constexpr wchar_t kLevelTitles[] = L"tableCols_level";
static constexpr wchar_t kNumberTitle[] = L"序号";

// Nothing: the cell is left alone.
using CellValue = std::optional<std::wstring>;

struct ShownColumn {
    std::string name;
    std::wstring title;
    BomColumn kind;
};

// What is read from a model at its first row.
struct ModelTexts {
    bool known = false;
    std::vector<CellValue> parameters;  // by column
};

struct Filling {
    const BomList& list;
    std::vector<ShownColumn> columns;  // without the first
    std::vector<ModelTexts> texts;     // by model
};

static ProError ShownColumnsGet(BomForm form, std::vector<ShownColumn>& columns);
static std::vector<BomItem> WithoutSkeletons(const BomList& list);
static bool IsSkeleton(const NamedModel& model);
static void FillRow(Filling& filling, const BomItem& item, const std::string& row);
static void SetCell(const std::string& row, const std::string& column, const std::wstring& text,
                    bool isAssembly);
static CellValue ValueOf(Filling& filling, const BomItem& item, std::size_t column);
static const std::vector<CellValue>& ParametersOf(Filling& filling, unsigned int model);

ProError BomColumnsReset(BomForm form) {
    ProError status = TableRowsClear(kBomTable);
    if (Failed(status)) return status;

    const wchar_t* section = form == BomForm::Levels ? kLevelTitles : kSummedTitles;
    std::vector<TableColumn> columns = {{kNumberColumn, kNumberTitle}};
    for (std::wstring& title :
         SplitAtCommas(WithoutBlanks(SettingRead(SettingsPath(kBomSettings), section, kContentKey))))
        columns.push_back({"param" + std::to_string(columns.size()), std::move(title)});
    return TableColumnsReplace(kBomTable, columns);
}

ProError BomListShow(const BomList& list) {
    Filling filling = {list, {}, std::vector<ModelTexts>(list.models.size())};
    ProError status = ShownColumnsGet(list.form, filling.columns);
    if (Failed(status)) return status;
    const std::vector<BomItem> items = WithoutSkeletons(list);
    status = TableRowsNumber(kBomTable, items.size());
    if (Failed(status)) return status;

    for (std::size_t i = 0; i < items.size(); ++i) FillRow(filling, items[i], std::to_string(i + 1));
    return PRO_TK_NO_ERROR;
}

static ProError ShownColumnsGet(BomForm form, std::vector<ShownColumn>& columns) {
    std::vector<TableColumn> found;
    const ProError status = TableColumnsGet(kBomTable, found);
    if (Failed(status)) return status;
    for (TableColumn& column : found)
        if (column.name != kNumberColumn)
            columns.push_back({std::move(column.name), column.title, BomColumnOf(column.title, form)});
    return PRO_TK_NO_ERROR;
}

static std::vector<BomItem> WithoutSkeletons(const BomList& list) {
    std::vector<std::optional<bool>> skeleton(list.models.size());
    std::vector<BomItem> items;
    items.reserve(list.items.size());
    for (const BomItem& item : list.items) {
        std::optional<bool>& known = skeleton[item.model];
        if (!known) known = IsSkeleton(list.models[item.model]);
        if (!*known) items.push_back(item);
    }
    return items;
}

// Only a part can be one.
static bool IsSkeleton(const NamedModel& model) {
    ProBoolean skeleton = PRO_B_FALSE;
    return model.type == PRO_MDL_PART && !Failed(ProMdlIsSkeleton(model.model, &skeleton)) &&
           skeleton == PRO_B_TRUE;
}

static void FillRow(Filling& filling, const BomItem& item, const std::string& row) {
    const bool isAssembly = filling.list.models[item.model].type == PRO_MDL_ASSEMBLY;
    SetCell(row, kNumberColumn, {row.begin(), row.end()}, isAssembly);
    for (std::size_t i = 0; i < filling.columns.size(); ++i) {
        const CellValue value = ValueOf(filling, item, i);
        if (value) SetCell(row, filling.columns[i].name, *value, isAssembly);
    }
}

static void SetCell(const std::string& row, const std::string& column, const std::wstring& text,
                    bool isAssembly) {
    CellTextSet(kBomTable, row, column, text);
    if (isAssembly) CellColorSet(kBomTable, row, column, kAssemblyColor);
}

static CellValue ValueOf(Filling& filling, const BomItem& item, std::size_t column) {
    const BomList& list = filling.list;
    switch (filling.columns[column].kind) {
        case BomColumn::ModelName:
            return list.models[item.model].name;
        case BomColumn::Quantity:
            return std::to_wstring(item.count);
        case BomColumn::Level:
            return std::to_wstring(list.tree[item.node].level);
        case BomColumn::ItemCode:
            return ItemCode(list.tree, item.node);
        case BomColumn::Parameter:
            break;
    }
    return ParametersOf(filling, item.model)[column];
}

static const std::vector<CellValue>& ParametersOf(Filling& filling, unsigned int model) {
    ModelTexts& texts = filling.texts[model];
    if (texts.known) return texts.parameters;
    texts.known = true;
    texts.parameters.resize(filling.columns.size());
    ProModelitem owner = {};
    if (Failed(ProMdlToModelitem(filling.list.models[model].model, &owner))) return texts.parameters;
    for (std::size_t i = 0; i < filling.columns.size(); ++i) {
        ProParamvalue value = {};
        if (filling.columns[i].kind != BomColumn::Parameter) continue;
        if (Failed(ParameterValueGet(owner, filling.columns[i].title, value))) continue;
        texts.parameters[i] = ParameterText(value);
    }
    return texts.parameters;
}

}  // namespace kv
