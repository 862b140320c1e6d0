// The rules of a rename.

#include "rename/rename_plan.h"

#include <algorithm>
#include <unordered_map>

#include "base/csv.h"
#include "base/text.h"

namespace kv {

// The host's names hold one character less than the table lets pass.
static constexpr std::size_t kLongestHostName = 31;

static bool IsNamePart(wchar_t character);
static RowFault NameFault(const RenameRow& row);
static void AddOwners(std::size_t model,
                      const std::unordered_map<std::size_t, std::vector<std::size_t>>& below,
                      std::vector<bool>& seen, std::vector<std::size_t>& order);

const wchar_t* TypeOf(const RenameRow& row) {
    return row.type == kPartType ? kPartType : kAssemblyType;
}

std::wstring NameSet::KeyOf(std::wstring_view name, std::wstring_view type) {
    return UpperCase(name) + L'.' + UpperCase(type);
}

void NameSet::AddFile(std::wstring_view fileName) {
    std::size_t dot = fileName.rfind(L'.');
    const bool isVersion = dot != std::wstring_view::npos && dot + 1 < fileName.size() &&
                           fileName.find_first_not_of(L"0123456789", dot + 1) == std::wstring_view::npos;
    if (isVersion) {
        fileName = fileName.substr(0, dot);
        dot = fileName.rfind(L'.');
    }
    if (dot != std::wstring_view::npos) Add(fileName.substr(0, dot), fileName.substr(dot + 1));
}

// ---- Checking rows

std::vector<RowFault> RowFaults(std::span<const RenameRow> rows, const NameSet& inUse) {
    NameSet old;
    NameSet seen;
    for (const RenameRow& row : rows) old.Add(row.oldName, TypeOf(row));
    std::vector<RowFault> faults;
    faults.reserve(rows.size());
    for (const RenameRow& row : rows) {
        RowFault fault = NameFault(row);
        if (fault == RowFault::None && seen.Has(row.newName, TypeOf(row))) fault = RowFault::Twice;
        if (fault == RowFault::None && old.Has(row.newName, TypeOf(row))) fault = RowFault::SwapOrChain;
        if (fault == RowFault::None && inUse.Has(row.newName, TypeOf(row))) fault = RowFault::Exists;
        seen.Add(row.newName, TypeOf(row));
        faults.push_back(fault);
    }
    return faults;
}

static RowFault NameFault(const RenameRow& row) {
    if (row.newName.empty()) return RowFault::Empty;
    if (row.newName.size() > kLongestHostName) return RowFault::TooLong;
    if (!std::ranges::all_of(row.newName, IsNamePart)) return RowFault::Characters;
    return UpperCase(row.newName) == UpperCase(row.oldName) ? RowFault::Unchanged : RowFault::None;
}

static bool IsNamePart(wchar_t character) {
    return (character >= L'0' && character <= L'9') || (character >= L'A' && character <= L'Z') ||
           (character >= L'a' && character <= L'z') || character == L'_' || character == L'-' ||
           character >= 0x80;
}

const wchar_t* FaultText(RowFault fault) {
    switch (fault) {
        case RowFault::None:
            break;
        case RowFault::Empty:
            return L"新名称为空";
        case RowFault::TooLong:
            return L"新名称超过31个字符";
        case RowFault::Characters:
            return L"新名称含有不允许的字符";
        case RowFault::Unchanged:
            return L"新名称与原名称相同";
        case RowFault::Twice:
            return L"新名称在表格中重复";
        case RowFault::SwapOrChain:
            return L"新名称是另一行的原名称，请分两次重命名";
        case RowFault::Exists:
            return L"新名称在当前会话或工作目录中已存在";
    }
    return L"";
}

// ---- Files of tables

static bool IsTitleRow(const std::vector<std::wstring>& cells) {
    return cells.size() >= kReadColumns && cells[1] == kColumnTitles[1] && cells[3] == kColumnTitles[3];
}

std::vector<LoadedRow> RowsOfFile(std::span<const std::vector<std::wstring>> cells) {
    const auto titles = std::ranges::find_if(cells, IsTitleRow);
    if (titles != cells.end()) cells = cells.subspan(static_cast<std::size_t>(titles - cells.begin()) + 1);
    std::vector<LoadedRow> rows;
    for (std::vector<std::wstring> row : cells) {
        row.resize(std::max(row.size(), kReadColumns));
        const std::span read = std::span(row).first(kReadColumns);
        if (std::ranges::all_of(read, [](const std::wstring& text) { return text.empty(); })) continue;
        rows.push_back({row[0], {row[1], row[2], row[3]}});
    }
    return rows;
}

// ---- The tree

std::vector<TreeTie> TiesOf(std::span<const TreeEntry> entries) {
    std::vector<std::size_t> path = {0};  // the model of each level above the entry
    std::vector<TreeTie> ties;
    for (const TreeEntry& entry : entries) {
        path.resize(static_cast<std::size_t>(entry.level));
        ties.emplace_back(path.back(), entry.model);
        path.push_back(entry.model);
    }
    std::ranges::sort(ties);
    ties.erase(std::unique(ties.begin(), ties.end()), ties.end());
    return ties;
}

std::vector<std::size_t> OwnersOf(std::span<const TreeTie> ties, std::span<const std::size_t> changed) {
    std::size_t count = 1;
    std::unordered_map<std::size_t, std::vector<std::size_t>> above;
    std::unordered_map<std::size_t, std::vector<std::size_t>> below;
    for (const auto& [owner, model] : ties) {
        above[model].push_back(owner);
        below[owner].push_back(model);
        count = std::max({count, owner + 1, model + 1});
    }
    std::vector<bool> isOwner(count);
    std::vector<std::size_t> open(changed.begin(), changed.end());
    while (!open.empty()) {
        const std::size_t model = open.back();
        open.pop_back();
        for (const std::size_t owner : above[model]) {
            if (isOwner[owner]) continue;
            isOwner[owner] = true;
            open.push_back(owner);
        }
    }
    std::vector<bool> seen(count);
    std::vector<std::size_t> order;
    AddOwners(0, below, seen, order);
    std::erase_if(order, [&isOwner](std::size_t model) { return !isOwner[model]; });
    return order;
}

// All models, each after those below it. The depth is that of an assembly, which the host limits.
static void AddOwners(std::size_t model,
                      const std::unordered_map<std::size_t, std::vector<std::size_t>>& below,
                      std::vector<bool>& seen, std::vector<std::size_t>& order) {
    seen[model] = true;
    const auto models = below.find(model);
    if (models != below.end())
        for (const std::size_t next : models->second)
            if (!seen[next]) AddOwners(next, below, seen, order);
    order.push_back(model);
}

// ---- The reverse table

std::vector<RenameChange> ChangesBack(std::span<const std::vector<std::wstring>> cells) {
    std::vector<RenameChange> changes;
    for (const std::vector<std::wstring>& row : cells) {
        if (row.size() < std::size(kReverseTitles) || row[0] == kReverseTitles[0]) continue;
        const std::wstring state = WithoutBlanks(row[3]);
        // A trial has no old name.
        if (row[2].empty() || state == kStateFailed) continue;
        changes.push_back({CellAsWritten(row[0]), row[1], CellAsWritten(row[2])});
    }
    std::ranges::reverse(changes);
    return changes;
}

}  // namespace kv
