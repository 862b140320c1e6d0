// The table of the bill of materials.

#include "bom/bom_table.h"

#include <utility>

#include "base/status.h"
#include "base/text.h"
#include "settings/settings_store.h"

namespace kv {

static constexpr wchar_t kSummedTitles[] = L"tableCols_sum";
static constexpr wchar_t kLevelTitles[] = L"tableCols_level";

static void FillRow(const BomSheet& sheet, unsigned int place);
static void SetCell(const std::string& row, const std::string& column, const std::wstring& text,
                    bool isAssembly);

std::vector<BomTitle> BomTitlesOfSettings(BomForm form) {
    const wchar_t* section = form == BomForm::Levels ? kLevelTitles : kSummedTitles;
    const std::wstring stored = SettingRead(SettingsPath(kBomSettings), section, kContentKey);
    return BomTitlesOf(SplitAtCommas(WithoutBlanks(stored)), form);
}

std::vector<BomTitle> BomTitlesOf(const std::vector<std::wstring>& titles, BomForm form) {
    std::vector<BomTitle> result;
    result.reserve(titles.size());
    for (const std::wstring& title : titles)
        result.push_back({"param" + std::to_string(result.size() + 1), title, BomColumnOf(title, form)});
    return result;
}

ProError BomColumnsReset(const std::vector<BomTitle>& titles) {
    const ProError status = TableRowsClear(kBomTable);
    if (Failed(status)) return status;
    std::vector<TableColumn> columns = {{kNumberColumn, kBomNumberTitle}};
    for (const BomTitle& title : titles) columns.push_back({title.name, title.title});
    return TableColumnsReplace(kBomTable, columns);
}

ProError BomTitlesGet(BomForm form, std::vector<BomTitle>& titles) {
    std::vector<TableColumn> found;
    const ProError status = TableColumnsGet(kBomTable, found);
    if (Failed(status)) return status;
    for (TableColumn& column : found)
        if (column.name != kNumberColumn)
            titles.push_back({std::move(column.name), column.title, BomColumnOf(column.title, form)});
    return PRO_TK_NO_ERROR;
}

ProError BomRowsShow(const BomSheet& sheet, std::span<const unsigned int> order) {
    TableNames names;
    names.reserve(order.size());
    for (const unsigned int place : order) names.push_back(std::to_string(place + 1));
    const ProError status = TableRowsInsert(kBomTable, names);
    if (Failed(status)) return status;
    for (const unsigned int place : order) FillRow(sheet, place);
    return PRO_TK_NO_ERROR;
}

static void FillRow(const BomSheet& sheet, unsigned int place) {
    const BomRow& row = sheet.rows[place];
    const std::string name = std::to_string(place + 1);
    const bool isAssembly = IsAssemblyRow(sheet, row);
    SetCell(name, kNumberColumn, {name.begin(), name.end()}, isAssembly);
    for (std::size_t i = 0; i < sheet.titles.size(); ++i) {
        const BomCell value = BomCellOf(sheet, row, i);
        if (value) SetCell(name, sheet.titles[i].name, *value, isAssembly);
    }
}

static void SetCell(const std::string& row, const std::string& column, const std::wstring& text,
                    bool isAssembly) {
    CellTextSet(kBomTable, row, column, text);
    if (isAssembly) CellColorSet(kBomTable, row, column, kAssemblyColor);
}

}  // namespace kv
