#include "simulator/layout/picture.h"

#include <algorithm>

#include "simulator/report/utf8.h"

namespace sim {

namespace {

// Text as one line.
std::string Line(std::wstring_view text) {
    std::string line = Utf8(text);
    for (std::size_t at = 0; (at = line.find('\n', at)) != std::string::npos; at += 2)
        line.replace(at, 1, "\\n");
    return line;
}

std::string RadioText(const Component& group) {
    std::string text = group.name;
    for (std::size_t i = 0; i < group.names.size(); ++i) {
        const bool on = SelectedName(group) == group.names[i];
        text += std::string(on ? "  (o) " : "  ( ) ") + Line(group.labels[i]);
    }
    return text;
}

std::string ListText(const Component& list) {
    std::string text = list.name + " {";
    for (std::size_t i = 0; i < list.names.size(); ++i) {
        const bool on =
            std::find(list.selected.begin(), list.selected.end(), list.names[i]) != list.selected.end();
        text += (i == 0 ? "" : ", ") + std::string(on ? ">" : "") + Line(list.labels[i]);
    }
    return text + "}";
}

std::string ComponentText(const Dialog& dialog, const Component& component) {
    switch (component.kind) {
        case ComponentKind::kLabel:
            return Line(component.label);
        case ComponentKind::kPushButton: {
            const bool isDefault = dialog.defaultButton == component.name;
            return component.name + (isDefault ? " <<" : " <") + Line(component.label) +
                   (isDefault ? ">>" : ">");
        }
        case ComponentKind::kCheckButton:
            return component.name + (component.checked ? " [x] " : " [ ] ") + Line(component.label);
        case ComponentKind::kRadioGroup:
            return RadioText(component);
        case ComponentKind::kOptionMenu:
            return component.name + " [" + Line(component.value) + " v]";
        case ComponentKind::kInputPanel:
            return component.name + " [" + Line(component.value) + "]";
        case ComponentKind::kList:
        case ComponentKind::kTree:
            return ListText(component);
        case ComponentKind::kSeparator:
            return "----";
        case ComponentKind::kProgressBar:
        case ComponentKind::kSlider:
        case ComponentKind::kSpinBox:
        case ComponentKind::kThumbWheel:
            return component.name + " [" + std::to_string(component.position) + "]";
        default:
            return component.name + " (" + std::string(KindName(component.kind)) + ")";
    }
}

std::string Field(const Dialog& dialog, const TableCell& cell) {
    const Component* inside = cell.component.empty() ? nullptr : dialog.Find(cell.component);
    const std::string color = cell.background ? " {" + std::to_string(*cell.background) + "}" : "";
    if (inside == nullptr) return Line(cell.label) + color;
    if (inside->kind == ComponentKind::kCheckButton) return (inside->checked ? "[x]" : "[ ]") + color;
    return "[" + Line(ShownText(*inside)) + "]" + color;
}

// Places that a text takes on a terminal: Chinese characters and full-width marks take two.
std::size_t Places(std::string_view text) {
    std::size_t places = 0;
    for (const wchar_t character : Wide(text)) places += character >= 0x2E80 ? 2 : 1;
    return places;
}

// The dialog as lines, grid by grid.
class TextPicture {
public:
    explicit TextPicture(const Dialog& dialog) : dialog_(dialog) {}

    std::string Draw() {
        Add(0, "== " + Line(dialog_.title) + " == (" + dialog_.Name() + ")");
        if (!dialog_.Layout().containers.empty()) DrawContainer(dialog_.Layout().containers.front(), 1);
        return text_;
    }

private:
    void Add(int depth, const std::string& line) {
        text_ += std::string(2 * static_cast<std::size_t>(depth), ' ') + line + "\n";
    }

    void DrawContainer(const ResContainer& container, int depth) {
        for (const ResComponent& component : container.components)
            if (component.kind == ComponentKind::kMenuBar) DrawComponent(component.name, depth);
        if (container.grid) DrawGrid(*container.grid, depth);
    }

    void DrawGrid(const ResGrid& grid, int depth) {
        for (std::size_t row = 0; row < grid.rowStretches.size(); ++row)
            DrawRow(grid, static_cast<int>(row), depth);
    }

    static bool IsBlock(const Component& component) {
        switch (component.kind) {
            case ComponentKind::kLayout:
            case ComponentKind::kTab:
            case ComponentKind::kTable:
            case ComponentKind::kTextArea:
                return true;
            default:
                return false;
        }
    }

    // What a cell nests: its own grid, or that of a layout without a frame. Null: it nests nothing.
    const ResGrid* NestedGrid(const ResCell& cell) const {
        if (cell.component.empty()) return &cell.grid.front();
        const Component* component = dialog_.Find(cell.component);
        if (component == nullptr || component->kind != ComponentKind::kLayout || !component->visible)
            return nullptr;
        const ResContainer* container = dialog_.Layout().Find(cell.component);
        if (component->Boolean("Decorated", false) || container == nullptr || !container->grid)
            return nullptr;
        return &*container->grid;
    }

    // One small component, or a nested row of them: fits into the line around it.
    bool IsInline(const ResCell& cell) const {
        if (const ResGrid* nested = NestedGrid(cell))
            return nested->rowStretches.size() == 1 &&
                   std::all_of(nested->cells.begin(), nested->cells.end(),
                               [this](const ResCell& inner) { return IsInline(inner); });
        const Component* component = dialog_.Find(cell.component);
        return component != nullptr && !IsBlock(*component);
    }

    void AppendInline(const ResCell& cell, std::string& line) const {
        if (const ResGrid* nested = NestedGrid(cell)) {
            for (const ResCell& inner : nested->cells) AppendInline(inner, line);
            return;
        }
        const Component& component = *dialog_.Find(cell.component);
        if (!component.visible) return;
        line += (line.empty() ? "" : "   ") + ComponentText(dialog_, component);
        if (!component.sensitive) line += " (greyed)";
    }

    // Small components side by side, one line a block of them.
    void DrawRow(const ResGrid& grid, int row, int depth) {
        std::string line;
        const auto flush = [&] {
            if (!line.empty()) Add(depth, line);
            line.clear();
        };
        for (const ResCell& cell : grid.cells) {
            if (cell.row != row) continue;
            if (IsInline(cell)) {
                AppendInline(cell, line);
                continue;
            }
            flush();
            for (const ResGrid& nested : cell.grid) DrawGrid(nested, depth);
            const Component* component = dialog_.Find(cell.component);
            if (component != nullptr && component->visible) DrawComponent(cell.component, depth);
        }
        flush();
    }

    void DrawComponent(const std::string& name, int depth) {
        const Component& component = *dialog_.Find(name);
        const std::string greyed = component.sensitive ? "" : " (greyed)";
        switch (component.kind) {
            case ComponentKind::kLayout: {
                const bool framed = component.Boolean("Decorated", false);
                if (framed)
                    Add(depth, component.label.empty() ? "----" : "-- " + Line(component.label) + " --");
                DrawNamedContainer(name, framed ? depth + 1 : depth);
                break;
            }
            case ComponentKind::kTab:
                for (const std::string& page : component.children) {
                    Add(depth, "-- page " + page + " --");
                    DrawNamedContainer(page, depth + 1);
                }
                break;
            case ComponentKind::kTable:
                DrawTable(component, depth);
                break;
            case ComponentKind::kTextArea:
                Add(depth, component.name + greyed + " [");
                DrawLines(component.value, depth + 1);
                Add(depth, "]");
                break;
            default:
                Add(depth, ComponentText(dialog_, component) + greyed);
                break;
        }
    }

    void DrawNamedContainer(const std::string& name, int depth) {
        if (const ResContainer* container = dialog_.Layout().Find(name)) DrawContainer(*container, depth);
    }

    void DrawLines(std::wstring_view text, int depth) {
        while (!text.empty()) {
            const std::size_t end = std::min(text.find(L'\n'), text.size());
            Add(depth, Utf8(text.substr(0, end)));
            text.remove_prefix(std::min(end + 1, text.size()));
        }
    }

    void DrawTable(const Component& component, int depth) {
        const Table& table = component.table;
        std::vector<std::vector<std::string>> lines = {{component.name}};
        for (const Table::Line& column : table.Columns()) lines.front().push_back(Line(column.label));
        const std::vector<std::string> selected = table.SelectedRows();
        for (const Table::Line& row : table.Rows()) {
            if (!table.IsInSight(row.name)) continue;
            const bool on = std::find(selected.begin(), selected.end(), row.name) != selected.end();
            lines.push_back({(on ? "> " : "  ") + row.name});
            for (const Table::Line& column : table.Columns())
                lines.back().push_back(Field(dialog_, *table.Cell(row.name, column.name)));
        }
        AlignColumns(lines);
        for (const std::vector<std::string>& fields : lines) {
            std::string line;
            for (const std::string& field : fields) line += (line.empty() ? "" : " ") + field + " |";
            const bool greyed = &fields == &lines.front() && !component.sensitive;
            Add(depth, line + (greyed ? " (greyed)" : ""));
        }
    }

    const Dialog& dialog_;
    std::string text_;
};

}  // namespace

void AlignColumns(std::vector<std::vector<std::string>>& lines) {
    if (lines.empty()) return;
    for (std::size_t column = 0; column < lines.front().size(); ++column) {
        std::size_t widest = 0;
        for (const auto& line : lines) widest = std::max(widest, Places(line[column]));
        for (auto& line : lines) line[column].append(widest - Places(line[column]), ' ');
    }
}

std::wstring ShownText(const Component& component) {
    switch (component.kind) {
        case ComponentKind::kInputPanel:
        case ComponentKind::kTextArea:
        case ComponentKind::kOptionMenu:
            return component.value;
        case ComponentKind::kRadioGroup:
        case ComponentKind::kList:
        case ComponentKind::kTree:
            return SelectedLabel(component);
        case ComponentKind::kProgressBar:
        case ComponentKind::kSlider:
        case ComponentKind::kSpinBox:
        case ComponentKind::kThumbWheel:
            return std::to_wstring(component.position);
        default:
            return component.label;
    }
}

std::string DialogText(const Dialog& dialog) {
    return TextPicture(dialog).Draw();
}

}  // namespace sim
