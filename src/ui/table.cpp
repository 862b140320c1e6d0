// Tables of dialogs, on the toolkit's table calls.

#include "ui/table.h"

#include <string_view>
#include <unordered_set>

#include <ProUITable.h>

#include "base/host_handle.h"
#include "base/scope_exit.h"
#include "base/status.h"
#include "base/text.h"

namespace kv {

using NamesCall = ProError (*)(char* dialog, char* component, int count, char** names);

static ProError ColumnNamesGet(TableName table, HostNames& names);
static ProError RowNamesGet(TableName table, HostNames& names);
static std::vector<char*> Pointers(const TableNames& names);
static ProError ForNames(NamesCall call, TableName table, const TableNames& names);

ProError TableColumnsGet(TableName table, std::vector<TableColumn>& columns) {
    HostNames names;
    HostLabels titles;
    ProError status = ColumnNamesGet(table, names);
    if (!Failed(status))
        status = titles.Received(ProUITableColumnlabelsGet(HostName(table.dialog), HostName(table.component),
                                                           titles.ReceiveCount(), titles.ReceiveNames()));
    if (Failed(status)) return status;
    columns.clear();
    for (std::size_t i = 0; i < names.All().size(); ++i) columns.push_back({names.At(i), titles.At(i)});
    return PRO_TK_NO_ERROR;
}

// The user may have moved the columns: the one that stays is known by its name.
ProError TableColumnsReplace(TableName table, std::span<const TableColumn> columns) {
    HostNames found;
    ProError status = ColumnNamesGet(table, found);
    if (Failed(status)) return status;

    const std::string& first = columns.front().name;
    TableNames others;
    for (const char* name : found.All())
        if (first != name) others.emplace_back(name);
    TableNames added;
    std::vector<std::wstring> titles;
    for (const TableColumn& column : columns) {
        if (column.name != first) added.push_back(column.name);
        titles.push_back(column.title);
    }
    status = TableColumnsDelete(table, others);
    if (!Failed(status)) status = TableColumnsInsert(table, first.c_str(), added);
    return Failed(status) ? status : TableTitlesSet(table, titles);
}

ProError TableColumnsInsert(TableName table, const char* after, const TableNames& columns) {
    if (columns.empty()) return PRO_TK_NO_ERROR;
    return ProUITableColumnsInsert(HostName(table.dialog), HostName(table.component), HostName(after),
                                   static_cast<int>(columns.size()), Pointers(columns).data());
}

ProError TableColumnsDelete(TableName table, const TableNames& columns) {
    return ForNames(ProUITableColumnsDelete, table, columns);
}

ProError TableTitlesSet(TableName table, const std::vector<std::wstring>& titles) {
    std::vector<wchar_t*> texts;
    texts.reserve(titles.size());
    for (const std::wstring& title : titles) texts.push_back(HostText(title.c_str()));
    return ProUITableColumnlabelsSet(HostName(table.dialog), HostName(table.component),
                                     static_cast<int>(texts.size()), texts.data());
}

ProError TableRowsGet(TableName table, TableNames& rows) {
    HostNames names;
    const ProError status = RowNamesGet(table, names);
    if (!Failed(status)) rows.assign(names.All().begin(), names.All().end());
    return status;
}

ProError TableRowCountGet(TableName table, std::size_t& count) {
    HostNames rows;
    const ProError status = RowNamesGet(table, rows);
    count = rows.All().size();
    return status;
}

ProError TableRowsClear(TableName table) {
    HostNames rows;
    const ProError status = RowNamesGet(table, rows);
    if (Failed(status) || rows.All().empty()) return status;
    return ProUITableRowsDelete(HostName(table.dialog), HostName(table.component),
                                static_cast<int>(rows.All().size()), rows.All().data());
}

ProError TableRowsNumber(TableName table, std::size_t count) {
    TableNames numbers(count);
    for (std::size_t i = 0; i < count; ++i) numbers[i] = std::to_string(i + 1);
    return TableRowsInsert(table, numbers);
}

ProError TableRowsInsert(TableName table, const TableNames& rows) {
    if (rows.empty()) return PRO_TK_NO_ERROR;
    return ProUITableRowsInsert(HostName(table.dialog), HostName(table.component), nullptr,
                                static_cast<int>(rows.size()), Pointers(rows).data());
}

std::wstring CellText(TableName table, const std::string& row, const std::string& column) {
    HostString text;
    const ProError status = text.Received(
        ProUITableCellLabelGet(HostName(table.dialog), HostName(table.component), HostName(row.c_str()),
                               HostName(column.c_str()), text.Receive()));
    return Failed(status) ? std::wstring() : TextOf(text);
}

void CellTextSet(TableName table, const std::string& row, const std::string& column,
                 const std::wstring& text) {
    ProUITableCellLabelSet(HostName(table.dialog), HostName(table.component), HostName(row.c_str()),
                           HostName(column.c_str()), HostText(text.c_str()));
}

// What a colour value is made of is the host's own affair: these two functions alone convert it.
bool CellHasColor(TableName table, const std::string& row, const std::string& column, TableColor color) {
    ProUIColor found = {};
    const ProError status =
        ProUITableCellBackgroundColorGet(HostName(table.dialog), HostName(table.component),
                                         HostName(row.c_str()), HostName(column.c_str()), &found);
    return !Failed(status) && found == static_cast<ProUIColor>(color);
}

void CellColorSet(TableName table, const std::string& row, const std::string& column, TableColor color) {
    ProUITableCellBackgroundColorSet(HostName(table.dialog), HostName(table.component), HostName(row.c_str()),
                                     HostName(column.c_str()), static_cast<ProUIColor>(color));
}

ProError TableSelectionAllow(TableName table) {
    const ProError status = ProUITableSelectionpolicySet(HostName(table.dialog), HostName(table.component),
                                                         PROUISELPOLICY_MULTIPLE);
    if (Failed(status)) return status;
    return ProUITableColumnselectionpolicySet(HostName(table.dialog), HostName(table.component),
                                              PROUISELPOLICY_MULTIPLE);
}

void TableTitlesClickable(TableName table) {
    ProUITableColumnselectionpolicySet(HostName(table.dialog), HostName(table.component),
                                       PROUISELPOLICY_SINGLE);
}

std::string ClickedColumn(TableName table) {
    HostNames columns;
    const ProError status = columns.Received(ProUITableSelectedcolumnnamesGet(
        HostName(table.dialog), HostName(table.component), columns.ReceiveCount(), columns.ReceiveNames()));
    if (Failed(status)) return {};
    char* none = nullptr;
    ProUITableSelectedcolumnnamesSet(HostName(table.dialog), HostName(table.component), 0, &none);
    return columns.First();
}

ProError TableSingleSelection(TableName table) {
    return ProUITableSelectionpolicySet(HostName(table.dialog), HostName(table.component),
                                        PROUISELPOLICY_SINGLE);
}

std::string FocusedRow(TableName table) {
    char* row = nullptr;
    char* column = nullptr;
    const ProError status =
        ProUITableFocusCellGet(HostName(table.dialog), HostName(table.component), &row, &column);
    if (Failed(status)) return {};
    const ScopeExit give([&] {
        if (row != nullptr) ProStringFree(row);
        if (column != nullptr) ProStringFree(column);
    });
    return row == nullptr ? std::string() : std::string(row);
}

ProError CellComponentSet(TableName table, const std::string& row, const std::string& column,
                          const char* source, const std::string& name) {
    const ProError status = ProUITableCellComponentCopy(
        HostName(table.dialog), HostName(table.component), HostName(row.c_str()), HostName(column.c_str()),
        HostName(table.dialog), HostName(source), HostName(name.c_str()));
    if (!Failed(status)) return status;
    return ProUITableCellComponentNameSet(HostName(table.dialog), HostName(table.component),
                                          HostName(row.c_str()), HostName(column.c_str()),
                                          HostName(name.c_str()));
}

void CellComponentDelete(TableName table, const std::string& row, const std::string& column) {
    ProUITableCellComponentDelete(HostName(table.dialog), HostName(table.component), HostName(row.c_str()),
                                  HostName(column.c_str()));
}

ProError TableRowsDelete(TableName table, const TableNames& rows) {
    return ForNames(ProUITableRowsDelete, table, rows);
}

void TableReturnActivates(TableName table) {
    ProUITableActivateonreturnEnable(HostName(table.dialog), HostName(table.component));
}

// The host lists selected cells as pairs of names, the row first.
ProError SelectedRowsGet(TableName table, TableNames& rows) {
    HostNames cells;
    const ProError status = cells.Received(ProUITableSelectednamesGet(
        HostName(table.dialog), HostName(table.component), cells.ReceiveCount(), cells.ReceiveNames()));
    if (Failed(status)) return status;
    rows.clear();
    std::unordered_set<std::string_view> seen;
    for (std::size_t i = 0; i + 1 < cells.All().size(); i += 2)
        if (seen.insert(cells.All()[i]).second) rows.emplace_back(cells.All()[i]);
    return PRO_TK_NO_ERROR;
}

std::string SelectedRow(TableName table) {
    TableNames rows;
    return Failed(SelectedRowsGet(table, rows)) || rows.empty() ? std::string() : rows.front();
}

ProError TableCellSelect(TableName table, const std::string& row, const std::string& column) {
    const TableNames cell = {row, column};
    return ForNames(ProUITableSelectednamesSet, table, cell);
}

void TableRowsSelect(TableName table, const TableNames& rows) {
    (void)ForNames(ProUITableRowCellsSelect, table, rows);
}

void TableRowsDeselect(TableName table, const TableNames& rows) {
    (void)ForNames(ProUITableRowCellsDeselect, table, rows);
}

static ProError ColumnNamesGet(TableName table, HostNames& names) {
    return names.Received(ProUITableColumnnamesGet(HostName(table.dialog), HostName(table.component),
                                                   names.ReceiveCount(), names.ReceiveNames()));
}

static ProError RowNamesGet(TableName table, HostNames& names) {
    return names.Received(ProUITableRownamesGet(HostName(table.dialog), HostName(table.component),
                                                names.ReceiveCount(), names.ReceiveNames()));
}

static std::vector<char*> Pointers(const TableNames& names) {
    std::vector<char*> pointers;
    pointers.reserve(names.size());
    for (const std::string& name : names) pointers.push_back(HostName(name.c_str()));
    return pointers;
}

static ProError ForNames(NamesCall call, TableName table, const TableNames& names) {
    if (names.empty()) return PRO_TK_NO_ERROR;
    return call(HostName(table.dialog), HostName(table.component), static_cast<int>(names.size()),
                Pointers(names).data());
}

}  // namespace kv
