// Two lists compared. Plain rules, without a host call.
//
// Rows are the same by model name, type and parent. What is left over on both sides is paired in two steps: a
// model that is left over once on either side has changed its place; a row that shares at least two cells
// with just one row under the same parent, which shares them with no other, was perhaps renamed. What is
// below such a pair is compared below it.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "bom/bom_columns.h"

namespace kv {

struct ListedRow {
    std::wstring name;
    bool isAssembly = false;
    unsigned int parent = 0;          // row; its own for a row without a parent
    std::vector<std::wstring> cells;  // one a column

    bool operator==(const ListedRow&) const = default;
};

// A list as far as it can be compared: its number, level and item code follow from the order of its rows.
struct ListedRows {
    BomForm form = BomForm::Summed;
    std::vector<std::wstring> columns;
    std::vector<ListedRow> rows;  // parents before what is below them

    bool operator==(const ListedRows&) const = default;
};

// Leaves both lists the columns that both have, in the order of `after`. Gives the titles of those that went.
struct LoneColumns {
    std::vector<std::wstring> before;
    std::vector<std::wstring> after;
};
LoneColumns KeepCommonColumns(ListedRows& before, ListedRows& after);

struct CellChange {
    std::size_t column;
    std::wstring before;
    std::wstring after;
};

// A row that is in both lists, other than it was.
struct RowChange {
    unsigned int before;  // row of the old list
    unsigned int after;   // of the new one
    std::wstring name;    // in the new one
    unsigned int parent;  // in the new one
    bool isRenamed = false;
    bool isElsewhere = false;  // under another parent
    bool isReordered = false;  // among the rows that are in both
    std::vector<CellChange> cells = {};
};

struct RowArrival {
    unsigned int after;
    ListedRow row;
};

struct ListChanges {
    std::vector<unsigned int> went;  // rows of the old list
    std::vector<RowArrival> came;    // in the order of the new list
    std::vector<RowChange> changed;  // the same
};

// What became of the old list. The columns of both have to be the same.
//
// Cost  a few passes over both lists; for each row that is left over, the rows that share a cell with it
ListChanges CompareLists(const ListedRows& before, const ListedRows& after);

// The list that the changes lead to.
ListedRows ListWithChanges(const ListedRows& before, const ListChanges& changes);

}  // namespace kv
