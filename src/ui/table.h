// Tables of dialogs.
//
// A table is named by its dialog and its component. What is set without a status says nothing about a cell
// that refuses it: the cell then stays as it was.
#pragma once

#include <span>
#include <string>
#include <vector>

#include <ProToolkit.h>

namespace kv {

struct TableName {
    const char* dialog;
    const char* component;
};

using TableNames = std::vector<std::string>;

struct TableColumn {
    std::string name;
    std::wstring title;
};

// Code of the host's background colours.
using TableColor = int;

// Columns in the shown order. Errors: those of the host's two calls.
[[nodiscard]] ProError TableColumnsGet(TableName table, std::vector<TableColumn>& columns);

// Makes these the table's columns, with their titles. The first has to be there already and keeps its place;
// all others go. Errors: those of the host's calls.
[[nodiscard]] ProError TableColumnsReplace(TableName table, std::span<const TableColumn> columns);

// New columns behind the named one, without titles. None is no failure. Errors: those of the host's call.
[[nodiscard]] ProError TableColumnsInsert(TableName table, const char* after, const TableNames& columns);
[[nodiscard]] ProError TableColumnsDelete(TableName table, const TableNames& columns);
// Titles of all columns in the shown order; there has to be one for each. Errors: those of the host's call.
[[nodiscard]] ProError TableTitlesSet(TableName table, const std::vector<std::wstring>& titles);

// Errors: those of ProUITableRownamesGet.
[[nodiscard]] ProError TableRowsGet(TableName table, TableNames& rows);
[[nodiscard]] ProError TableRowCountGet(TableName table, std::size_t& count);

// Deletes all rows; none is no failure. Errors: those of the host's two calls.
[[nodiscard]] ProError TableRowsClear(TableName table);

// Gives an empty table these rows, in one host call. None is no failure. Errors: those of
// ProUITableRowsInsert.
[[nodiscard]] ProError TableRowsInsert(TableName table, const TableNames& rows);
// Gives an empty table `count` rows named "1", "2" and so on, in one host call. Errors: those of
// ProUITableRowsInsert.
[[nodiscard]] ProError TableRowsNumber(TableName table, std::size_t count);

// Text of a cell; empty when it has none.
std::wstring CellText(TableName table, const std::string& row, const std::string& column);
void CellTextSet(TableName table, const std::string& row, const std::string& column,
                 const std::wstring& text);

// Whether a cell has this background.
bool CellHasColor(TableName table, const std::string& row, const std::string& column, TableColor color);
void CellColorSet(TableName table, const std::string& row, const std::string& column, TableColor color);

// Lets the user select any number of cells, and whole columns by their titles. Errors: those of the host's
// two calls.
[[nodiscard]] ProError TableSelectionAllow(TableName table);

// Lets the user select a column by a click on its title. A host that refuses leaves the titles dead.
void TableTitlesClickable(TableName table);
// The column that the user has selected, which is not selected any more: the next click on the same title is
// to count as well. Empty for none.
std::string ClickedColumn(TableName table);

// Lets the user select one row at a time. Errors: those of ProUITableSelectionpolicySet.
[[nodiscard]] ProError TableSingleSelection(TableName table);

// The row that the user is at; empty for none.
std::string FocusedRow(TableName table);

// Puts a copy of a predefined component into a cell, under a name of its own, or what already goes by that
// name: whether copies go with their rows is the host's affair. Errors: those of
// ProUITableCellComponentNameSet.
[[nodiscard]] ProError CellComponentSet(TableName table, const std::string& row, const std::string& column,
                                        const char* source, const std::string& name);
// Takes it away. A host that refuses keeps it for CellComponentSet.
void CellComponentDelete(TableName table, const std::string& row, const std::string& column);

// Deletes the rows. Errors: those of ProUITableRowsDelete.
[[nodiscard]] ProError TableRowsDelete(TableName table, const TableNames& rows);

// Lets Return in the table count as a double click. A host that refuses leaves the user the double click.
void TableReturnActivates(TableName table);

// Rows with a selected cell, each once, in the order of selection. Errors: those of
// ProUITableSelectednamesGet.
[[nodiscard]] ProError SelectedRowsGet(TableName table, TableNames& rows);
// The first of them; empty without one.
std::string SelectedRow(TableName table);

// Selects one cell and nothing else. Errors: those of ProUITableSelectednamesSet.
[[nodiscard]] ProError TableCellSelect(TableName table, const std::string& row, const std::string& column);

void TableRowsSelect(TableName table, const TableNames& rows);
void TableRowsDeselect(TableName table, const TableNames& rows);

}  // namespace kv
