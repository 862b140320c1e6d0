// The table of the bill of materials.
#pragma once

#include <string>

#include <ProUI.h>

#include "bom/bom_list.h"
#include "ui/table.h"

namespace kv {

inline constexpr char kBomDialog[] = "KvBom";
inline constexpr TableName kBomTable = {kBomDialog, "bom_list"};
// The first column, which numbers the rows; the others are "param1", "param2" and so on.
inline constexpr char kNumberColumn[] = "num";
// Background of the cells of an assembly. It is also what tells a row's type later.
inline constexpr TableColor kAssemblyColor = PRO_UI_COLOR_3D_LIGHT_SHADOW;

// Settings of the titles, for SettingsPath.
inline constexpr wchar_t kBomSettings[] = L"KVconfig\\KvBom.ini";

// Deletes the rows and makes the columns that the settings name for this form. Errors: those of the host's
// table calls.
[[nodiscard]] ProError BomColumnsReset(BomForm form);

// Fills the table, which has to be empty, with a row for each item that is no skeleton model.
//
// Cost    at most 4 host calls a row and 4 a cell; what the rows of one model share is read once
// Errors  of reading the columns and of inserting the rows
[[nodiscard]] ProError BomListShow(const BomList& list);

}  // namespace kv
