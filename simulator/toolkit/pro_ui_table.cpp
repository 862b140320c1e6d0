#include <ProUITable.h>

#include <optional>
#include <string>
#include <vector>

#include "simulator/memory/host_memory.h"
#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/ui_call.h"

using namespace sim;

namespace {

// What a cell shows as its background when nobody has set one.
constexpr int kTableColor = 0;
// A gap in the list of codes.
constexpr int kNoColor = 25;

// The codes that the host has been seen to have.
bool IsColor(ProUIColor code) {
    const bool isListed = code >= PRO_UI_COLOR_BLACK && code <= PRO_UI_COLOR_HOVER_EFFECT;
    return (isListed && code != kNoColor) || code == PRO_UI_COLOR_TRANSPARENT;
}

Table* NamedTable(Session& host, const char* dialog, const char* component) {
    Component* found = NamedComponent(host, dialog, component, ComponentKind::kTable);
    return found == nullptr ? nullptr : &found->table;
}

TableCell* NamedCell(Session& host, const char* dialog, const char* component, const char* row,
                     const char* column) {
    Table* table = NamedTable(host, dialog, component);
    if (table == nullptr) return nullptr;
    TableCell* cell = row == nullptr || column == nullptr ? nullptr : table->Cell(row, column);
    if (cell == nullptr)
        host.report.Violation("the table " + Named(component) + " has no cell " + Named(row) + ", " +
                              Named(column));
    return cell;
}

using Lines = std::vector<Table::Line>;
using LineChange = bool (Table::*)(const std::vector<std::string>& names);
using LineInsertion = bool (Table::*)(const std::optional<std::string>& after,
                                      const std::vector<std::string>& names);

ProError GiveTexts(Session& host, const std::vector<std::string>& names, int* count, char*** values) {
    if (count == nullptr || values == nullptr)
        return Refuse(host, PRO_TK_BAD_INPUTS, "an output's address is null");
    *count = static_cast<int>(names.size());
    *values = NewHostTextArray(host.memory, names);
    return PRO_TK_NO_ERROR;
}

ProError GiveNames(Session& host, const Lines& lines, int* count, char*** values) {
    std::vector<std::string> names;
    names.reserve(lines.size());
    for (const Table::Line& line : lines) names.push_back(line.name);
    return GiveTexts(host, names, count, values);
}

ProError GiveLabels(Session& host, const Lines& lines, int* count, wchar_t*** values) {
    if (count == nullptr || values == nullptr)
        return Refuse(host, PRO_TK_BAD_INPUTS, "an output's address is null");
    std::vector<std::wstring> labels;
    labels.reserve(lines.size());
    for (const Table::Line& line : lines) labels.push_back(line.label);
    *count = static_cast<int>(labels.size());
    *values = NewHostStringArray(host.memory, labels);
    return PRO_TK_NO_ERROR;
}

ProError Insert(Session& host, Table* table, LineInsertion insert, const char* after, int count,
                char** names) {
    if (table == nullptr) return PRO_TK_GENERAL_ERROR;
    const auto list = NameList(host, count, names);
    if (!list) return PRO_TK_BAD_INPUTS;
    const std::optional<std::string> place =
        after == nullptr ? std::nullopt : std::optional<std::string>(after);
    if ((table->*insert)(place, *list)) return PRO_TK_NO_ERROR;
    return Refuse(host, PRO_TK_GENERAL_ERROR,
                  "a name is taken or empty, or nothing is called " + Named(after));
}

ProError Delete(Session& host, Table* table, LineChange remove, int count, char** names) {
    if (table == nullptr) return PRO_TK_GENERAL_ERROR;
    const auto list = NameList(host, count, names);
    if (!list) return PRO_TK_BAD_INPUTS;
    if ((table->*remove)(*list)) return PRO_TK_NO_ERROR;
    return Refuse(host, PRO_TK_GENERAL_ERROR, "deletes what the table does not have");
}

bool AllowsMany(const Table& table) {
    return table.policy == SelectionPolicy::kMultiple || table.policy == SelectionPolicy::kExtended;
}

ProError SetPolicy(Session& host, Table* table, ProUISelectionpolicy value, SelectionPolicy Table::*policy) {
    if (table == nullptr) return PRO_TK_GENERAL_ERROR;
    if (value < PROUISELPOLICY_NONE || value > PROUISELPOLICY_EXTENDED)
        return Refuse(host, PRO_TK_BAD_INPUTS, "there is no such selection policy");
    table->*policy = static_cast<SelectionPolicy>(value);
    return PRO_TK_NO_ERROR;
}

ProError ChangeSelection(Session& host, Table* table, LineChange change, int count, char** names) {
    if (table == nullptr) return PRO_TK_GENERAL_ERROR;
    const auto list = NameList(host, count, names);
    if (!list) return PRO_TK_BAD_INPUTS;
    if (!AllowsMany(*table))
        return Refuse(host, PRO_TK_GENERAL_ERROR, "one cell is all that may be selected");
    if ((table->*change)(*list)) return PRO_TK_NO_ERROR;
    return Refuse(host, PRO_TK_GENERAL_ERROR, "selects what the table does not have");
}

// Pairs of row and column.
std::vector<CellName> Cells(const std::vector<std::string>& names) {
    std::vector<CellName> cells;
    for (std::size_t i = 0; i + 1 < names.size(); i += 2) cells.push_back({names[i], names[i + 1]});
    return cells;
}

}  // namespace

ProError ProUITableActivateActionSet(char* dialog, char* component, ProUIAction callback, ProAppData data) {
    static const CallSite kSite("ProUITableActivateActionSet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, component, callback, data}, [&](Session& host) -> ProError {
        return SetAction(host, dialog, component, ComponentKind::kTable, DialogEvent::kActivate,
                         {callback, data});
    });
}

ProError ProUITableArmActionSet(char* dialog, char* component, ProUIAction callback, ProAppData data) {
    static const CallSite kSite("ProUITableArmActionSet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, component, callback, data}, [&](Session& host) -> ProError {
        return SetAction(host, dialog, component, ComponentKind::kTable, DialogEvent::kArm, {callback, data});
    });
}

ProError ProUITableFocusCellGet(char* dialog, char* component, char** row, char** column) {
    static const CallSite kSite("ProUITableFocusCellGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, component, Out(row), Out(column)}, [&](Session& host) -> ProError {
        const Table* table = NamedTable(host, dialog, component);
        if (table == nullptr) return PRO_TK_GENERAL_ERROR;
        if (row == nullptr || column == nullptr)
            return Refuse(host, PRO_TK_BAD_INPUTS, "an output's address is null");
        if (!table->focus) return PRO_TK_GENERAL_ERROR;
        *row = NewHostText(host.memory, table->focus->row);
        *column = NewHostText(host.memory, table->focus->column);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProUITableCellComponentCopy(char* dialog, char* component, char* row, char* column,
                                     char* source_device, char* source_component, char* name) {
    static const CallSite kSite("ProUITableCellComponentCopy", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, component, row, column, source_device, source_component, name},
                  [&](Session& host) -> ProError {
                      TableCell* cell = NamedCell(host, dialog, component, row, column);
                      Dialog* source = cell == nullptr ? nullptr : NamedDialog(host, source_device);
                      if (source == nullptr) return PRO_TK_GENERAL_ERROR;
                      const Component* model =
                          source_component == nullptr ? nullptr : source->Find(source_component);
                      if (model == nullptr || model->container != component)
                          return Refuse(host, PRO_TK_GENERAL_ERROR,
                                        "the table " + Named(component) + " has no component " +
                                            Named(source_component));
                      if (const std::string fault = NameFault(name, PRO_NAME_SIZE); !fault.empty())
                          return Refuse(host, PRO_TK_BAD_INPUTS, "the copy's name " + fault);
                      Component copy = *model;
                      copy.name = name;
                      copy.container.clear();
                      copy.inTable = component;
                      copy.cell = {row, column};
                      // A name in use is no misuse: whether deleting rows frees it nobody says.
                      if (NamedDialog(host, dialog)->Add(std::move(copy)) == nullptr)
                          return PRO_TK_GENERAL_ERROR;
                      cell->component = name;
                      return PRO_TK_NO_ERROR;
                  });
}

ProError ProUITableCellComponentNameSet(char* dialog, char* component, char* row, char* column, char* name) {
    static const CallSite kSite("ProUITableCellComponentNameSet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, component, row, column, name}, [&](Session& host) -> ProError {
        TableCell* cell = NamedCell(host, dialog, component, row, column);
        if (cell == nullptr) return PRO_TK_GENERAL_ERROR;
        Component* copy = name == nullptr ? nullptr : NamedDialog(host, dialog)->Find(name);
        // Asking for a copy that may be there or not is how a plug-in finds out.
        if (copy == nullptr || copy->inTable != component) return PRO_TK_GENERAL_ERROR;
        copy->cell = {row, column};
        cell->component = name;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProUITableCellComponentDelete(char* dialog, char* component, char* row, char* column) {
    static const CallSite kSite("ProUITableCellComponentDelete", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, component, row, column}, [&](Session& host) -> ProError {
        TableCell* cell = NamedCell(host, dialog, component, row, column);
        if (cell == nullptr || cell->component.empty()) return PRO_TK_GENERAL_ERROR;
        NamedDialog(host, dialog)->Remove(cell->component);
        cell->component.clear();
        return PRO_TK_NO_ERROR;
    });
}

ProError ProUITableActivateonreturnEnable(char* dialog, char* component) {
    static const CallSite kSite("ProUITableActivateonreturnEnable", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, component}, [&](Session& host) -> ProError {
        Table* table = NamedTable(host, dialog, component);
        if (table == nullptr) return PRO_TK_GENERAL_ERROR;
        table->activatesOnReturn = true;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProUITableRownamesGet(char* dialog, char* component, int* count, char*** values) {
    static const CallSite kSite("ProUITableRownamesGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, component, Out(count), Out(values)}, [&](Session& host) -> ProError {
        const Table* table = NamedTable(host, dialog, component);
        return table == nullptr ? PRO_TK_GENERAL_ERROR : GiveNames(host, table->Rows(), count, values);
    });
}

ProError ProUITableColumnnamesGet(char* dialog, char* component, int* count, char*** values) {
    static const CallSite kSite("ProUITableColumnnamesGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, component, Out(count), Out(values)}, [&](Session& host) -> ProError {
        const Table* table = NamedTable(host, dialog, component);
        return table == nullptr ? PRO_TK_GENERAL_ERROR : GiveNames(host, table->Columns(), count, values);
    });
}

ProError ProUITableRowlabelsGet(char* dialog, char* component, int* count, wchar_t*** values) {
    static const CallSite kSite("ProUITableRowlabelsGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, component, Out(count), Out(values)}, [&](Session& host) -> ProError {
        const Table* table = NamedTable(host, dialog, component);
        return table == nullptr ? PRO_TK_GENERAL_ERROR : GiveLabels(host, table->Rows(), count, values);
    });
}

ProError ProUITableColumnlabelsGet(char* dialog, char* component, int* count, wchar_t*** values) {
    static const CallSite kSite("ProUITableColumnlabelsGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, component, Out(count), Out(values)}, [&](Session& host) -> ProError {
        const Table* table = NamedTable(host, dialog, component);
        return table == nullptr ? PRO_TK_GENERAL_ERROR : GiveLabels(host, table->Columns(), count, values);
    });
}

ProError ProUITableColumnlabelsSet(char* dialog, char* component, int count, wchar_t** values) {
    static const CallSite kSite("ProUITableColumnlabelsSet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, component, count, values}, [&](Session& host) -> ProError {
        Table* table = NamedTable(host, dialog, component);
        if (table == nullptr) return PRO_TK_GENERAL_ERROR;
        std::vector<std::wstring> labels;
        for (int i = 0; values != nullptr && i < count; ++i)
            if (values[i] != nullptr) labels.emplace_back(values[i]);
        if (labels.size() != static_cast<std::size_t>(count))
            return Refuse(host, PRO_TK_BAD_INPUTS, "a label is null");
        if (table->SetColumnLabels(labels)) return PRO_TK_NO_ERROR;
        return Refuse(host, PRO_TK_GENERAL_ERROR,
                      "is given " + std::to_string(count) + " labels for " +
                          std::to_string(table->Columns().size()) + " columns");
    });
}

ProError ProUITableRowsInsert(char* dialog, char* component, char* row, int count, char** names) {
    static const CallSite kSite("ProUITableRowsInsert", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, component, row, count, names}, [&](Session& host) -> ProError {
        return Insert(host, NamedTable(host, dialog, component), &Table::InsertRows, row, count, names);
    });
}

ProError ProUITableColumnsInsert(char* dialog, char* component, char* column, int count, char** names) {
    static const CallSite kSite("ProUITableColumnsInsert", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, component, column, count, names}, [&](Session& host) -> ProError {
        return Insert(host, NamedTable(host, dialog, component), &Table::InsertColumns, column, count, names);
    });
}

ProError ProUITableRowsDelete(char* dialog, char* component, int count, char** names) {
    static const CallSite kSite("ProUITableRowsDelete", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, component, count, names}, [&](Session& host) -> ProError {
        return Delete(host, NamedTable(host, dialog, component), &Table::DeleteRows, count, names);
    });
}

ProError ProUITableColumnsDelete(char* dialog, char* component, int count, char** names) {
    static const CallSite kSite("ProUITableColumnsDelete", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, component, count, names}, [&](Session& host) -> ProError {
        return Delete(host, NamedTable(host, dialog, component), &Table::DeleteColumns, count, names);
    });
}

ProError ProUITableCellLabelSet(char* dialog, char* component, char* row, char* column, wchar_t* label) {
    static const CallSite kSite("ProUITableCellLabelSet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, component, row, column, label}, [&](Session& host) -> ProError {
        TableCell* cell = NamedCell(host, dialog, component, row, column);
        if (cell == nullptr) return PRO_TK_GENERAL_ERROR;
        if (label == nullptr) return Refuse(host, PRO_TK_BAD_INPUTS, "the label is null");
        cell->label = label;
        cell->isSet = true;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProUITableCellLabelGet(char* dialog, char* component, char* row, char* column, wchar_t** label) {
    static const CallSite kSite("ProUITableCellLabelGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, component, row, column, Out(label)}, [&](Session& host) -> ProError {
        const TableCell* cell = NamedCell(host, dialog, component, row, column);
        if (cell == nullptr) return PRO_TK_GENERAL_ERROR;
        if (label == nullptr) return Refuse(host, PRO_TK_BAD_INPUTS, "the label's address is null");
        if (!cell->isSet && host.screen.strict.unsetCellRefused) return PRO_TK_GENERAL_ERROR;
        *label = NewHostString(host.memory, cell->label);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProUITableCellBackgroundColorSet(char* dialog, char* component, char* row, char* column,
                                          ProUIColor color) {
    static const CallSite kSite("ProUITableCellBackgroundColorSet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, component, row, column, color}, [&](Session& host) -> ProError {
        TableCell* cell = NamedCell(host, dialog, component, row, column);
        if (cell == nullptr) return PRO_TK_GENERAL_ERROR;
        if (!IsColor(color))
            return Refuse(host, PRO_TK_BAD_INPUTS, "there is no colour " + std::to_string(color));
        cell->background = color;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProUITableCellBackgroundColorGet(char* dialog, char* component, char* row, char* column,
                                          ProUIColor* color) {
    static const CallSite kSite("ProUITableCellBackgroundColorGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, component, row, column, Out(color)}, [&](Session& host) -> ProError {
        const TableCell* cell = NamedCell(host, dialog, component, row, column);
        if (cell == nullptr) return PRO_TK_GENERAL_ERROR;
        if (color == nullptr) return Refuse(host, PRO_TK_BAD_INPUTS, "the colour's address is null");
        *color = cell->background.value_or(kTableColor);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProUITableSelectionpolicySet(char* dialog, char* component, ProUISelectionpolicy value) {
    static const CallSite kSite("ProUITableSelectionpolicySet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, component, value}, [&](Session& host) -> ProError {
        return SetPolicy(host, NamedTable(host, dialog, component), value, &Table::policy);
    });
}

ProError ProUITableColumnselectionpolicySet(char* dialog, char* component, ProUISelectionpolicy value) {
    static const CallSite kSite("ProUITableColumnselectionpolicySet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, component, value}, [&](Session& host) -> ProError {
        return SetPolicy(host, NamedTable(host, dialog, component), value, &Table::columnPolicy);
    });
}

ProError ProUITableSelectednamesGet(char* dialog, char* component, int* count, char*** values) {
    static const CallSite kSite("ProUITableSelectednamesGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, component, Out(count), Out(values)}, [&](Session& host) -> ProError {
        const Table* table = NamedTable(host, dialog, component);
        if (table == nullptr) return PRO_TK_GENERAL_ERROR;
        std::vector<std::string> names;
        for (const CellName& cell : table->SelectedCells()) {
            names.push_back(cell.row);
            names.push_back(cell.column);
        }
        return GiveTexts(host, names, count, values);
    });
}

ProError ProUITableSelectednamesSet(char* dialog, char* component, int count, char** values) {
    static const CallSite kSite("ProUITableSelectednamesSet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, component, count, values}, [&](Session& host) -> ProError {
        Table* table = NamedTable(host, dialog, component);
        if (table == nullptr) return PRO_TK_GENERAL_ERROR;
        // No names at all: nothing is selected any more.
        const std::optional<std::vector<std::string>> list =
            count == 0 ? std::vector<std::string>() : NameList(host, count, values);
        if (!list) return PRO_TK_BAD_INPUTS;
        if (count % 2 != 0) return Refuse(host, PRO_TK_BAD_INPUTS, "a row without its column");
        if ((count <= 2 || AllowsMany(*table)) && table->SelectCells(Cells(*list))) return PRO_TK_NO_ERROR;
        return Refuse(host, PRO_TK_GENERAL_ERROR,
                      "selects more than it may, or what the table does not have");
    });
}

ProError ProUITableColumnselectActionSet(char* dialog, char* component, ProUIAction callback,
                                         ProAppData data) {
    static const CallSite kSite("ProUITableColumnselectActionSet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, component, callback, data}, [&](Session& host) -> ProError {
        return SetAction(host, dialog, component, ComponentKind::kTable, DialogEvent::kColumn,
                         {callback, data});
    });
}

ProError ProUITableSelectedcolumnnamesGet(char* dialog, char* component, int* count, char*** values) {
    static const CallSite kSite("ProUITableSelectedcolumnnamesGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, component, Out(count), Out(values)}, [&](Session& host) -> ProError {
        const Table* table = NamedTable(host, dialog, component);
        return table == nullptr ? PRO_TK_GENERAL_ERROR
                                : GiveTexts(host, table->SelectedColumns(), count, values);
    });
}

ProError ProUITableSelectedcolumnnamesSet(char* dialog, char* component, int count, char** values) {
    static const CallSite kSite("ProUITableSelectedcolumnnamesSet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, component, count, values}, [&](Session& host) -> ProError {
        Table* table = NamedTable(host, dialog, component);
        if (table == nullptr) return PRO_TK_GENERAL_ERROR;
        // No names at all: nothing is selected any more.
        const std::optional<std::vector<std::string>> list =
            count == 0 ? std::vector<std::string>() : NameList(host, count, values);
        if (!list) return PRO_TK_BAD_INPUTS;
        const SelectionPolicy policy = table->columnPolicy;
        const bool allowsMany = policy == SelectionPolicy::kMultiple || policy == SelectionPolicy::kExtended;
        const bool fits = count <= 1 ? count == 0 || policy != SelectionPolicy::kNone : allowsMany;
        if (fits && table->SelectColumns(*list)) return PRO_TK_NO_ERROR;
        return Refuse(host, PRO_TK_GENERAL_ERROR,
                      "selects more columns than it may, or what the table does not have");
    });
}

ProError ProUITableSelectedrownamesGet(char* dialog, char* component, int* count, char*** values) {
    static const CallSite kSite("ProUITableSelectedrownamesGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, component, Out(count), Out(values)}, [&](Session& host) -> ProError {
        const Table* table = NamedTable(host, dialog, component);
        return table == nullptr ? PRO_TK_GENERAL_ERROR
                                : GiveTexts(host, table->SelectedRows(), count, values);
    });
}

ProError ProUITableRowCellsSelect(char* dialog, char* component, int count, char** names) {
    static const CallSite kSite("ProUITableRowCellsSelect", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, component, count, names}, [&](Session& host) -> ProError {
        return ChangeSelection(host, NamedTable(host, dialog, component), &Table::SelectRowCells, count,
                               names);
    });
}

ProError ProUITableRowCellsDeselect(char* dialog, char* component, int count, char** names) {
    static const CallSite kSite("ProUITableRowCellsDeselect", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, component, count, names}, [&](Session& host) -> ProError {
        return ChangeSelection(host, NamedTable(host, dialog, component), &Table::DeselectRowCells, count,
                               names);
    });
}
