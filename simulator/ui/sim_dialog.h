// A dialog as the playing user sees it: only what the layout shows can be read, typed, chosen or pressed.

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace sim {

class Dialog;
class Interface;
class User;

// Every action checks what a person could do: the component exists and is on the layout, has the right kind,
// is visible and sensitive, the text is no longer than MaxLen, the entry exists, the dialog is still open.
// What a person could not do is recorded as a problem (User::Problem) and not done. Actions return *this so
// that they can be chained.
class SimDialog {
public:
    SimDialog(Interface& screen, User& user, Dialog& dialog)
        : screen_(screen), user_(user), dialog_(dialog) {}

    // ---- Doing
    SimDialog& Type(std::string_view component,
                    std::wstring_view text);  // InputPanel, TextArea, editable OptionMenu
    SimDialog& Choose(std::string_view component,
                      std::wstring_view entry);  // RadioGroup, OptionMenu, List: by label or name
    SimDialog& Check(std::string_view component, bool on = true);  // CheckButton
    SimDialog& Press(std::string_view component);                  // PushButton: runs its action
    SimDialog& PressReturn();                                      // the default button
    SimDialog& SelectRows(std::string_view table, const std::vector<std::string>& rows);
    SimDialog& DoubleClick(std::string_view table, std::string_view row, std::string_view column);
    // Selects a column by its title, where the plug-in allows it.
    SimDialog& ClickTitle(std::string_view table, std::string_view column);
    // What the host's own table lets its user do: sort by a column's texts, or keep only the rows with a
    // text.
    SimDialog& SortRows(std::string_view table, std::string_view column, bool descending = false);
    SimDialog& FilterRows(std::string_view table, std::string_view column, std::wstring_view text);
    SimDialog& ShowAllRows(std::string_view table);
    SimDialog& Close();  // the close box: runs the close action

    // ---- Seeing
    bool IsOpen() const;  // false once the plug-in asked to end the activation
    std::wstring Title() const;
    std::wstring Text(std::string_view component) const;  // what the component shows
    bool IsChecked(std::string_view component) const;
    std::string Chosen(std::string_view component) const;  // the selected name; empty: none
    bool IsSensitive(std::string_view component) const;
    std::vector<std::wstring> Entries(
        std::string_view component) const;  // labels of a radio group, option menu or list
    std::vector<std::string> Rows(std::string_view table) const;  // in the shown order
    std::vector<std::string> SelectedRows(std::string_view table) const;
    std::vector<std::wstring> ColumnTitles(std::string_view table) const;
    std::wstring Cell(std::string_view table, std::string_view row, std::string_view column) const;
    int CellColor(std::string_view table, std::string_view row, std::string_view column) const;
    // Names of the images that a drawing area shows.
    std::vector<std::string> Drawn(std::string_view area) const;
    bool IsAboveActiveWindow() const;
    // The whole dialog as indented text, in layout order: what `hostsim run` prints.
    std::string Picture() const;
    // The same as an SVG file: the window with all that is filled in.
    std::string Drawing() const;

private:
    Interface& screen_;
    User& user_;
    Dialog& dialog_;
};

}  // namespace sim
