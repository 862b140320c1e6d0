// The bill of materials as a workbook.

#include "bom/bom_export.h"

#include <string>
#include <vector>

#include "base/file.h"
#include "base/file_name.h"
#include "base/status.h"
#include "bom/bom_table.h"
#include "model/current_model.h"
#include "model/model_data.h"
#include "model/run_report.h"
#include "office/spreadsheet.h"
#include "ui/message_box.h"
#include "ui/save_file.h"
#include "ui/shell.h"

namespace kv {

static constexpr wchar_t kWorkbookFilter[] = L"EXCEL文件(*.xlsx)|*.xlsx| All Files (*.*) |*.*||";
static constexpr wchar_t kExtension[] = L".xlsx";
static constexpr wchar_t kTitleEnd[] = L" BOM";
static constexpr wchar_t kFileLocked[] = L"文件已在excel打开，请关闭后重试";
static constexpr wchar_t kTooManyColumns[] = L"bom表格列数不得大于26列";
static constexpr wchar_t kNoRows[] = L"\t表格中没有数据，未导出\t";
static constexpr wchar_t kStepCell[] = L"写入单元格";
static constexpr wchar_t kRefusedCells[] = L" 个单元格未能写入工作簿，详情见报告：\n";
static constexpr wchar_t kNoApplication[] = L"创建Excel失败";

static ProError TitleGet(std::wstring& title);
static ProError RowsGet(const std::vector<TableColumn>& columns, SheetTable& sheet);
static std::vector<SheetCell> RowOf(const std::vector<TableColumn>& columns, const std::string& row);
static void ReportRefused(const SheetTable& sheet, const std::vector<RefusedCell>& refused);

// Whatever refuses the export is found before an earlier workbook is touched.
void BomExport() {
    SheetTable sheet;
    if (Failed(TitleGet(sheet.title))) return;
    const std::wstring path =
        SaveFileChoose(FileNameText(sheet.title) + kExtension, kWorkbookFilter, kExtension);
    if (path.empty()) return;
    if (FileIsLocked(path)) {
        ShowMessage(kFileLocked);
        return;
    }
    std::vector<TableColumn> columns;
    if (Failed(TableColumnsGet(kBomTable, columns))) return;
    if (columns.size() > kMaxSheetColumns) {
        ShowMessage(kTooManyColumns);
        return;
    }
    if (Failed(RowsGet(columns, sheet))) return;
    if (sheet.rows.empty()) {
        ShowMessage(kNoRows);
        return;
    }

    std::vector<RefusedCell> refused;
    const SheetExport result = SheetFileWrite(sheet, path, refused);
    if (result == SheetExport::NotCreated) ShowWarning(kNoApplication);
    if (result != SheetExport::Written) return;
    if (!refused.empty()) ReportRefused(sheet, refused);
    ShowFile(path);
}

static ProError TitleGet(std::wstring& title) {
    ProMdl model = nullptr;
    ProError status = ProMdlCurrentGet(&model);
    if (!Failed(status)) status = ModelNameGet(model, title);
    title += kTitleEnd;
    return status;
}

// Rows by their numbers, whatever order the user has put them into.
static ProError RowsGet(const std::vector<TableColumn>& columns, SheetTable& sheet) {
    for (const TableColumn& column : columns) sheet.columns.push_back(column.title);
    std::size_t count = 0;
    const ProError status = TableRowCountGet(kBomTable, count);
    if (Failed(status)) return status;
    sheet.rows.reserve(count);
    for (std::size_t i = 1; i <= count; ++i) sheet.rows.push_back(RowOf(columns, std::to_string(i)));
    return PRO_TK_NO_ERROR;
}

// A row whose number is not marked has no marked cell at all.
static std::vector<SheetCell> RowOf(const std::vector<TableColumn>& columns, const std::string& row) {
    const bool isAssembly = CellHasColor(kBomTable, row, kNumberColumn, kAssemblyColor);
    std::vector<SheetCell> cells;
    cells.reserve(columns.size());
    for (const TableColumn& column : columns) {
        const bool marked = isAssembly && CellHasColor(kBomTable, row, column.name, kAssemblyColor);
        cells.push_back({CellText(kBomTable, row, column.name), marked});
    }
    return cells;
}

// A workbook with gaps must not pass for a whole one.
static void ReportRefused(const SheetTable& sheet, const std::vector<RefusedCell>& refused) {
    RunReport report(kBomDialog);
    for (const RefusedCell& cell : refused) {
        const std::wstring place = sheet.columns[cell.column] + L" " + std::to_wstring(cell.row);
        report.Add({place, kStepCell, PRO_TK_CANT_WRITE});
    }
    ShowMessage((std::to_wstring(refused.size()) + kRefusedCells + report.Path()).c_str());
}

}  // namespace kv
