#include "simulator/layout/dialog.h"

#include <algorithm>
#include <set>
#include <utility>

#include "simulator/report/utf8.h"

namespace sim {

namespace {

const std::vector<ResValue>& Values(const ResAttributes& attributes, std::string_view name) {
    static const std::vector<ResValue> kNone;
    const auto attribute = attributes.find(name);
    return attribute == attributes.end() ? kNone : attribute->second.values;
}

std::vector<std::string> Names(const ResAttributes& attributes, std::string_view name) {
    std::vector<std::string> names;
    for (const ResValue& value : Values(attributes, name)) names.push_back(Utf8(value.text));
    return names;
}

std::vector<std::wstring> Texts(const ResAttributes& attributes, std::string_view name) {
    std::vector<std::wstring> texts;
    for (const ResValue& value : Values(attributes, name)) texts.push_back(value.text);
    return texts;
}

void FillTable(Component& component) {
    const ResAttributes& attributes = component.attributes;
    Table& table = component.table;
    table.policy = static_cast<SelectionPolicy>(component.Integer("SelectionPolicy", 1));
    table.columnPolicy = static_cast<SelectionPolicy>(component.Integer("ColumnSelectionPolicy", 0));
    table.activatesOnReturn = component.Boolean("ActivateOnReturn", false);
    table.InsertColumns(std::nullopt, Names(attributes, "ColumnNames"));
    if (attributes.contains("ColumnLabels")) table.SetColumnLabels(Texts(attributes, "ColumnLabels"));
    std::vector<int> widths;
    for (const ResValue& value : Values(attributes, "ColumnWidths"))
        widths.push_back(static_cast<int>(value.number));
    if (!widths.empty()) table.SetColumnWidths(widths);
    table.InsertRows(std::nullopt, Names(attributes, "RowNames"));
    if (attributes.contains("RowLabels")) table.SetRowLabels(Texts(attributes, "RowLabels"));
}

// An input panel shows whichever of its typed values the file gives.
std::wstring FirstValue(const Component& component) {
    for (const char* name : {"Value", "WideString", "String", "Integer", "Double"})
        for (const ResValue& value : Values(component.attributes, name)) return value.text;
    return {};
}

Component MakeComponent(const ResComponent& read, const std::string& container) {
    Component component;
    component.name = read.name;
    component.kind = read.kind;
    component.container = container;
    component.attributes = read.attributes;
    component.children = read.children;
    component.visible = component.Boolean("Visible", true);
    component.sensitive = component.Boolean("Sensitive", true);
    component.label = component.Text("Label");
    component.editable = component.Boolean("Editable", read.kind != ComponentKind::kOptionMenu);
    component.maxLength = component.Integer("MaxLen", 0);
    component.checked = component.Boolean("Set", false);
    component.names = Names(read.attributes, "Names");
    component.labels = Texts(read.attributes, "Labels");
    if (component.labels.empty())
        for (const std::string& name : component.names) component.labels.push_back(Wide(name));
    component.selected = Names(read.attributes, "SelectedNames");
    component.policy = static_cast<SelectionPolicy>(component.Integer("SelectionPolicy", 1));
    component.minimum = component.Integer("MinInteger", 0);
    component.maximum = component.Integer("MaxInteger", 100);
    component.position = component.Integer("Integer", component.minimum);
    component.value = FirstValue(component);
    component.images = Names(read.attributes, "Images");
    if (read.kind == ComponentKind::kOptionMenu && component.value.empty())
        component.value = SelectedLabel(component);
    if (read.kind == ComponentKind::kTable) FillTable(component);
    return component;
}

}  // namespace

// ---- Table

bool Table::HasRow(std::string_view row) const {
    return rowNames_.contains(std::string(row));
}

bool Table::HasColumn(std::string_view column) const {
    return std::any_of(columns_.begin(), columns_.end(),
                       [&](const Line& line) { return line.name == column; });
}

bool Table::Insert(std::vector<Line>& lines, const std::optional<std::string>& after,
                   const std::vector<std::string>& names) {
    auto position = lines.begin();
    if (after && !lines.empty() && lines.back().name == *after) {
        position = lines.end();
    } else if (after) {
        position =
            std::find_if(lines.begin(), lines.end(), [&](const Line& line) { return line.name == *after; });
        if (position == lines.end()) return false;
        ++position;
    }
    std::vector<Line> inserted;
    inserted.reserve(names.size());
    for (const std::string& name : names) inserted.push_back({name, {}, 0});
    lines.insert(position, std::make_move_iterator(inserted.begin()),
                 std::make_move_iterator(inserted.end()));
    return true;
}

bool Table::InsertRows(const std::optional<std::string>& after, const std::vector<std::string>& names) {
    std::set<std::string> seen;
    for (const std::string& name : names)
        if (name.empty() || HasRow(name) || !seen.insert(name).second) return false;
    if (!Insert(rows_, after, names)) return false;
    rowNames_.insert(names.begin(), names.end());
    return true;
}

bool Table::InsertColumns(const std::optional<std::string>& after, const std::vector<std::string>& names) {
    std::set<std::string> seen;
    for (const std::string& name : names)
        if (name.empty() || HasColumn(name) || !seen.insert(name).second) return false;
    return Insert(columns_, after, names);
}

bool Table::DeleteRows(const std::vector<std::string>& names) {
    if (!std::all_of(names.begin(), names.end(), [this](const std::string& name) { return HasRow(name); }))
        return false;
    const std::set<std::string> gone(names.begin(), names.end());
    std::erase_if(rows_, [&](const Line& line) { return gone.contains(line.name); });
    for (const std::string& name : gone) {
        rowNames_.erase(name);
        cells_.erase(name);
    }
    DropLostCells();
    return true;
}

bool Table::DeleteColumns(const std::vector<std::string>& names) {
    if (!std::all_of(names.begin(), names.end(), [this](const std::string& name) { return HasColumn(name); }))
        return false;
    const std::set<std::string> gone(names.begin(), names.end());
    std::erase_if(columns_, [&](const Line& line) { return gone.contains(line.name); });
    for (auto& [row, cells] : cells_)
        for (const std::string& name : gone) cells.erase(name);
    DropLostCells();
    return true;
}

bool Table::SetRowLabels(const std::vector<std::wstring>& labels) {
    if (labels.size() != rows_.size()) return false;
    for (std::size_t i = 0; i < labels.size(); ++i) rows_[i].label = labels[i];
    return true;
}

bool Table::SetColumnLabels(const std::vector<std::wstring>& labels) {
    if (labels.size() != columns_.size()) return false;
    for (std::size_t i = 0; i < labels.size(); ++i) columns_[i].label = labels[i];
    return true;
}

bool Table::SetColumnWidths(const std::vector<int>& widths) {
    if (widths.size() != columns_.size()) return false;
    for (std::size_t i = 0; i < widths.size(); ++i) columns_[i].width = widths[i];
    return true;
}

TableCell* Table::Cell(std::string_view row, std::string_view column) {
    if (!HasRow(row) || !HasColumn(column)) return nullptr;
    return &cells_[std::string(row)][std::string(column)];
}

const TableCell* Table::Cell(std::string_view row, std::string_view column) const {
    static const TableCell kEmpty;
    if (!HasRow(row) || !HasColumn(column)) return nullptr;
    const auto cells = cells_.find(std::string(row));
    if (cells == cells_.end()) return &kEmpty;
    const auto cell = cells->second.find(column);
    return cell == cells->second.end() ? &kEmpty : &cell->second;
}

bool Table::IsSelected(const CellName& cell) const {
    return std::find(selected_.begin(), selected_.end(), cell) != selected_.end();
}

std::vector<std::string> Table::SelectedRows() const {
    std::set<std::string> chosen;
    for (const CellName& cell : selected_) chosen.insert(cell.row);
    std::vector<std::string> rows;
    for (const Line& line : rows_)
        if (chosen.contains(line.name)) rows.push_back(line.name);
    return rows;
}

bool Table::SelectCells(const std::vector<CellName>& cells) {
    for (const CellName& cell : cells)
        if (!HasRow(cell.row) || !HasColumn(cell.column)) return false;
    selected_ = cells;
    return true;
}

bool Table::SelectColumns(const std::vector<std::string>& columns) {
    if (!std::all_of(columns.begin(), columns.end(),
                     [this](const std::string& column) { return HasColumn(column); }))
        return false;
    selectedColumns_ = columns;
    return true;
}

bool Table::SelectRowCells(const std::vector<std::string>& rows) {
    if (!std::all_of(rows.begin(), rows.end(), [this](const std::string& row) { return HasRow(row); }))
        return false;
    DeselectRowCells(rows);  // so that no cell is listed twice
    for (const std::string& row : rows)
        for (const Line& column : columns_) selected_.push_back({row, column.name});
    return true;
}

bool Table::SortRows(std::string_view column, bool descending) {
    if (!HasColumn(column)) return false;
    const auto label = [&](const Line& row) -> const std::wstring& {
        return std::as_const(*this).Cell(row.name, column)->label;
    };
    std::stable_sort(rows_.begin(), rows_.end(), [&](const Line& a, const Line& b) {
        return descending ? label(b) < label(a) : label(a) < label(b);
    });
    return true;
}

bool Table::Filter(std::string_view column, std::wstring_view text) {
    if (!HasColumn(column)) return false;
    filter_ = RowFilter{std::string(column), std::wstring(text)};
    return true;
}

bool Table::IsInSight(std::string_view row) const {
    if (!filter_) return true;
    const TableCell* cell = Cell(row, filter_->column);
    return cell != nullptr && cell->label == filter_->text;
}

bool Table::DeselectRowCells(const std::vector<std::string>& rows) {
    if (!std::all_of(rows.begin(), rows.end(), [this](const std::string& row) { return HasRow(row); }))
        return false;
    const std::set<std::string> gone(rows.begin(), rows.end());
    std::erase_if(selected_, [&](const CellName& cell) { return gone.contains(cell.row); });
    return true;
}

// After a deletion nothing refers to a cell that is gone.
void Table::DropLostCells() {
    const auto isLost = [this](const CellName& cell) { return !HasRow(cell.row) || !HasColumn(cell.column); };
    std::erase_if(selected_, isLost);
    std::erase_if(selectedColumns_, [this](const std::string& column) { return !HasColumn(column); });
    if (filter_ && !HasColumn(filter_->column)) filter_.reset();
    if (anchor && isLost(*anchor)) anchor.reset();
    if (focus && isLost(*focus)) focus.reset();
}

// ---- Component

int Component::Integer(std::string_view attribute, int otherwise) const {
    const std::vector<ResValue>& values = Values(attributes, attribute);
    return values.empty() ? otherwise : static_cast<int>(values.front().number);
}

bool Component::Boolean(std::string_view attribute, bool otherwise) const {
    return Integer(attribute, otherwise ? 1 : 0) != 0;
}

std::wstring Component::Text(std::string_view attribute) const {
    const std::vector<ResValue>& values = Values(attributes, attribute);
    return values.empty() ? std::wstring() : values.front().text;
}

std::vector<std::string> Component::Texts(std::string_view attribute) const {
    return Names(attributes, attribute);
}

std::string SelectedName(const Component& component) {
    return component.selected.empty() ? std::string() : component.selected.front();
}

std::wstring SelectedLabel(const Component& component) {
    const auto name = std::find(component.names.begin(), component.names.end(), SelectedName(component));
    const auto index = static_cast<std::size_t>(name - component.names.begin());
    return index < component.labels.size() ? component.labels[index] : std::wstring();
}

// ---- Dialog

Dialog::Dialog(std::string sessionName, std::string resource, ResFile layout)
    : name_(std::move(sessionName)), resource_(std::move(resource)), layout_(std::move(layout)) {
    for (const ResContainer& container : layout_.containers)
        for (const ResComponent& component : container.components)
            Add(MakeComponent(component, container.name));
    if (layout_.containers.empty()) return;

    const ResAttributes& own = layout_.containers.front().attributes;
    for (const ResValue& value : Values(own, "Label")) title = value.text;
    for (const std::string& button : Names(own, "DefaultButton")) defaultButton = button;
    // A layout's own statement may say what its line in the outer statement does not.
    for (const ResContainer& container : layout_.containers) {
        Component* component = Find(container.name);
        if (component == nullptr || container.type == ContainerType::kDialog) continue;
        component->attributes.insert(container.attributes.begin(), container.attributes.end());
        component->label = component->Text("Label");
        component->visible = component->Boolean("Visible", true);
        component->sensitive = component->Boolean("Sensitive", true);
    }
}

Component* Dialog::Find(std::string_view component) {
    const auto found = byName_.find(component);
    return found == byName_.end() ? nullptr : found->second;
}

const Component* Dialog::Find(std::string_view component) const {
    return const_cast<Dialog*>(this)->Find(component);
}

Component* Dialog::Add(Component component) {
    if (byName_.contains(component.name)) return nullptr;
    components_.push_back(std::make_unique<Component>(std::move(component)));
    return byName_[components_.back()->name] = components_.back().get();
}

bool Dialog::Remove(std::string_view component) {
    const auto found = byName_.find(component);
    if (found == byName_.end()) return false;
    const Component* gone = found->second;
    byName_.erase(found);
    std::erase_if(components_, [gone](const std::unique_ptr<Component>& c) { return c.get() == gone; });
    return true;
}

bool Dialog::IsShown(const Component& component) const {
    if (!component.visible) return false;
    if (!component.inTable.empty()) {
        const Component* around = Find(component.inTable);
        const TableCell* cell =
            around == nullptr ? nullptr : around->table.Cell(component.cell.row, component.cell.column);
        return cell != nullptr && cell->component == component.name &&
               around->table.IsInSight(component.cell.row) && IsShown(*around);
    }
    const ResContainer* container = layout_.Find(component.container);
    if (container == nullptr) return true;
    if (container->type == ContainerType::kTable || container->type == ContainerType::kTree) return false;
    if (container->type == ContainerType::kDialog) return true;
    const Component* around = Find(component.container);
    return around == nullptr || IsShown(*around);
}

}  // namespace sim
