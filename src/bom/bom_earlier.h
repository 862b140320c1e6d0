// Lists that were written before, read again to be compared. Plain rules, without a host call.
#pragma once

#include <string>
#include <string_view>

#include "bom/bom_compare.h"
#include "bom/bom_sheet.h"

namespace kv {

// A list in memory as far as it can be compared. The number is always among its columns.
ListedRows ListedRowsOf(const BomSheet& sheet);

// The list of this form from the text of a csv file or a page that this command wrote. A refusal in words;
// empty when the list was read.
std::wstring EarlierListRead(std::wstring_view text, BomForm form, ListedRows& list);

}  // namespace kv
