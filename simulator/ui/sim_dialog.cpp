#include "simulator/ui/sim_dialog.h"

#include <algorithm>
#include <initializer_list>

#include "simulator/layout/picture.h"
#include "simulator/report/utf8.h"
#include "simulator/ui/interface.h"
#include "simulator/ui/user.h"

namespace sim {

namespace {

std::string Quoted(std::string_view text) {
    return "\"" + std::string(text) + "\"";
}
std::string Quoted(std::wstring_view text) {
    return "\"" + Utf8(text) + "\"";
}

// What a person does at a component, checked against what the screen allows.
class Attempt {
public:
    Attempt(Interface& screen, User& user, Dialog& dialog, std::string what)
        : screen_(screen), user_(user), dialog_(dialog), what_(std::move(what)) {}

    // Records why the user cannot do it.
    void Fail(const std::string& why) const {
        user_.Problem("dialog " + Quoted(dialog_.Name()) + ": cannot " + what_ + ": " + why);
    }

    bool DialogIsReady() const {
        if (!dialog_.active) return Fail("the dialog is not on the screen"), false;
        if (dialog_.exitAsked) return Fail("the dialog is closed"), false;
        if (screen_.ActiveDialog() != &dialog_)
            return Fail("the dialog " + Quoted(screen_.ActiveDialog()->Name()) + " is open above it"), false;
        return true;
    }

    // The component, when the user can work with it; else null.
    Component* Reach(std::string_view name, std::initializer_list<ComponentKind> kinds) const {
        if (!DialogIsReady()) return nullptr;
        Component* component = dialog_.Find(name);
        if (component == nullptr) return Fail("there is no such component"), nullptr;
        if (std::find(kinds.begin(), kinds.end(), component->kind) == kinds.end())
            return Fail("it is a " + std::string(KindName(component->kind))), nullptr;
        if (!dialog_.IsShown(*component)) return Fail("it is not visible"), nullptr;
        if (!component->sensitive) return Fail("it is greyed"), nullptr;
        return component;
    }

    void Run(Component& component, DialogEvent event) const {
        const auto action = component.actions.find(event);
        if (action != component.actions.end()) screen_.RunAction(dialog_, component.name, action->second);
    }

private:
    Interface& screen_;
    User& user_;
    Dialog& dialog_;
    std::string what_;
};

std::string Shown(const Component& component) {
    std::string list;
    for (const std::wstring& label : component.labels) list += (list.empty() ? "" : ", ") + Quoted(label);
    return list.empty() ? "nothing" : list;
}

bool AllowsMany(SelectionPolicy policy) {
    return policy == SelectionPolicy::kMultiple || policy == SelectionPolicy::kExtended;
}

}  // namespace

// ---- Doing

SimDialog& SimDialog::Type(std::string_view component, std::wstring_view text) {
    const Attempt attempt(screen_, user_, dialog_, "type " + Quoted(text) + " into " + Quoted(component));
    Component* field = attempt.Reach(
        component, {ComponentKind::kInputPanel, ComponentKind::kTextArea, ComponentKind::kOptionMenu});
    if (field == nullptr) return *this;
    if (!field->editable) {
        attempt.Fail("it takes no text");
    } else if (field->maxLength > 0 && text.size() > static_cast<std::size_t>(field->maxLength)) {
        attempt.Fail("it takes " + std::to_string(field->maxLength) + " characters at most");
    } else if (field->kind != ComponentKind::kTextArea && text.find(L'\n') != std::wstring_view::npos) {
        attempt.Fail("it takes one line");
    } else {
        field->value = text;
        field->selected.clear();
    }
    return *this;
}

SimDialog& SimDialog::Choose(std::string_view component, std::wstring_view entry) {
    const Attempt attempt(screen_, user_, dialog_, "choose " + Quoted(entry) + " in " + Quoted(component));
    Component* list = attempt.Reach(
        component, {ComponentKind::kRadioGroup, ComponentKind::kOptionMenu, ComponentKind::kList});
    if (list == nullptr) return *this;
    std::size_t index = list->names.size();
    for (std::size_t i = 0; i < list->names.size(); ++i)
        if (list->labels[i] == entry || Wide(list->names[i]) == entry) index = std::min(index, i);
    if (index == list->names.size()) {
        attempt.Fail("it shows " + Shown(*list));
        return *this;
    }
    const std::string& name = list->names[index];
    if (list->kind == ComponentKind::kList && AllowsMany(list->policy)) {
        if (std::find(list->selected.begin(), list->selected.end(), name) == list->selected.end())
            list->selected.push_back(name);
    } else {
        list->selected = {name};
    }
    if (list->kind == ComponentKind::kOptionMenu) list->value = list->labels[index];
    attempt.Run(*list, DialogEvent::kSelect);
    return *this;
}

SimDialog& SimDialog::Check(std::string_view component, bool on) {
    const Attempt attempt(screen_, user_, dialog_,
                          std::string(on ? "check " : "uncheck ") + Quoted(component));
    Component* button = attempt.Reach(component, {ComponentKind::kCheckButton});
    if (button == nullptr || button->checked == on) return *this;
    button->checked = on;
    attempt.Run(*button, DialogEvent::kActivate);
    return *this;
}

SimDialog& SimDialog::Press(std::string_view component) {
    const Attempt attempt(screen_, user_, dialog_, "press " + Quoted(component));
    Component* button = attempt.Reach(component, {ComponentKind::kPushButton});
    if (button == nullptr) return *this;
    if (!button->actions.contains(DialogEvent::kActivate))
        attempt.Fail("nothing happens, the button has no action");
    attempt.Run(*button, DialogEvent::kActivate);
    return *this;
}

SimDialog& SimDialog::PressReturn() {
    if (!dialog_.defaultButton.empty()) return Press(dialog_.defaultButton);
    Attempt(screen_, user_, dialog_, "press Return").Fail("the dialog has no default button");
    return *this;
}

SimDialog& SimDialog::SelectRows(std::string_view table, const std::vector<std::string>& rows) {
    const Attempt attempt(screen_, user_, dialog_, "select rows of " + Quoted(table));
    Component* component = attempt.Reach(table, {ComponentKind::kTable});
    if (component == nullptr) return *this;
    Table& cells = component->table;
    const std::size_t most = AllowsMany(cells.policy)                 ? rows.size()
                             : cells.policy == SelectionPolicy::kNone ? 0
                                                                      : 1;
    if (rows.size() > most) {
        attempt.Fail("it lets " + std::to_string(most) + " rows be selected");
        return *this;
    }
    const auto lost =
        std::find_if(rows.begin(), rows.end(), [&](const std::string& row) { return !cells.HasRow(row); });
    if (lost != rows.end()) {
        attempt.Fail("there is no row " + Quoted(*lost));
        return *this;
    }
    cells.SelectCells({});
    cells.SelectRowCells(rows);
    if (!rows.empty() && !cells.Columns().empty()) {
        cells.anchor = CellName{rows.back(), cells.Columns().front().name};
        cells.focus = cells.anchor;
    }
    attempt.Run(*component, DialogEvent::kArm);
    attempt.Run(*component, DialogEvent::kSelect);
    return *this;
}

SimDialog& SimDialog::DoubleClick(std::string_view table, std::string_view row, std::string_view column) {
    const Attempt attempt(screen_, user_, dialog_,
                          "double-click " + Quoted(row) + ", " + Quoted(column) + " of " + Quoted(table));
    Component* component = attempt.Reach(table, {ComponentKind::kTable});
    if (component == nullptr) return *this;
    Table& cells = component->table;
    if (!cells.HasRow(row) || !cells.HasColumn(column) || !cells.IsInSight(row)) {
        attempt.Fail("there is no such cell");
        return *this;
    }
    const CellName cell{std::string(row), std::string(column)};
    cells.anchor = cell;
    cells.focus = cell;
    if (cells.policy != SelectionPolicy::kNone) cells.SelectCells({cell});
    attempt.Run(*component, DialogEvent::kArm);
    attempt.Run(*component, DialogEvent::kActivate);
    return *this;
}

// A column that is selected already stays so, and the plug-in hears nothing of the click; nor does it where
// no column can be selected.
SimDialog& SimDialog::ClickTitle(std::string_view table, std::string_view column) {
    const Attempt attempt(screen_, user_, dialog_,
                          "click the title " + Quoted(column) + " of " + Quoted(table));
    Component* component = attempt.Reach(table, {ComponentKind::kTable});
    if (component == nullptr) return *this;
    Table& cells = component->table;
    const std::vector<std::string> clicked = {std::string(column)};
    if (!cells.HasColumn(column)) attempt.Fail("there is no such column");
    if (cells.columnPolicy == SelectionPolicy::kNone || cells.SelectedColumns() == clicked) return *this;
    if (cells.SelectColumns(clicked)) attempt.Run(*component, DialogEvent::kColumn);
    return *this;
}

SimDialog& SimDialog::SortRows(std::string_view table, std::string_view column, bool descending) {
    const Attempt attempt(screen_, user_, dialog_, "sort " + Quoted(table) + " by " + Quoted(column));
    Component* component = attempt.Reach(table, {ComponentKind::kTable});
    if (component != nullptr && !component->table.SortRows(column, descending))
        attempt.Fail("there is no such column");
    return *this;
}

SimDialog& SimDialog::FilterRows(std::string_view table, std::string_view column, std::wstring_view text) {
    const Attempt attempt(screen_, user_, dialog_, "filter " + Quoted(table) + " by " + Quoted(column));
    Component* component = attempt.Reach(table, {ComponentKind::kTable});
    if (component != nullptr && !component->table.Filter(column, text))
        attempt.Fail("there is no such column");
    return *this;
}

SimDialog& SimDialog::ShowAllRows(std::string_view table) {
    const Attempt attempt(screen_, user_, dialog_, "show all rows of " + Quoted(table));
    if (Component* component = attempt.Reach(table, {ComponentKind::kTable})) component->table.ShowAllRows();
    return *this;
}

SimDialog& SimDialog::Close() {
    const Attempt attempt(screen_, user_, dialog_, "close the dialog");
    if (!attempt.DialogIsReady()) return *this;
    const auto action = dialog_.actions.find(DialogEvent::kClose);
    // Without an action the close box does nothing.
    if (action != dialog_.actions.end()) screen_.RunAction(dialog_, dialog_.Name(), action->second);
    return *this;
}

// ---- Seeing

namespace {

// A component of that name; null, and a problem, when there is none.
const Component* Seen(User& user, const Dialog& dialog, std::string_view name) {
    const Component* component = dialog.Find(name);
    if (component == nullptr)
        user.Problem("dialog " + Quoted(dialog.Name()) + ": there is no component " + Quoted(name));
    return component;
}

const Table* SeenTable(User& user, const Dialog& dialog, std::string_view name) {
    const Component* component = Seen(user, dialog, name);
    if (component == nullptr || component->kind == ComponentKind::kTable)
        return component == nullptr ? nullptr : &component->table;
    user.Problem("dialog " + Quoted(dialog.Name()) + ": " + Quoted(name) + " is no table");
    return nullptr;
}

}  // namespace

bool SimDialog::IsOpen() const {
    return dialog_.active && !dialog_.exitAsked;
}

std::wstring SimDialog::Title() const {
    return dialog_.title;
}

std::wstring SimDialog::Text(std::string_view component) const {
    const Component* seen = Seen(user_, dialog_, component);
    return seen == nullptr ? std::wstring() : ShownText(*seen);
}

bool SimDialog::IsChecked(std::string_view component) const {
    const Component* seen = Seen(user_, dialog_, component);
    return seen != nullptr && seen->checked;
}

std::string SimDialog::Chosen(std::string_view component) const {
    const Component* seen = Seen(user_, dialog_, component);
    return seen == nullptr ? std::string() : SelectedName(*seen);
}

bool SimDialog::IsSensitive(std::string_view component) const {
    const Component* seen = Seen(user_, dialog_, component);
    return seen != nullptr && seen->sensitive;
}

std::vector<std::wstring> SimDialog::Entries(std::string_view component) const {
    const Component* seen = Seen(user_, dialog_, component);
    return seen == nullptr ? std::vector<std::wstring>() : seen->labels;
}

std::vector<std::string> SimDialog::Rows(std::string_view table) const {
    std::vector<std::string> rows;
    if (const Table* seen = SeenTable(user_, dialog_, table))
        for (const Table::Line& row : seen->Rows())
            if (seen->IsInSight(row.name)) rows.push_back(row.name);
    return rows;
}

std::vector<std::string> SimDialog::SelectedRows(std::string_view table) const {
    const Table* seen = SeenTable(user_, dialog_, table);
    return seen == nullptr ? std::vector<std::string>() : seen->SelectedRows();
}

std::vector<std::wstring> SimDialog::ColumnTitles(std::string_view table) const {
    std::vector<std::wstring> titles;
    if (const Table* seen = SeenTable(user_, dialog_, table))
        for (const Table::Line& column : seen->Columns()) titles.push_back(column.label);
    return titles;
}

std::wstring SimDialog::Cell(std::string_view table, std::string_view row, std::string_view column) const {
    const Table* seen = SeenTable(user_, dialog_, table);
    const TableCell* cell = seen == nullptr ? nullptr : seen->Cell(row, column);
    if (cell == nullptr) {
        if (seen != nullptr)
            user_.Problem("table " + Quoted(table) + ": there is no cell " + Quoted(row) + ", " +
                          Quoted(column));
        return {};
    }
    const Component* inside = cell->component.empty() ? nullptr : dialog_.Find(cell->component);
    return inside == nullptr ? cell->label : ShownText(*inside);
}

int SimDialog::CellColor(std::string_view table, std::string_view row, std::string_view column) const {
    const Table* seen = SeenTable(user_, dialog_, table);
    const TableCell* cell = seen == nullptr ? nullptr : seen->Cell(row, column);
    return cell == nullptr ? -1 : cell->background.value_or(-1);
}

std::vector<std::string> SimDialog::Drawn(std::string_view area) const {
    const Component* seen = Seen(user_, dialog_, area);
    return seen == nullptr ? std::vector<std::string>() : seen->drawn;
}

bool SimDialog::IsAboveActiveWindow() const {
    return dialog_.aboveActiveWindow;
}

std::string SimDialog::Picture() const {
    return DialogText(dialog_);
}

std::string SimDialog::Drawing() const {
    return DialogSvg(dialog_, [this](const std::string& name) { return screen_.ImageBytes(name); });
}

}  // namespace sim
