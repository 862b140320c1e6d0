// The table of drawings in the dialogs that work through a folder of them.

#include "model/drawing_table.h"

#include <algorithm>
#include <unordered_set>

#include <ProMdl.h>

#include "base/status.h"
#include "model/drawing_sheets.h"
#include "model/model_data.h"
#include "model/parameter.h"
#include "model/parameter_text.h"
#include "ui/table.h"

namespace kv {

static constexpr char kNumberColumn[] = "num";
static constexpr char kNameColumn[] = "drw_name";
static constexpr char kSheetsColumn[] = "sheets";
static constexpr char kSizeColumn[] = "sheet_size";
// Parameter names may be Chinese, which column names cannot be.
static constexpr char kParameterColumn[] = "param_";
static constexpr wchar_t kUnreadable[] = L"无法读取";
static constexpr const wchar_t* kFirstTitles[] = {L"序号", L"工程图名称"};
static constexpr const wchar_t* kLastTitles[] = {L"页数", L"图幅"};

static std::string RowName(std::size_t index);
static TableNames ParameterColumns(const DrawingTable& table);

// Calls `fill(row name, drawing)`, which answers a status, for every drawing that can be retrieved, and marks
// the others in `column`.
template <typename Fill>
static void ForEachDrawing(const DrawingTable& table, const char* column, BatchRun& run, Fill fill) {
    for (std::size_t i = 0; i < table.drawings.size(); ++i) {
        if (!run.Begin(table.drawings[i])) continue;
        const std::string row = RowName(i);
        ProMdl drawing = nullptr;
        ProError status = ModelRetrieveByType(table.drawings[i], PRO_MDLFILE_DRAWING, drawing);
        if (!Failed(status)) status = fill(row, drawing);
        if (Failed(status)) CellTextSet(table.name, row, column, kUnreadable);
        run.Add({table.drawings[i], kStepDrawing, status});
    }
}

void ShowDrawings(DrawingTable& table, const std::vector<std::wstring>& drawings) {
    if (Failed(TableRowsClear(table.name))) return;
    table.drawings.clear();
    if (Failed(TableRowsNumber(table.name, drawings.size()))) return;
    table.drawings = drawings;
    for (std::size_t i = 0; i < drawings.size(); ++i) {
        const std::string row = RowName(i);
        CellTextSet(table.name, row, kNumberColumn, std::to_wstring(i + 1));
        CellTextSet(table.name, row, kNameColumn, drawings[i]);
    }
}

void ShowParameterColumns(DrawingTable& table, const std::vector<std::wstring>& parameters) {
    if (Failed(TableColumnsDelete(table.name, ParameterColumns(table)))) return;
    table.parameters = parameters;
    if (Failed(TableColumnsInsert(table.name, kNameColumn, ParameterColumns(table))))
        table.parameters.clear();

    std::vector<std::wstring> titles(std::begin(kFirstTitles), std::end(kFirstTitles));
    titles.insert(titles.end(), table.parameters.begin(), table.parameters.end());
    titles.insert(titles.end(), std::begin(kLastTitles), std::end(kLastTitles));
    // Columns without their titles still hold the right values.
    (void)TableTitlesSet(table.name, titles);
}

void LoadParameters(const DrawingTable& table, BatchRun& run) {
    if (table.parameters.empty()) return;
    const TableNames columns = ParameterColumns(table);
    ForEachDrawing(table, columns.front().c_str(), run, [&](const std::string& row, ProMdl drawing) {
        for (std::size_t i = 0; i < columns.size(); ++i) {
            ProParamvalue value = {};
            const bool known = !Failed(ParameterRead(drawing, table.parameters[i], value));
            CellTextSet(table.name, row, columns[i],
                        known ? ParameterText(value).value_or(L"") : std::wstring());
        }
        return PRO_TK_NO_ERROR;
    });
}

void LoadSheets(const DrawingTable& table, BatchRun& run) {
    ForEachDrawing(table, kSheetsColumn, run, [&](const std::string& row, ProMdl drawing) {
        std::vector<std::wstring> sizes;
        const ProError status = SheetSizesGet(static_cast<ProDrawing>(drawing), sizes);
        if (Failed(status)) return status;
        CellTextSet(table.name, row, kSheetsColumn, std::to_wstring(sizes.size()));
        CellTextSet(table.name, row, kSizeColumn, SheetSizesText(sizes));
        return PRO_TK_NO_ERROR;
    });
}

void SelectAllDrawings(const DrawingTable& table) {
    TableNames rows;
    if (!Failed(TableRowsGet(table.name, rows))) TableRowsSelect(table.name, rows);
}

void ReverseSelection(const DrawingTable& table) {
    TableNames rows;
    TableNames selected;
    if (Failed(TableRowsGet(table.name, rows))) return;
    if (Failed(SelectedRowsGet(table.name, selected))) return;
    const std::unordered_set<std::string> before(selected.begin(), selected.end());
    std::erase_if(rows, [&before](const std::string& row) { return before.contains(row); });
    TableRowsDeselect(table.name, selected);
    TableRowsSelect(table.name, rows);
}

std::vector<std::wstring> SelectedDrawings(const DrawingTable& table) {
    TableNames selected;
    if (Failed(SelectedRowsGet(table.name, selected))) return {};
    const std::unordered_set<std::string> rows(selected.begin(), selected.end());
    std::vector<std::wstring> drawings;
    for (std::size_t i = 0; i < table.drawings.size(); ++i)
        if (rows.contains(RowName(i))) drawings.push_back(table.drawings[i]);
    return drawings;
}

static std::string RowName(std::size_t index) {
    return std::to_string(index + 1);
}

static TableNames ParameterColumns(const DrawingTable& table) {
    TableNames names;
    for (std::size_t i = 0; i < table.parameters.size(); ++i)
        names.push_back(kParameterColumn + std::to_string(i + 1));
    return names;
}

}  // namespace kv
