// A bill of materials in memory: the texts of its cells, and what they were made from.
//
// It is the source of the dialog's table, of every file, and of the comparison with an earlier list.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "bom/bom_list.h"

namespace kv {

inline constexpr wchar_t kBomNumberTitle[] = L"序号";

struct BomTitle {
    std::string name;  // of the table's column
    std::wstring title;
    BomColumn kind;
};

struct BomRow {
    unsigned int model;  // index
    unsigned int count;
    unsigned int node;    // in the tree
    unsigned int parent;  // row; its own for a row without a parent
    int level;            // 0 in the summed list
};

// Nothing: the cell is left alone.
using BomCell = std::optional<std::wstring>;

struct BomSheet {
    BomForm form = BomForm::Summed;
    std::vector<BomTitle> titles;  // of the columns behind the number
    std::vector<NamedModel> models;
    std::vector<std::vector<BomCell>> parameters;  // by model, for those with a row; by column
    std::vector<BomNode> tree;
    std::vector<BomRow> rows;
    std::size_t skeletons = 0;  // placements without a row because they are skeleton models
};

// The list with the parameters that its columns show. Skeleton models get no row.
//
// Cost  1 host call a model, and for one with a row 1 and 2 more for each of its parameters that is shown
BomSheet BomSheetOf(const BomSource& source, BomList list, std::vector<BomTitle> titles);

// What a cell shows. column: index among the titles
BomCell BomCellOf(const BomSheet& sheet, const BomRow& row, std::size_t column);
std::wstring BomCellText(const BomSheet& sheet, const BomRow& row, std::size_t column);

bool IsAssemblyRow(const BomSheet& sheet, const BomRow& row);
const wchar_t* TypeText(bool isAssembly);

// Names of the row's parents from the top assembly on, with "/" between them; empty without a parent.
std::wstring ParentPath(const BomSheet& sheet, const BomRow& row);

// What is not listed and why, as one line.
std::wstring LeftOutText(const LeftCounts& left, std::size_t skeletons);

}  // namespace kv
