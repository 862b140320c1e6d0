// What changed between two lists, as lines for people.

#include "bom/bom_changes.h"

#include <algorithm>
#include <cstddef>
#include <string_view>
#include <utility>

#include "bom/bom_sheet.h"

namespace kv {

static constexpr wchar_t kCame[] = L"新增";
static constexpr wchar_t kWent[] = L"删除";
static constexpr wchar_t kNumber[] = L"数量";
static constexpr wchar_t kCell[] = L"列";
static constexpr wchar_t kPlace[] = L"位置";
static constexpr wchar_t kRenamed[] = L"可能改名";
static constexpr const wchar_t* kKinds[] = {kCame, kWent, kNumber, kCell, kPlace, kRenamed};
static constexpr wchar_t kNoChange[] = L"没有差别";
static constexpr wchar_t kRowStart[] = L"第 ";
static constexpr wchar_t kRowEnd[] = L" 行";

static std::wstring PathOf(const ListedRows& list, unsigned int row);
static ChangeLine LineOf(const wchar_t* kind, const ListedRows& list, unsigned int row);
static void LinesAdd(const ListedRows& before, const ListedRows& after, const RowChange& change,
                     bool followsParent, std::vector<ChangeLine>& lines);

std::array<std::wstring, kChangeColumns> ChangeCells(const ChangeLine& line) {
    return {line.kind, line.name, TypeText(line.isAssembly), line.path, line.column, line.before, line.after};
}

std::vector<ChangeLine> ChangeLines(const ListedRows& before, const ListedRows& after,
                                    const ListChanges& changes) {
    std::vector<bool> isMoved(after.rows.size());
    for (const RowChange& change : changes.changed)
        isMoved[change.after] = change.isReordered || change.isElsewhere;
    std::vector<ChangeLine> lines;
    auto came = changes.came.begin();
    const auto addArrivals = [&](unsigned int end) {
        for (; came != changes.came.end() && came->after < end; ++came)
            lines.push_back(LineOf(kCame, after, came->after));
    };
    for (const RowChange& change : changes.changed) {
        addArrivals(change.after);
        const bool hasParent = change.parent != change.after;
        LinesAdd(before, after, change, hasParent && isMoved[change.parent], lines);
    }
    addArrivals(static_cast<unsigned int>(after.rows.size()));
    for (const unsigned int row : changes.went) lines.push_back(LineOf(kWent, before, row));
    return lines;
}

std::wstring ChangeCountText(const std::vector<ChangeLine>& lines) {
    std::wstring text;
    for (const wchar_t* kind : kKinds) {
        const auto isIt = [kind](const ChangeLine& line) { return std::wstring_view(line.kind) == kind; };
        const auto count = std::ranges::count_if(lines, isIt);
        if (count > 0)
            text.append(text.empty() ? L"" : L"，").append(kind).append(L" " + std::to_wstring(count));
    }
    return text.empty() ? kNoChange : text;
}

static void LinesAdd(const ListedRows& before, const ListedRows& after, const RowChange& change,
                     bool followsParent, std::vector<ChangeLine>& lines) {
    const auto add = [&](const wchar_t* kind, const std::wstring& column, std::wstring old,
                         std::wstring now) {
        ChangeLine line = LineOf(kind, after, change.after);
        line.column = column;
        line.before = std::move(old);
        line.after = std::move(now);
        lines.push_back(std::move(line));
    };
    if (change.isRenamed) add(kRenamed, {}, before.rows[change.before].name, change.name);
    for (const CellChange& cell : change.cells) {
        const std::wstring& title = after.columns[cell.column];
        const bool isNumber = BomColumnOf(title, after.form) == BomColumn::Quantity;
        add(isNumber ? kNumber : kCell, title, cell.before, cell.after);
    }
    if (change.isElsewhere)
        add(kPlace, {}, PathOf(before, change.before), PathOf(after, change.after));
    else if (change.isReordered && !followsParent)
        add(kPlace, {}, kRowStart + std::to_wstring(change.before + 1) + kRowEnd,
            kRowStart + std::to_wstring(change.after + 1) + kRowEnd);
}

static ChangeLine LineOf(const wchar_t* kind, const ListedRows& list, unsigned int row) {
    const ListedRow& listed = list.rows[row];
    return {kind, listed.name, listed.isAssembly, PathOf(list, row), {}, {}, {}};
}

static std::wstring PathOf(const ListedRows& list, unsigned int row) {
    std::wstring path;
    while (list.rows[row].parent != row) {
        row = list.rows[row].parent;
        path.insert(0, path.empty() ? list.rows[row].name : list.rows[row].name + L"/");
    }
    return path;
}

}  // namespace kv
