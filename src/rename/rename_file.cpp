// The rename table as a file.

#include "rename/rename_file.h"

#include <iterator>

#include <ProUtil.h>

#include "base/csv.h"
#include "base/file.h"
#include "base/file_name.h"
#include "base/status.h"
#include "base/text.h"
#include "office/spreadsheet.h"
#include "ui/message_box.h"
#include "ui/open_file.h"
#include "ui/prompt.h"
#include "ui/save_file.h"

namespace kv {

static constexpr wchar_t kSaveTitle[] = L"导出表格";
static constexpr wchar_t kSaveFilter[] = L"*.xls";
static constexpr wchar_t kWorkbookExtension[] = L".xls";
static constexpr wchar_t kCsvExtension[] = L".csv";
static constexpr wchar_t kTitleEnd[] = L" 重命名";
static constexpr wchar_t kCsvFilter[] = L"CSV文件(*.csv)|*.csv|所有文件(*.*)|*.*||";
static constexpr wchar_t kLoadTitle[] = L"请选择需要加载的批量重命名表格文件";
static constexpr wchar_t kLoadFilter[] = L"Microsoft Excel 2000(*.xls)|*.xls|所有文件(*.*)|*.*||";
static constexpr wchar_t kFileLocked[] = L"文件已在excel打开，请关闭后重试";
static constexpr wchar_t kNoApplication[] = L"无法启动Excel服务器!";
static constexpr wchar_t kNotWritten[] = L"\t表格未能导出\t";
static constexpr wchar_t kNotRead[] = L"\t无法读取表格文件\t";
static constexpr wchar_t kTooManyRows[] = L"\t表格超过10000行，未加载\t";
static constexpr char kTold[] = "Batch result:%0w";
static constexpr wchar_t kWritten[] = L"表格已导出：";
static constexpr std::size_t kMostRows = 10'000;
// Title rows do not count as rows.
static constexpr std::size_t kTitleRows = 2;
static constexpr std::size_t kLargestCsv = std::size_t{16} << 20;
static constexpr char kUtf8Mark[] = "\xEF\xBB\xBF";

static std::vector<std::vector<std::wstring>> CellsOf(std::span<const ShownRow> shown,
                                                      std::span<const RenameRow> rows);
static std::wstring WorkbookChoose(const std::wstring& title);
static bool RowsTake(std::span<const std::vector<std::wstring>> cells, std::vector<LoadedRow>& rows);

void TableToWorkbook(const std::wstring& top, std::span<const ShownRow> shown,
                     std::span<const RenameRow> rows) {
    SheetTable sheet = {top + kTitleEnd, {std::begin(kColumnTitles), std::end(kColumnTitles)}, {}};
    const std::wstring path = WorkbookChoose(sheet.title);
    if (path.empty()) return;
    if (FileIsLocked(path)) {
        ShowMessage(kFileLocked);
        return;
    }
    for (std::vector<std::wstring>& cells : CellsOf(shown, rows)) {
        std::vector<SheetCell>& row = sheet.rows.emplace_back();
        for (std::wstring& cell : cells) row.push_back({std::move(cell), false});
    }
    std::vector<RefusedCell> refused;
    const SheetExport result = SheetFileWrite(sheet, path, refused, {true, true});
    if (result == SheetExport::NotCreated) {
        ShowMessage(kNoApplication);
    } else if (result == SheetExport::Failed || !refused.empty()) {
        ShowMessage(kNotWritten);
    } else {
        DisplayMessage(kTold, (kWritten + path).c_str());
    }
}

void TableToCsv(const std::wstring& top, std::span<const ShownRow> shown, std::span<const RenameRow> rows) {
    const std::wstring name = FileNameText(top + kTitleEnd) + kCsvExtension;
    const std::wstring path = SaveFileChoose(name, kCsvFilter, kCsvExtension);
    if (path.empty()) return;
    if (FileIsLocked(path)) {
        ShowMessage(kFileLocked);
        return;
    }
    std::wstring text =
        CsvLine(std::vector<std::wstring>(std::begin(kColumnTitles), std::end(kColumnTitles)));
    for (std::vector<std::wstring>& cells : CellsOf(shown, rows)) {
        for (std::wstring& cell : cells) cell = HarmlessCell(std::move(cell));
        text += CsvLine(cells);
    }
    std::string bytes;
    const bool encoded = !Failed(EncodeText(text, CodePage::Utf8, bytes));
    if (encoded && !Failed(FileReplace(path, kUtf8Mark + bytes)))
        DisplayMessage(kTold, (kWritten + path).c_str());
    else
        ShowMessage(kNotWritten);
}

static std::vector<std::vector<std::wstring>> CellsOf(std::span<const ShownRow> shown,
                                                      std::span<const RenameRow> rows) {
    std::vector<std::vector<std::wstring>> cells;
    for (std::size_t i = 0; i < shown.size(); ++i) {
        const RowContent& content = shown[i].content;
        cells.push_back({content.number, rows[i].oldName, rows[i].type, rows[i].newName, content.placements,
                         content.drawing});
    }
    return cells;
}

// Empty when the user cancels.
static std::wstring WorkbookChoose(const std::wstring& title) {
    ProName label;
    ProLine filter;
    ProMdlFileName proposed;
    ProPath path = {};
    ProError status = CopyText(kSaveTitle, label);
    if (!Failed(status)) status = CopyText(kSaveFilter, filter);
    if (!Failed(status)) status = CopyText(title, proposed);
    if (!Failed(status))
        status = ProFileMdlnameSave(label, filter, nullptr, nullptr, nullptr, proposed, path);
    return Failed(status) ? std::wstring() : WithExtension(path, kWorkbookExtension);
}

bool TableFromWorkbook(std::vector<LoadedRow>& rows) {
    const std::wstring path = OpenFileChoose(kLoadTitle, kLoadFilter);
    if (path.empty()) return false;
    std::vector<std::vector<std::wstring>> cells;
    switch (SheetTableRead(path, kReadColumns, kMostRows + kTitleRows, cells)) {
        case SheetImport::Read:
            return RowsTake(cells, rows);
        case SheetImport::NotCreated:
            ShowMessage(kNoApplication);
            break;
        case SheetImport::TooMany:
            ShowMessage(kTooManyRows);
            break;
        case SheetImport::Failed:
            ShowMessage(kNotRead);
            break;
    }
    return false;
}

bool TableFromCsv(std::vector<LoadedRow>& rows) {
    const std::wstring path = OpenFileChoose(kLoadTitle, kCsvFilter);
    if (path.empty()) return false;
    std::string bytes;
    std::wstring text;
    if (Failed(FileRead(path, kLargestCsv, bytes)) || Failed(DecodeFile(bytes, text))) {
        ShowMessage(kNotRead);
        return false;
    }
    std::vector<std::vector<std::wstring>> cells = CsvRows(text);
    for (std::vector<std::wstring>& row : cells)
        for (std::wstring& cell : row) cell = CellAsWritten(std::move(cell));
    return RowsTake(cells, rows);
}

static bool RowsTake(std::span<const std::vector<std::wstring>> cells, std::vector<LoadedRow>& rows) {
    rows = RowsOfFile(cells);
    if (rows.size() <= kMostRows) return true;
    rows.clear();
    ShowMessage(kTooManyRows);
    return false;
}

}  // namespace kv
