// The table of the rename dialog: rows with an input for the new name.
#pragma once

#include <span>
#include <string>
#include <vector>

#include "rename/rename_plan.h"
#include "rename/rename_tree.h"
#include "ui/table.h"

namespace kv {

inline constexpr char kRenameDialog[] = "KvRename";
inline constexpr TableName kRenameTable = {kRenameDialog, "mdl_list"};

// Names of the inputs, with the row's number behind.
inline constexpr char kOwnInput[] = "input";
inline constexpr char kLoadedInput[] = "inputImport";

// What a row shows.
struct RowContent {
    std::wstring number;
    RenameRow row;
    std::wstring placements;
    std::wstring drawing;
};

// A row as it stands in the table.
struct ShownRow {
    std::string name;
    std::string input;   // empty once it was taken away
    RowContent content;  // the new name as it was at first
};

// Deletes all rows with their inputs. Costs a host call a row.
[[nodiscard]] ProError RenameRowsClear(std::vector<ShownRow>& shown);

// Fills the table, which has to be empty. Costs 7 host calls a row. Errors: of inserting the rows; of an
// input that cannot be had, whose row and all behind it are left out.
[[nodiscard]] ProError RenameRowsShow(std::vector<RowContent> contents, const char* input,
                                      std::vector<ShownRow>& shown);

// What the models come to as rows, but for those whose names begin with one of the prefixes of `filter`.
std::vector<RowContent> RowsOf(const RenameTree& tree, const NameSet& folder, const std::wstring& filter);

// A row of a file, with what is known of its model.
RowContent RowOf(LoadedRow loaded, const RenameTree& tree, const NameSet& folder);

// The rows with the new names as they are typed now. Costs two host calls a row. Errors: those of
// ProUIInputpanelValueGet; PRO_TK_E_NOT_FOUND for a row that the host kept without its input.
[[nodiscard]] ProError RenameRowsRead(std::span<const ShownRow> shown, std::vector<RenameRow>& rows);

// Puts other new names into the inputs.
void NewNamesShow(std::span<const ShownRow> shown, std::span<const std::wstring> names);

// Takes the rows at these places, in order, out of the table; those left are numbered anew.
[[nodiscard]] ProError RenameRowsDrop(std::span<const std::size_t> places, std::vector<ShownRow>& shown);

}  // namespace kv
