// Lists that were written before.

#include "bom/bom_earlier.h"

#include <algorithm>
#include <iterator>
#include <span>
#include <unordered_map>
#include <utility>

#include "base/csv.h"
#include "base/number.h"
#include "base/status.h"
#include "bom/bom_csv.h"
#include "bom/bom_page.h"

namespace kv {

static constexpr wchar_t kNoList[] = L"所选文件不是本命令导出的清单（CSV或网页）";
static constexpr wchar_t kOtherFormat[] = L"网页的数据格式版本不同，无法读取";
static constexpr wchar_t kOtherForm[] =
    L"旧清单的形式不同：汇总清单只能与汇总清单比较，分层清单只能与分层清单比较";
static constexpr wchar_t kDamagedStart[] = L"旧清单第 ";
static constexpr wchar_t kDamagedEnd[] = L" 行已损坏或被其他程序修改";
static constexpr wchar_t kPageBegin[] = L"<main data-format=\"";
static constexpr wchar_t kPageKind[] = L" data-kind=\"bom\"";
static constexpr wchar_t kPageEnd[] = L"</html>";

using RowTexts = std::vector<std::wstring>;

// What of a row's texts is compared: each title once, without what follows from a row's place.
struct ComparedColumns {
    RowTexts titles;
    std::vector<std::size_t> places;
};

static ComparedColumns ComparedColumnsOf(std::span<const std::wstring> titles, BomForm form);
static RowTexts Chosen(const RowTexts& texts, const ComparedColumns& columns);
static std::wstring CsvListRead(std::wstring_view text, BomForm form, ListedRows& list);
static std::wstring PageListRead(std::wstring_view text, BomForm form, ListedRows& list);

ListedRows ListedRowsOf(const BomSheet& sheet) {
    RowTexts titles;
    for (const BomTitle& title : sheet.titles) titles.push_back(title.title);
    titles.emplace_back(kBomQuantityTitle);
    const ComparedColumns columns = ComparedColumnsOf(titles, sheet.form);
    ListedRows list = {sheet.form, columns.titles, {}};
    for (const BomRow& row : sheet.rows) {
        RowTexts cells;
        for (const std::size_t place : columns.places)
            cells.push_back(place < sheet.titles.size() ? BomCellText(sheet, row, place)
                                                        : std::to_wstring(row.count));
        list.rows.push_back({sheet.models[row.model].name, IsAssemblyRow(sheet, row), row.parent, cells});
    }
    return list;
}

std::wstring EarlierListRead(std::wstring_view text, BomForm form, ListedRows& list) {
    const bool isPage =
        text.starts_with(L"<!DOCTYPE html>") && text.find(kPageBegin) != std::wstring_view::npos;
    list = {form, {}, {}};
    return isPage ? PageListRead(text, form, list) : CsvListRead(text, form, list);
}

static ComparedColumns ComparedColumnsOf(std::span<const std::wstring> titles, BomForm form) {
    ComparedColumns columns;
    for (std::size_t i = 0; i < titles.size(); ++i) {
        const BomColumn kind = BomColumnOf(titles[i], form);
        if (kind != BomColumn::Parameter && kind != BomColumn::Quantity) continue;
        if (std::ranges::find(columns.titles, titles[i]) != columns.titles.end()) continue;
        columns.titles.push_back(titles[i]);
        columns.places.push_back(i);
    }
    return columns;
}

static RowTexts Chosen(const RowTexts& texts, const ComparedColumns& columns) {
    RowTexts chosen;
    for (const std::size_t place : columns.places) chosen.push_back(texts[place]);
    return chosen;
}

static std::wstring DamagedRow(std::size_t number) {
    return kDamagedStart + std::to_wstring(number) + kDamagedEnd;
}

// ---- Comma-separated values

// The last columns tell the form.
static bool CsvFormGet(const RowTexts& head, BomForm& form) {
    if (head.size() < 3 || head.front() != kBomNumberTitle) return false;
    form = head.back() == kCsvPathTitle ? BomForm::Levels : BomForm::Summed;
    const std::size_t last = form == BomForm::Levels ? head.size() - 1 : head.size();
    return last >= 3 && head[last - 2] == kCsvNameTitle && head[last - 1] == kCsvTypeTitle;
}

// Rows by the path that leads to what is below them.
using RowsByPath = std::unordered_map<std::wstring, unsigned int>;

// False for a row that this command has not written like that.
static bool CsvRowTake(const RowTexts& texts, const ComparedColumns& columns, RowsByPath& rowAt,
                       ListedRows& list) {
    const bool isLevels = list.form == BomForm::Levels;
    const auto place = static_cast<unsigned int>(list.rows.size());
    const std::size_t last = isLevels ? texts.size() - 1 : texts.size();
    const std::wstring& name = texts[last - 2];
    const bool isAssembly = texts[last - 1] == TypeText(true);
    if (texts.front() != std::to_wstring(place + 1)) return false;
    if (!isAssembly && texts[last - 1] != TypeText(false)) return false;

    ListedRow row = {name, isAssembly, place, {}};
    if (isLevels) {
        const std::wstring& path = texts.back();
        const auto parent = rowAt.find(path);
        // The first row alone has no parent.
        if (path.empty() != (place == 0) || (place > 0 && parent == rowAt.end())) return false;
        if (place > 0) row.parent = parent->second;
        rowAt[path.empty() ? name : path + L"/" + name] = place;
    }
    row.cells = Chosen(texts, columns);
    list.rows.push_back(std::move(row));
    return true;
}

static std::wstring CsvListRead(std::wstring_view text, BomForm form, ListedRows& list) {
    // What a program was cut off in has no line end.
    if (WholeRows(text).size() != text.size()) return kNoList;
    const std::vector<RowTexts> rows = CsvRows(text);
    BomForm found = BomForm::Summed;
    if (rows.empty() || !CsvFormGet(rows.front(), found)) return kNoList;
    if (found != form) return kOtherForm;

    const std::size_t width = rows.front().size();
    const std::size_t own = width - (form == BomForm::Levels ? 3 : 2);
    RowTexts titles(rows.front().begin(), rows.front().begin() + static_cast<std::ptrdiff_t>(own));
    // The number of a row follows from its place.
    titles.front() = kCsvNameTitle;
    const ComparedColumns columns = ComparedColumnsOf(titles, form);
    list.columns = columns.titles;
    RowsByPath rowAt;
    for (std::size_t i = 1; i < rows.size(); ++i)
        if (rows[i].size() != width || !CsvRowTake(rows[i], columns, rowAt, list)) return DamagedRow(i);
    return {};
}

// ---- Pages

// The text up to `end`, which is taken off the front of `text` as well; nothing when it is not there.
static bool TakeUntil(std::wstring_view& text, std::wstring_view end, std::wstring_view& taken) {
    const std::size_t place = text.find(end);
    if (place == std::wstring_view::npos) return false;
    taken = text.substr(0, place);
    text.remove_prefix(place + end.size());
    return true;
}

static bool TakeAttribute(std::wstring_view& text, std::wstring_view name, std::wstring& value) {
    std::wstring_view before;
    std::wstring_view found;
    const std::wstring begin = std::wstring(name) + L"=\"";
    if (!TakeUntil(text, begin, before) || !TakeUntil(text, L"\"", found)) return false;
    value = PageUnescaped(found);
    return true;
}

// The texts between the tags of cells in a row's line.
static RowTexts CellsOf(std::wstring_view line, std::wstring_view tag) {
    RowTexts cells;
    std::wstring_view skipped;
    std::wstring_view cell;
    const std::wstring begin = L"<" + std::wstring(tag);
    const std::wstring end = L"</" + std::wstring(tag) + L">";
    while (TakeUntil(line, begin, skipped) && TakeUntil(line, L">", skipped) && TakeUntil(line, end, cell))
        cells.push_back(PageUnescaped(cell));
    return cells;
}

// Levels and rows of those that may be parents of the next row, the outermost first.
using OpenRows = std::vector<std::pair<int, unsigned int>>;

// False for a row that this command has not written like that.
static bool PageRowTake(std::wstring_view line, const ComparedColumns& columns, std::size_t width,
                        OpenRows& open, ListedRows& list) {
    std::wstring levelText;
    std::wstring name;
    std::wstring count;
    std::wstring_view tag;
    int level = 0;
    const bool isRead = TakeAttribute(line, L" data-l", levelText) && TakeAttribute(line, L" data-n", name) &&
                        TakeAttribute(line, L" data-q", count) && TakeUntil(line, L">", tag);
    if (!isRead || Failed(IntegerFromText(levelText, level))) return false;
    const auto place = static_cast<unsigned int>(list.rows.size());
    ListedRow row = {name, tag == L" data-a", place, {}};
    if (list.form == BomForm::Levels) {
        while (!open.empty() && open.back().first >= level) open.pop_back();
        if (open.empty() != (place == 0)) return false;
        if (!open.empty()) row.parent = open.back().second;
        open.emplace_back(level, place);
    }
    RowTexts cells = CellsOf(line, L"td");
    cells.push_back(count);
    if (cells.size() != width) return false;
    row.cells = Chosen(cells, columns);
    list.rows.push_back(std::move(row));
    return true;
}

static std::wstring PageListRead(std::wstring_view text, BomForm form, ListedRows& list) {
    std::wstring_view skipped;
    std::wstring_view format;
    std::wstring_view section;
    const std::wstring known(std::begin(kPageFormat), std::end(kPageFormat) - 1);
    if (text.find(kPageEnd) == std::wstring_view::npos) return kNoList;
    if (!TakeUntil(text, kPageBegin, skipped) || !TakeUntil(text, L"\"", format)) return kNoList;
    if (format != known) return kOtherFormat;
    if (!text.starts_with(kPageKind)) return kNoList;
    const wchar_t* begin =
        form == BomForm::Levels ? L"<section data-form=\"levels\">" : L"<section data-form=\"summed\">";
    if (!TakeUntil(text, begin, skipped) || !TakeUntil(text, L"</section>", section)) return kOtherForm;

    std::wstring_view head;
    if (!TakeUntil(section, L"</thead>", head)) return kNoList;
    RowTexts titles = CellsOf(head, L"th");
    if (titles.empty()) return kNoList;
    titles.front() = kCsvNameTitle;
    titles.emplace_back(kBomQuantityTitle);
    const ComparedColumns columns = ComparedColumnsOf(titles, form);
    list.columns = columns.titles;
    OpenRows open;
    std::wstring_view line;
    for (std::size_t number = 1; TakeUntil(section, L"\n", line);) {
        if (!line.starts_with(L"<tr ")) continue;
        if (!PageRowTake(line, columns, titles.size(), open, list)) return DamagedRow(number);
        ++number;
    }
    return {};
}

}  // namespace kv
