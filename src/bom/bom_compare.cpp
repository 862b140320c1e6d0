// Two lists compared.

#include "bom/bom_compare.h"

#include <algorithm>
#include <optional>
#include <unordered_map>
#include <utility>

#include "base/scope_exit.h"

namespace kv {

static constexpr unsigned int kNoRow = ~0U;
static constexpr unsigned int kLeastEqualCells = 2;

using RowNumbers = std::vector<unsigned int>;

struct Pairing {
    const ListedRows& before;
    const ListedRows& after;
    RowNumbers afterOf;   // by row of the old list
    RowNumbers beforeOf;  // by row of the new list
};

// One side of a pairing, so that a rule can be asked from either.
struct PairingSide {
    const ListedRows& own;
    const ListedRows& other;
    const RowNumbers& pairs;       // of this side
    const RowNumbers& otherPairs;  // of the other
};

static void Pair(Pairing& pairing, unsigned int before, unsigned int after);
static void PairSameRows(Pairing& pairing);
static bool PairMovedRows(Pairing& pairing);
static bool PairRenamedRows(Pairing& pairing);
static RowNumbers SoleFits(const PairingSide& side, bool isOld);
static std::vector<bool> KeptInOrder(const RowNumbers& places);
static RowChange ChangeOf(const Pairing& pairing, unsigned int before);

LoneColumns KeepCommonColumns(ListedRows& before, ListedRows& after) {
    const auto placeIn = [](const ListedRows& list, const std::wstring& title) {
        const auto found = std::find(list.columns.begin(), list.columns.end(), title);
        return static_cast<std::size_t>(found - list.columns.begin());
    };
    LoneColumns lone;
    std::vector<std::pair<std::size_t, std::size_t>> common;
    for (std::size_t i = 0; i < after.columns.size(); ++i) {
        const std::size_t place = placeIn(before, after.columns[i]);
        if (place == before.columns.size())
            lone.after.push_back(after.columns[i]);
        else
            common.emplace_back(place, i);
    }
    for (const std::wstring& title : before.columns)
        if (placeIn(after, title) == after.columns.size()) lone.before.push_back(title);

    const auto keep = [](std::vector<std::wstring>& texts, const std::vector<std::size_t>& places) {
        std::vector<std::wstring> kept;
        kept.reserve(places.size());
        for (const std::size_t place : places) kept.push_back(std::move(texts[place]));
        texts = std::move(kept);
    };
    std::vector<std::size_t> oldPlaces;
    std::vector<std::size_t> newPlaces;
    for (const auto& [oldPlace, newPlace] : common) {
        oldPlaces.push_back(oldPlace);
        newPlaces.push_back(newPlace);
    }
    keep(before.columns, oldPlaces);
    keep(after.columns, newPlaces);
    for (ListedRow& row : before.rows) keep(row.cells, oldPlaces);
    for (ListedRow& row : after.rows) keep(row.cells, newPlaces);
    return lone;
}

ListChanges CompareLists(const ListedRows& before, const ListedRows& after) {
    Pairing pairing = {before, after, RowNumbers(before.rows.size(), kNoRow),
                       RowNumbers(after.rows.size(), kNoRow)};
    // The assembly that is listed is the same one, whatever its name is now.
    const bool areTrees = before.form == BomForm::Levels && after.form == BomForm::Levels;
    if (areTrees && !before.rows.empty() && !after.rows.empty()) Pair(pairing, 0, 0);
    do {
        PairSameRows(pairing);
    } while (PairMovedRows(pairing) || PairRenamedRows(pairing));

    ListChanges changes;
    RowNumbers kept;    // rows of the old list
    RowNumbers places;  // where they are now
    for (unsigned int row = 0; row < before.rows.size(); ++row) {
        const unsigned int place = pairing.afterOf[row];
        (place == kNoRow ? changes.went : kept).push_back(row);
        if (place != kNoRow) places.push_back(place);
    }
    const std::vector<bool> inOrder = KeptInOrder(places);
    for (std::size_t i = 0; i < kept.size(); ++i) {
        RowChange change = ChangeOf(pairing, kept[i]);
        change.isReordered = !inOrder[i];
        const bool isChanged =
            change.isReordered || change.isRenamed || change.isElsewhere || !change.cells.empty();
        if (isChanged) changes.changed.push_back(std::move(change));
    }
    std::ranges::sort(changes.changed, {}, &RowChange::after);
    for (unsigned int row = 0; row < after.rows.size(); ++row)
        if (pairing.beforeOf[row] == kNoRow) changes.came.push_back({row, after.rows[row]});
    return changes;
}

static void Pair(Pairing& pairing, unsigned int before, unsigned int after) {
    pairing.afterOf[before] = after;
    pairing.beforeOf[after] = before;
}

static bool HasParent(const ListedRows& list, unsigned int row) {
    return list.rows[row].parent != row;
}

static std::wstring ModelKey(const ListedRow& row) {
    return (row.isAssembly ? L"A" : L"P") + row.name;
}

// Rows of the same model under parents that are a pair; of several the first with the first.
static void PairSameRows(Pairing& pairing) {
    const auto key = [](unsigned int parent, const ListedRow& row) {
        return std::to_wstring(parent) + ModelKey(row);
    };
    std::unordered_map<std::wstring, RowNumbers> free;
    for (auto row = static_cast<unsigned int>(pairing.after.rows.size()); row-- > 0;) {
        if (pairing.beforeOf[row] != kNoRow) continue;
        const ListedRow& listed = pairing.after.rows[row];
        free[key(HasParent(pairing.after, row) ? listed.parent : kNoRow, listed)].push_back(row);
    }
    for (unsigned int row = 0; row < pairing.before.rows.size(); ++row) {
        if (pairing.afterOf[row] != kNoRow) continue;
        const ListedRow& listed = pairing.before.rows[row];
        const bool hasParent = HasParent(pairing.before, row);
        const unsigned int parent = hasParent ? pairing.afterOf[listed.parent] : kNoRow;
        if (hasParent && parent == kNoRow) continue;
        const auto found = free.find(key(parent, listed));
        if (found == free.end() || found->second.empty()) continue;
        Pair(pairing, row, found->second.back());
        found->second.pop_back();
    }
}

// Models that are left over once on either side.
static bool PairMovedRows(Pairing& pairing) {
    struct LeftOver {
        RowNumbers before;
        RowNumbers after;
    };
    std::unordered_map<std::wstring, LeftOver> left;
    for (unsigned int row = 0; row < pairing.before.rows.size(); ++row)
        if (pairing.afterOf[row] == kNoRow) left[ModelKey(pairing.before.rows[row])].before.push_back(row);
    for (unsigned int row = 0; row < pairing.after.rows.size(); ++row)
        if (pairing.beforeOf[row] == kNoRow) left[ModelKey(pairing.after.rows[row])].after.push_back(row);
    bool any = false;
    for (const auto& [key, rows] : left) {
        if (rows.before.size() != 1 || rows.after.size() != 1) continue;
        Pair(pairing, rows.before.front(), rows.after.front());
        any = true;
    }
    return any;
}

static bool PairRenamedRows(Pairing& pairing) {
    const PairingSide old = {pairing.before, pairing.after, pairing.afterOf, pairing.beforeOf};
    const PairingSide now = {pairing.after, pairing.before, pairing.beforeOf, pairing.afterOf};
    const RowNumbers fits = SoleFits(old, true);
    const RowNumbers fitsBack = SoleFits(now, false);
    bool any = false;
    for (unsigned int row = 0; row < fits.size(); ++row) {
        if (fits[row] == kNoRow || fitsBack[fits[row]] != row) continue;
        Pair(pairing, row, fits[row]);
        any = true;
    }
    return any;
}

// What a row may be renamed to or from has the same type and, by the old list's number, the same parent.
// Nothing for a row below one that is no pair.
static std::optional<std::wstring> GroupOf(const ListedRows& list, const RowNumbers& pairs, unsigned int row,
                                           bool isOld) {
    const ListedRow& listed = list.rows[row];
    const wchar_t* type = listed.isAssembly ? L"A" : L"P";
    if (!HasParent(list, row)) return type + std::wstring(L"-");
    if (pairs[listed.parent] == kNoRow) return std::nullopt;
    return type + std::to_wstring(isOld ? listed.parent : pairs[listed.parent]);
}

// Rows that are left over on one side, by each of their cells that is not empty.
using RowsByCell = std::unordered_map<std::wstring, RowNumbers>;

static std::wstring CellKey(const std::wstring& group, std::size_t column, const std::wstring& text) {
    return group + L"\t" + std::to_wstring(column) + L"\t" + text;
}

static RowsByCell RowsWithCells(const ListedRows& list, const RowNumbers& pairs, bool isOld) {
    RowsByCell rows;
    for (unsigned int row = 0; row < list.rows.size(); ++row) {
        const auto group = pairs[row] == kNoRow ? GroupOf(list, pairs, row, isOld) : std::nullopt;
        const std::vector<std::wstring>& cells = list.rows[row].cells;
        for (std::size_t i = 0; group && i < cells.size(); ++i)
            if (!cells[i].empty()) rows[CellKey(*group, i, cells[i])].push_back(row);
    }
    return rows;
}

// The only row that shares enough cells with this one. The look-up ends at the second.
//
// shared  how many cells each row shares with this one; all 0 before and after
static unsigned int SoleFit(const RowsByCell& rows, const std::wstring& group,
                            const std::vector<std::wstring>& cells, RowNumbers& shared) {
    RowNumbers met;
    const ScopeExit forget([&] {
        for (const unsigned int row : met) shared[row] = 0;
    });
    unsigned int fit = kNoRow;
    for (std::size_t i = 0; i < cells.size(); ++i) {
        const auto same = cells[i].empty() ? rows.end() : rows.find(CellKey(group, i, cells[i]));
        if (same == rows.end()) continue;
        for (const unsigned int row : same->second) {
            if (shared[row] == 0) met.push_back(row);
            if (++shared[row] != kLeastEqualCells) continue;
            if (fit != kNoRow) return kNoRow;
            fit = row;
        }
    }
    return fit;
}

// For each row that is left over the one left over on the other side that it shares enough cells with; none
// where there is no such row, or more than one.
static RowNumbers SoleFits(const PairingSide& side, bool isOld) {
    const RowsByCell rows = RowsWithCells(side.other, side.otherPairs, !isOld);
    RowNumbers shared(side.other.rows.size());
    RowNumbers fits(side.own.rows.size(), kNoRow);
    for (unsigned int row = 0; row < side.own.rows.size(); ++row) {
        if (side.pairs[row] != kNoRow) continue;
        const auto group = GroupOf(side.own, side.pairs, row, isOld);
        if (group) fits[row] = SoleFit(rows, *group, side.own.rows[row].cells, shared);
    }
    return fits;
}

// Which of the rows stay while the fewest others change their place: the longest run of rising numbers.
static std::vector<bool> KeptInOrder(const RowNumbers& places) {
    RowNumbers ends;  // of the runs of each length the one that ends lowest
    RowNumbers back(places.size(), kNoRow);
    for (unsigned int i = 0; i < places.size(); ++i) {
        const auto end =
            std::ranges::lower_bound(ends, places[i], {}, [&](unsigned int at) { return places[at]; });
        if (end != ends.begin()) back[i] = *(end - 1);
        if (end == ends.end())
            ends.push_back(i);
        else
            *end = i;
    }
    std::vector<bool> kept(places.size());
    for (unsigned int at = ends.empty() ? kNoRow : ends.back(); at != kNoRow; at = back[at]) kept[at] = true;
    return kept;
}

static RowChange ChangeOf(const Pairing& pairing, unsigned int before) {
    const unsigned int after = pairing.afterOf[before];
    const ListedRow& old = pairing.before.rows[before];
    const ListedRow& now = pairing.after.rows[after];
    RowChange change = {before, after, now.name, now.parent};
    change.isRenamed = old.name != now.name;
    const bool hadParent = HasParent(pairing.before, before);
    const bool hasParent = HasParent(pairing.after, after);
    change.isElsewhere = hadParent != hasParent || (hasParent && pairing.afterOf[old.parent] != now.parent);
    for (std::size_t i = 0; i < now.cells.size(); ++i)
        if (old.cells[i] != now.cells[i]) change.cells.push_back({i, old.cells[i], now.cells[i]});
    return change;
}

ListedRows ListWithChanges(const ListedRows& before, const ListChanges& changes) {
    std::vector<const RowChange*> changeOf(before.rows.size());
    for (const RowChange& change : changes.changed) changeOf[change.before] = &change;
    std::vector<bool> taken(before.rows.size());
    for (const unsigned int row : changes.went) taken[row] = true;
    // Rows with a place of their own: those that came and those that were reordered.
    std::unordered_map<unsigned int, const RowArrival*> cameAt;
    std::unordered_map<unsigned int, unsigned int> movedTo;
    for (const RowArrival& arrival : changes.came) cameAt[arrival.after] = &arrival;
    for (const RowChange& change : changes.changed) {
        if (!change.isReordered) continue;
        movedTo[change.after] = change.before;
        taken[change.before] = true;
    }

    ListedRows result = {before.form, before.columns, {}};
    RowNumbers oldOf;  // by row of the result; none for one that came
    RowNumbers newOf(before.rows.size(), kNoRow);
    unsigned int next = 0;
    const std::size_t count = before.rows.size() - changes.went.size() + changes.came.size();
    for (unsigned int place = 0; place < count; ++place) {
        unsigned int old = kNoRow;
        if (const auto moved = movedTo.find(place); moved != movedTo.end()) {
            old = moved->second;
        } else if (!cameAt.contains(place)) {
            while (next < taken.size() && taken[next]) ++next;
            if (next == taken.size()) break;
            old = next++;
        }
        if (old != kNoRow) newOf[old] = place;
        oldOf.push_back(old);
        result.rows.push_back(old == kNoRow ? cameAt[place]->row : before.rows[old]);
    }
    for (unsigned int place = 0; place < oldOf.size(); ++place) {
        const unsigned int old = oldOf[place];
        if (old == kNoRow) continue;
        ListedRow& row = result.rows[place];
        row.parent = newOf[row.parent];
        const RowChange* change = changeOf[old];
        if (change == nullptr) continue;
        row.name = change->name;
        row.parent = change->parent;
        for (const CellChange& cell : change->cells) row.cells[cell.column] = cell.after;
    }
    return result;
}

}  // namespace kv
