// The bill of materials as files.

#include "bom/bom_export.h"

#include <iterator>
#include <string>
#include <vector>

#include "base/file.h"
#include "base/file_name.h"
#include "base/local_time.h"
#include "base/status.h"
#include "bom/bom_csv.h"
#include "bom/bom_pages.h"
#include "bom/bom_table.h"
#include "model/current_model.h"
#include "model/model_data.h"
#include "model/run_report.h"
#include "office/spreadsheet.h"
#include "ui/message_box.h"
#include "ui/prompt.h"
#include "ui/save_file.h"
#include "ui/shell.h"

namespace kv {

static constexpr wchar_t kWorkbookFilter[] = L"EXCEL文件(*.xlsx)|*.xlsx| All Files (*.*) |*.*||";
static constexpr wchar_t kExtension[] = L".xlsx";
static constexpr wchar_t kCsvFilter[] = L"CSV文件(*.csv)|*.csv|";
static constexpr wchar_t kCsvExtension[] = L".csv";
static constexpr wchar_t kPageFilter[] = L"网页(*.html)|*.html|";
static constexpr wchar_t kPageExtension[] = L".html";
static constexpr wchar_t kChangesEnd[] = L" BOM 差别";
// Of a time with date, up to its minute.
static constexpr std::size_t kMinuteLength = 16;
static constexpr wchar_t kTitleEnd[] = L" BOM";
static constexpr wchar_t kFileLocked[] = L"文件已在excel打开，请关闭后重试";
static constexpr wchar_t kTooManyColumns[] = L"bom表格列数不得大于26列";
static constexpr wchar_t kTooManyRows[] = L"\t清单超过工作表的行数上限（1048576行），请导出CSV或网页\t";
static constexpr wchar_t kNoRows[] = L"\t表格中没有数据，未导出\t";
static constexpr wchar_t kStepCell[] = L"写入单元格";
static constexpr wchar_t kRefusedCells[] = L" 个单元格未能写入工作簿，详情见报告：\n";
static constexpr wchar_t kNoApplication[] = L"创建Excel失败";
static constexpr wchar_t kOfferCsv[] = L"是否改为导出CSV文件？";
static constexpr wchar_t kNoName[] = L"\t模型名称无法读取，未导出\t";
static constexpr wchar_t kNotWritten[] = L"文件未能写入：\n";
static constexpr char kTold[] = "Batch result:%0w";
static constexpr wchar_t kWritten[] = L"清单已导出：";

static ProError TitleGet(std::wstring& title);
static SheetTable SheetOf(const BomSheet& sheet, const std::wstring& title);
static void ReportRefused(const SheetTable& sheet, const std::vector<RefusedCell>& refused);
static void CsvWrite(const BomSheet& sheet, const std::wstring& path);
static ProError PageFactsGet(const wchar_t* titleEnd, PageFacts& facts);
static void PageWrite(const std::string& page, const std::wstring& path);

// Whatever refuses the export is found before an earlier workbook is touched.
void BomExport(const BomSheet& sheet) {
    std::wstring title;
    if (Failed(TitleGet(title))) return;
    if (!RowsFitSheet(sheet.rows.size())) {
        ShowMessage(kTooManyRows);
        return;
    }
    const std::wstring path = SaveFileChoose(FileNameText(title) + kExtension, kWorkbookFilter, kExtension);
    if (path.empty()) return;
    if (FileIsLocked(path)) {
        ShowMessage(kFileLocked);
        return;
    }
    if (sheet.titles.size() + 1 > kMaxSheetColumns) {
        ShowMessage(kTooManyColumns);
        return;
    }
    if (sheet.rows.empty()) {
        ShowMessage(kNoRows);
        return;
    }

    const SheetTable table = SheetOf(sheet, title);
    std::vector<RefusedCell> refused;
    const SheetExport result = SheetFileWrite(table, path, refused);
    if (result == SheetExport::NotCreated) {
        ShowWarning(kNoApplication);
        const std::wstring name = path.substr(0, path.size() - std::size(kExtension) + 1);
        if (AskUser(kOfferCsv)) CsvWrite(sheet, WithExtension(name, kCsvExtension));
    }
    if (result != SheetExport::Written) return;
    if (!refused.empty()) ReportRefused(table, refused);
    ShowFile(path);
}

void BomCsvExport(const BomSheet& sheet) {
    if (sheet.rows.empty()) {
        ShowMessage(kNoRows);
        return;
    }
    std::wstring title;
    if (Failed(TitleGet(title))) {
        ShowMessage(kNoName);
        return;
    }
    CsvWrite(sheet, SaveFileChoose(FileNameText(title) + kCsvExtension, kCsvFilter, kCsvExtension));
}

void BomPageExport(const BomSource& source, const BomSheet& sheet, int deepest) {
    if (sheet.rows.empty()) {
        ShowMessage(kNoRows);
        return;
    }
    PageFacts facts;
    PageParts parts;
    if (Failed(PageFactsGet(kTitleEnd, facts))) {
        ShowMessage(kNoName);
        return;
    }
    const std::wstring path =
        SaveFileChoose(FileNameText(facts.title) + kPageExtension, kPageFilter, kPageExtension);
    if (path.empty()) return;
    if (Failed(PagePartsGet(parts))) {
        ShowMessage((kNotWritten + path).c_str());
        return;
    }
    facts.deepest = deepest;
    const bool isTree = sheet.form == BomForm::Levels;
    const BomForm otherForm = isTree ? BomForm::Summed : BomForm::Levels;
    const BomSheet other = BomSheetOf(source, isTree ? SummedBom(source) : LevelBom(source, deepest),
                                      BomTitlesOfSettings(otherForm));
    PageWrite(BomPage(isTree ? sheet : other, isTree ? other : sheet, facts, parts), path);
}

void ChangesExport(const std::vector<ChangeLine>& lines, const std::wstring& earlier) {
    PageFacts facts;
    PageParts parts;
    if (Failed(PageFactsGet(kChangesEnd, facts))) {
        ShowMessage(kNoName);
        return;
    }
    const std::wstring path =
        SaveFileChoose(FileNameText(facts.title) + kPageExtension, kPageFilter, kPageExtension);
    if (path.empty()) return;
    if (Failed(PagePartsGet(parts)))
        ShowMessage((kNotWritten + path).c_str());
    else
        PageWrite(ChangesPage(lines, earlier, facts, parts), path);
}

static ProError PageFactsGet(const wchar_t* titleEnd, PageFacts& facts) {
    ProMdl model = nullptr;
    ProError status = ProMdlCurrentGet(&model);
    if (!Failed(status)) status = ModelNameGet(model, facts.model);
    facts.title = facts.model + titleEnd;
    facts.time = LocalTimeText().substr(0, kMinuteLength);
    return status;
}

static void PageWrite(const std::string& page, const std::wstring& path) {
    if (Failed(FileReplace(path, page)))
        ShowMessage((kNotWritten + path).c_str());
    else
        ShowFile(path);
}

static ProError TitleGet(std::wstring& title) {
    ProMdl model = nullptr;
    ProError status = ProMdlCurrentGet(&model);
    if (!Failed(status)) status = ModelNameGet(model, title);
    title += kTitleEnd;
    return status;
}

// Cells that were never filled are not marked either.
static SheetTable SheetOf(const BomSheet& sheet, const std::wstring& title) {
    SheetTable table = {title, {kBomNumberTitle}, {}};
    for (const BomTitle& column : sheet.titles) table.columns.push_back(column.title);
    table.rows.reserve(sheet.rows.size());
    for (const BomRow& row : sheet.rows) {
        const bool isAssembly = IsAssemblyRow(sheet, row);
        std::vector<SheetCell> cells = {{std::to_wstring(table.rows.size() + 1), isAssembly}};
        for (std::size_t i = 0; i < sheet.titles.size(); ++i) {
            const BomCell value = BomCellOf(sheet, row, i);
            cells.push_back({value.value_or(std::wstring()), isAssembly && value.has_value()});
        }
        table.rows.push_back(std::move(cells));
    }
    return table;
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

// Nothing happens without a path: the user has cancelled.
static void CsvWrite(const BomSheet& sheet, const std::wstring& path) {
    if (path.empty()) return;
    if (Failed(FileReplace(path, BomCsv(sheet))))
        ShowMessage((kNotWritten + path).c_str());
    else
        DisplayMessage(kTold, (kWritten + path).c_str());
}

}  // namespace kv
