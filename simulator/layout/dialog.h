// A dialog in the host's memory: its components with their values, as the layout file made them and as the
// plug-in and the user changed them.

#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include <ProUI.h>

#include "simulator/layout/res_file.h"

namespace sim {

// What the plug-in asked to run on an event.
struct DialogAction {
    ProUIAction run = nullptr;
    ProAppData data = nullptr;
};

enum class DialogEvent { kActivate, kSelect, kArm, kDisarm, kColumn, kShown, kClose };

// Selection policies by their codes in layout files and calls.
enum class SelectionPolicy { kNone = 0, kSingle = 1, kBrowse = 2, kMultiple = 3, kExtended = 4 };

struct TableCell {
    std::wstring label;
    std::string component;          // name of a component shown in the cell
    bool isSet = false;             // somebody has set the label, if only to nothing
    std::optional<int> background;  // colour codes; none: the table's own colour
    std::optional<int> foreground;
};

struct CellName {
    std::string row;
    std::string column;
    bool operator==(const CellName&) const = default;
};

// Rows and columns are known by name; names are unique. Every change that cannot be made answers false and
// does nothing.
class Table {
public:
    struct Line {
        std::string name;
        std::wstring label;
        int width = 0;  // of a column, in characters; 0: not given
    };

    const std::vector<Line>& Rows() const { return rows_; }
    const std::vector<Line>& Columns() const { return columns_; }
    bool HasRow(std::string_view row) const;
    bool HasColumn(std::string_view column) const;

    // After the row `after`; nullopt: at the top.
    bool InsertRows(const std::optional<std::string>& after, const std::vector<std::string>& names);
    bool InsertColumns(const std::optional<std::string>& after, const std::vector<std::string>& names);
    bool DeleteRows(const std::vector<std::string>& names);
    bool DeleteColumns(const std::vector<std::string>& names);
    // One label a row resp. column.
    bool SetRowLabels(const std::vector<std::wstring>& labels);
    bool SetColumnLabels(const std::vector<std::wstring>& labels);
    bool SetColumnWidths(const std::vector<int>& widths);

    // Null: no such row or column. A cell that was never set is empty.
    TableCell* Cell(std::string_view row, std::string_view column);
    const TableCell* Cell(std::string_view row, std::string_view column) const;

    const std::vector<CellName>& SelectedCells() const { return selected_; }
    bool IsSelected(const CellName& cell) const;
    // Names of the rows with a selected cell, in row order.
    std::vector<std::string> SelectedRows() const;
    bool SelectCells(const std::vector<CellName>& cells);  // replaces the selection
    bool SelectRowCells(const std::vector<std::string>& rows);
    // Whole columns, selected by their titles.
    const std::vector<std::string>& SelectedColumns() const { return selectedColumns_; }
    bool SelectColumns(const std::vector<std::string>& columns);  // replaces the selection
    // Puts the rows into the order of a column's labels, compared as texts.
    bool SortRows(std::string_view column, bool descending);
    // Rows with another text in the column go out of sight; they stay in the table.
    bool Filter(std::string_view column, std::wstring_view text);
    void ShowAllRows() { filter_.reset(); }
    bool IsInSight(std::string_view row) const;
    bool DeselectRowCells(const std::vector<std::string>& rows);

    std::optional<CellName> anchor;
    std::optional<CellName> focus;
    SelectionPolicy policy = SelectionPolicy::kSingle;
    SelectionPolicy columnPolicy = SelectionPolicy::kNone;
    bool activatesOnReturn = false;

private:
    struct RowFilter {
        std::string column;
        std::wstring text;
    };

    static bool Insert(std::vector<Line>& lines, const std::optional<std::string>& after,
                       const std::vector<std::string>& names);
    void DropLostCells();

    std::vector<Line> rows_;
    std::unordered_set<std::string> rowNames_;
    std::vector<Line> columns_;
    std::unordered_map<std::string, std::map<std::string, TableCell, std::less<>>>
        cells_;  // by row, then column
    std::vector<CellName> selected_;
    std::vector<std::string> selectedColumns_;
    std::optional<RowFilter> filter_;
};

struct Component {
    std::string name;
    ComponentKind kind = ComponentKind::kLabel;
    std::string container;     // the dialog, layout or table that lists it; empty: a copy in a table cell
    std::string inTable;       // of a copy: where its cell is,
    CellName cell;             // and which one
    ResAttributes attributes;  // as the file gives them; what can change stands in the fields below
    std::vector<std::string> children;

    bool visible = true;
    bool sensitive = true;
    std::wstring label;    // push button, check button, label
    std::wstring value;    // text of an input panel, text area or option menu (the shown label)
    bool editable = true;  // input panel, text area; option menu: free text is allowed
    int maxLength = 0;     // characters that can be typed; 0: no limit
    bool checked = false;
    std::vector<std::string> names;                     // of a radio group, option menu, list, tree, tab
    std::vector<std::wstring> labels;                   // one a name
    std::vector<std::string> selected;                  // names
    SelectionPolicy policy = SelectionPolicy::kSingle;  // list, tree
    int minimum = 0, maximum = 100, position = 0;       // progress bar, slider, spin box, thumb wheel
    Table table;
    std::vector<std::string> images;  // that a drawing area may draw
    std::vector<std::string> drawn;   // images, in the order in which a drawing area was given them
    std::map<DialogEvent, DialogAction> actions;

    // Value of an attribute as the file gives it, `otherwise` when the file does not.
    int Integer(std::string_view attribute, int otherwise) const;
    bool Boolean(std::string_view attribute, bool otherwise) const;
    std::wstring Text(std::string_view attribute) const;
    std::vector<std::string> Texts(std::string_view attribute) const;
};

class Dialog {
public:
    // From a layout without errors; one without containers makes an empty dialog.
    Dialog(std::string sessionName, std::string resource, ResFile layout);

    const std::string& Name() const { return name_; }
    const std::string& Resource() const { return resource_; }
    // The containers with their grids: where everything stands.
    const ResFile& Layout() const { return layout_; }

    Component* Find(std::string_view component);
    const Component* Find(std::string_view component) const;
    // In the order of the layout file.
    const std::vector<std::unique_ptr<Component>>& Components() const { return components_; }
    // A component made while the dialog lives (a copy in a table cell). Null: the name is taken.
    Component* Add(Component component);
    bool Remove(std::string_view component);
    // Visible, and so is every layout around it; components of a table's own statement are templates and
    // never shown.
    bool IsShown(const Component& component) const;

    std::wstring title;
    std::string defaultButton;
    bool aboveActiveWindow = false;
    std::map<DialogEvent, DialogAction> actions;  // kClose

    // ---- Activation
    bool active = false;
    std::optional<DialogAction> appAction;  // runs once when control is back at the dialog
    bool exitAsked = false;
    int exitStatus = 0;
    int actionsRunning = 0;

private:
    std::string name_;
    std::string resource_;
    ResFile layout_;
    std::vector<std::unique_ptr<Component>> components_;
    std::map<std::string, Component*, std::less<>> byName_;
};

// The first selected name of a radio group, option menu or list; empty: none.
std::string SelectedName(const Component& component);
// Label of the first selected entry, empty when nothing is selected.
std::wstring SelectedLabel(const Component& component);

}  // namespace sim
