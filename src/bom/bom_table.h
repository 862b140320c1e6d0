// The table of the bill of materials.
#pragma once

#include <span>
#include <string>
#include <vector>

#include <ProUI.h>

#include "bom/bom_sheet.h"
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

// The titles that the settings name for this form, the number's not among them.
std::vector<BomTitle> BomTitlesOfSettings(BomForm form);
// These titles with the names of their columns and what they stand for.
std::vector<BomTitle> BomTitlesOf(const std::vector<std::wstring>& titles, BomForm form);

// Deletes the rows and makes these columns behind the number. Errors: those of the host's table calls.
[[nodiscard]] ProError BomColumnsReset(const std::vector<BomTitle>& titles);

// The titles that the table has now, in the shown order. Errors: those of TableColumnsGet.
[[nodiscard]] ProError BomTitlesGet(BomForm form, std::vector<BomTitle>& titles);

// Fills the table, which has to be empty, with these rows of the list. A row is named by its number in the
// list, wherever it stands.
//
// Cost    1 host call, and for each cell that is shown 1, or 2 in the row of an assembly
// Errors  of inserting the rows
[[nodiscard]] ProError BomRowsShow(const BomSheet& sheet, std::span<const unsigned int> order);

}  // namespace kv
