// The comparison with an earlier list, as the user sees it.

#include "bom/bom_compare_dialog.h"

#include <algorithm>
#include <string>
#include <vector>

#include "base/file.h"
#include "base/status.h"
#include "base/text.h"
#include "bom/bom_changes.h"
#include "bom/bom_earlier.h"
#include "bom/bom_export.h"
#include "ui/dialog.h"
#include "ui/message_box.h"
#include "ui/open_file.h"
#include "ui/table.h"

namespace kv {

static constexpr char kCompareDialog[] = "KvBomCompare";
static constexpr TableName kChangeTable = {kCompareDialog, "change_list"};
static constexpr const char* kChangeColumnNames[kChangeColumns] = {"kind",   "name",   "type", "path",
                                                                   "column", "before", "after"};
static constexpr char kChangeCount[] = "ChangeCount";
static constexpr wchar_t kChooseTitle[] = L"选择旧清单";
static constexpr wchar_t kChooseFilter[] = L"清单(*.csv;*.html)|*.csv;*.html|";
static constexpr wchar_t kNothingLoaded[] = L"\t表格中没有数据，请先载入清单\t";
static constexpr wchar_t kCannotRead[] = L"文件无法读取：\n";
static constexpr wchar_t kNoText[] = L"所选文件不是UTF-8文本，可能被其他程序改存过";
static constexpr wchar_t kOnlyBefore[] = L"；只有旧清单有的列：";
static constexpr wchar_t kOnlyAfter[] = L"；只有新清单有的列：";
// A list of 100,000 rows takes a quarter of it.
static constexpr std::size_t kLongestFile = std::size_t{64} << 20;

struct CompareState {
    std::vector<ChangeLine> lines;
    std::wstring summary;
    std::wstring earlier;  // name of the file
};

static bool EarlierListGet(const std::wstring& path, BomForm form, ListedRows& list);
static std::wstring TitlesOf(const wchar_t* start, const std::vector<std::wstring>& titles);
static void FillChanges(CompareState& state);
static void OnExportChanges(CompareState& state);

void BomCompare(const BomSheet& sheet) {
    if (sheet.rows.empty()) {
        ShowMessage(kNothingLoaded);
        return;
    }
    const std::wstring path = OpenFileChoose(kChooseTitle, kChooseFilter);
    ListedRows before;
    if (path.empty() || !EarlierListGet(path, sheet.form, before)) return;

    ListedRows after = ListedRowsOf(sheet);
    LoneColumns lone = KeepCommonColumns(before, after);
    CompareState state;
    state.lines = ChangeLines(before, after, CompareLists(before, after));
    // The number takes part in the comparison even where it is no column of the table.
    const bool showsNumber = std::ranges::any_of(
        sheet.titles, [](const BomTitle& title) { return title.kind == BomColumn::Quantity; });
    if (!showsNumber) std::erase(lone.after, kBomQuantityTitle);
    state.summary = ChangeCountText(state.lines) + TitlesOf(kOnlyBefore, lone.before);
    state.summary += TitlesOf(kOnlyAfter, lone.after);
    state.earlier = path.substr(path.find_last_of(L"\\/") + 1);
    (void)RunDialog(kCompareDialog, {Pressed<OnExportChanges>("KvExportChanges"), Closes("Close")}, state,
                    FillChanges);
}

// A refusal is shown.
static bool EarlierListGet(const std::wstring& path, BomForm form, ListedRows& list) {
    std::string bytes;
    if (Failed(FileRead(path, kLongestFile, bytes))) {
        ShowMessage((kCannotRead + path).c_str());
        return false;
    }
    std::wstring text;
    std::wstring refusal = kNoText;
    if (!Failed(DecodeFile(bytes, text))) refusal = EarlierListRead(text, form, list);
    if (!refusal.empty()) ShowMessage((refusal + L"\n" + path).c_str());
    return refusal.empty();
}

static std::wstring TitlesOf(const wchar_t* start, const std::vector<std::wstring>& titles) {
    std::wstring text;
    for (const std::wstring& title : titles) text.append(text.empty() ? start : L"，").append(title);
    return text;
}

static void FillChanges(CompareState& state) {
    InputTextSet(kCompareDialog, kChangeCount, state.summary);
    if (Failed(TableRowsNumber(kChangeTable, state.lines.size()))) return;
    for (std::size_t i = 0; i < state.lines.size(); ++i) {
        const auto cells = ChangeCells(state.lines[i]);
        for (std::size_t column = 0; column < kChangeColumns; ++column)
            if (!cells[column].empty())
                CellTextSet(kChangeTable, std::to_string(i + 1), kChangeColumnNames[column], cells[column]);
    }
}

static void OnExportChanges(CompareState& state) {
    ChangesExport(state.lines, state.earlier);
}

}  // namespace kv
