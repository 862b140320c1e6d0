// Which rows of a list are shown, and in which order. Plain rules, without a host call.
#pragma once

#include <string>
#include <vector>

#include "bom/bom_sheet.h"

namespace kv {

enum class BomSort { ListOrder, Up, Down };

struct BomView {
    std::string column = {};  // sorted by: name of the table's column
    BomSort sort = BomSort::ListOrder;
    std::wstring filter = {};
};

// What a click on a column's title makes of a view: up, down, and the order of the list again.
void TitleClicked(BomView& view, const std::string& column);

// The rows to show, as indices: those with the filter's text in any cell, letter case aside, in the view's
// order. Rows that are equal there keep the order of the list; rows without a text come last either way.
std::vector<unsigned int> BomOrder(const BomSheet& sheet, const BomView& view);

}  // namespace kv
