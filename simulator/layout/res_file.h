// Dialog layout files (.res): the nested statements as read, checked, with the place of everything in the
// file.

#pragma once

#include <filesystem>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

enum class ComponentKind {
    kCascadeButton,
    kCheckButton,
    kDrawingArea,
    kInputPanel,
    kLabel,
    kLayout,
    kList,
    kMenuBar,
    kMenuPane,
    kOptionMenu,
    kProgressBar,
    kPushButton,
    kRadioGroup,
    kSeparator,
    kSlider,
    kSpinBox,
    kTab,
    kTable,
    kTextArea,
    kThumbWheel,
    kTree
};

// The type keyword of layout files, "PushButton" and so on.
std::string_view KindName(ComponentKind kind);

// Line and column of a token, both from 1; columns count characters.
struct ResPlace {
    int line = 0;
    int column = 0;
};

struct ResValue {
    enum class Type { kInteger, kReal, kBoolean, kString, kName };
    Type type = Type::kString;
    std::wstring text;  // of a string or name, escapes resolved
    double number = 0;  // of an integer, real, or Boolean (0, 1)
    ResPlace place;
};

struct ResAttribute {
    std::vector<ResValue> values;
    ResPlace place;
};
using ResAttributes = std::map<std::string, ResAttribute, std::less<>>;

struct ResComponent {
    std::string name;
    ComponentKind kind = ComponentKind::kLabel;
    std::vector<std::string> children;  // the layouts of a tab, the panes of a menu bar or cascade button
    ResAttributes attributes;
    ResPlace place;
};

struct ResGrid;

// One cell: a component, or a nested grid. Row and column from 0.
struct ResCell {
    int row = 0;
    int column = 0;
    std::string component;      // empty: a nested grid
    std::vector<ResGrid> grid;  // holds one grid, or nothing
    ResPlace place;
};

struct ResGrid {
    std::vector<bool> rowStretches;
    std::vector<bool> columnStretches;
    std::vector<ResCell> cells;
};

enum class ContainerType { kDialog, kLayout, kMenuPane, kCascadeButton, kTable, kTree };

// The type keyword of container statements, "Layout" and so on.
std::string_view ContainerName(ContainerType type);

struct ResContainer {
    ContainerType type = ContainerType::kDialog;
    std::string name;
    std::vector<ResComponent> components;
    ResAttributes attributes;  // the container's own, ".Label" and so on
    std::optional<ResGrid> grid;
    ResPlace place;
};

struct ResFile {
    std::vector<ResContainer> containers;  // the dialog first

    const ResContainer* Find(std::string_view name) const;
};

// Reads a layout from its bytes. Every finding is a line "file:line:column: expected ..."; `file` is used for
// these lines, its stem has to be the dialog's name. With a syntax error there is one line, it ends the
// reading; wrong names and values are all reported. The result is only to be used when nothing was reported.
ResFile ParseResFile(std::string_view bytes, const std::filesystem::path& file,
                     std::vector<std::string>& errors);

// The same from the file itself.
ResFile ReadResFile(const std::filesystem::path& file, std::vector<std::string>& errors);

}  // namespace sim
