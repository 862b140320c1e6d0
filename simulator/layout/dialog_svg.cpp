// Draws a dialog as a picture of its window.

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <vector>

#include "simulator/layout/dialog_measure.h"
#include "simulator/layout/picture.h"
#include "simulator/report/utf8.h"

namespace sim {

namespace {

constexpr const char* kStyle =
    "text{font:12px 'Microsoft YaHei UI','Segoe UI','Microsoft YaHei','WenQuanYi Micro Hei','Noto Sans CJK "
    "SC',sans-serif;"
    "fill:#000}.grey{fill:#838383}.window{fill:#f0f0f0;stroke:#707070}.bar{fill:#fff}.frame{fill:none;stroke:"
    "#dcdcdc}"
    ".field{fill:#fff;stroke:#7a7a7a}.off{fill:#f0f0f0;stroke:#cccccc}.button{fill:#e1e1e1;stroke:#adadad}"
    ".default{fill:#e1e1e1;stroke:#0078d7;stroke-width:2}.mark{fill:#fff;stroke:#333}.dot{fill:#333}"
    ".line{stroke:#333;fill:none;stroke-width:1.4}.head{fill:#fafafa;stroke:#e5e5e5}.cell{fill:none;stroke:#"
    "e5e5e5}"
    ".chosen{fill:#cce8ff}.tint{fill:#fff2cc}.thumb{fill:#c8c8c8}.rule{stroke:#d0d0d0}.bar2{fill:#06b025}";

constexpr double kWidestFitted = 24 * kColumnWidth;  // of a column that is fitted to its texts

std::string Number(double value) {
    char text[32];
    std::snprintf(text, sizeof text, "%.1f", value);
    return text;
}

std::string Escaped(std::wstring_view text) {
    std::string escaped;
    for (const char c : Utf8(text)) {
        switch (c) {
            case '&':
                escaped += "&amp;";
                break;
            case '<':
                escaped += "&lt;";
                break;
            case '>':
                escaped += "&gt;";
                break;
            case '"':
                escaped += "&quot;";
                break;
            default:
                escaped += c;
        }
    }
    return escaped;
}

std::string Base64(std::string_view bytes) {
    constexpr char kDigits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    std::string text;
    for (std::size_t at = 0; at < bytes.size(); at += 3) {
        const std::size_t taken = std::min<std::size_t>(bytes.size() - at, 3);
        std::uint32_t group = 0;
        for (std::size_t i = 0; i < 3; ++i)
            group = group << 8U | (i < taken ? static_cast<unsigned char>(bytes[at + i]) : 0U);
        for (std::size_t i = 0; i < 4; ++i) text += i <= taken ? kDigits[group >> (18 - 6 * i) & 63U] : '=';
    }
    return text;
}

class Drawing {
public:
    Drawing(const Dialog& dialog, const ImageReader& images)
        : dialog_(dialog), measure_(dialog), images_(images) {}

    std::string Draw() {
        const ResContainer* top =
            dialog_.Layout().containers.empty() ? nullptr : &dialog_.Layout().containers.front();
        const ResAttributes none;
        const ResAttributes& own = top == nullptr ? none : top->attributes;
        Size content = top == nullptr || !top->grid ? Size{200, 40} : measure_.Measure(*top->grid);
        content.width =
            std::max({content.width, TextWidth(dialog_.title) + 60, Given(own, "Width") - 2 * kMargin});
        content.height = std::max(content.height, Given(own, "Height") - 2 * kMargin - kTitleBar);
        const double menu = HasMenuBar(top) ? kTabHeight : 0;
        const Area window{0.5, 0.5, content.width + 2 * kMargin,
                          content.height + 2 * kMargin + kTitleBar + menu};

        svg_ = "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"" + Number(window.width + 1) +
               "\" height=\"" + Number(window.height + 1) + "\">\n<title>" + Escaped(dialog_.title) +
               "</title>\n<style>" + kStyle + "</style>\n";
        Box(window, "window");
        Box({1, 1, window.width - 1, kTitleBar}, "bar");
        Text(kMargin, 1 + kTitleBar / 2, dialog_.title);
        const double cross = window.width - 22;
        Path("M" + Number(cross) + " 11l10 10m0 -10l-10 10");
        if (menu > 0) DrawMenuBar(*top, {1, 1 + kTitleBar, window.width - 1, kTabHeight});
        if (top != nullptr && top->grid)
            Place(*top->grid, {kMargin, kTitleBar + menu + kMargin, content.width, content.height});
        return svg_ + "</svg>\n";
    }

private:
    static double Given(const ResAttributes& attributes, std::string_view name) {
        const auto attribute = attributes.find(name);
        const bool given = attribute != attributes.end() && !attribute->second.values.empty();
        return given ? attribute->second.values.front().number : 0;
    }

    static bool HasMenuBar(const ResContainer* container) {
        return container != nullptr &&
               std::any_of(container->components.begin(), container->components.end(),
                           [](const ResComponent& c) { return c.kind == ComponentKind::kMenuBar; });
    }

    void Place(const ResGrid& grid, const Area& area) {
        const std::vector<Area> rooms = measure_.Rooms(grid, area);
        for (std::size_t i = 0; i < grid.cells.size(); ++i) {
            const ResCell& cell = grid.cells[i];
            if (!cell.grid.empty()) {
                Place(cell.grid.front(), rooms[i]);
                continue;
            }
            const Component* component = dialog_.Find(cell.component);
            const bool stretches = grid.columnStretches[static_cast<std::size_t>(cell.column)];
            if (component != nullptr && component->visible)
                DrawComponent(*component, measure_.Fit(*component, rooms[i], stretches));
        }
    }

    // ---- Pieces

    void Box(const Area& area, const char* style, double round = 0) {
        svg_ += "<rect x=\"" + Number(area.x) + "\" y=\"" + Number(area.y) + "\" width=\"" +
                Number(area.width) + "\" height=\"" + Number(area.height) + "\" class=\"" + style + "\"" +
                (round > 0 ? " rx=\"" + Number(round) + "\"" : "") + "/>\n";
    }

    void Path(const std::string& way) { svg_ += "<path d=\"" + way + "\" class=\"line\"/>\n"; }

    // Text whose middle line is at `y`.
    void Text(double x, double y, std::wstring_view text, bool grey = false, bool centred = false) {
        if (text.empty()) return;
        svg_ += "<text x=\"" + Number(x) + "\" y=\"" + Number(y + 4.3) + "\"" +
                (grey ? " class=\"grey\"" : "") + (centred ? " text-anchor=\"middle\"" : "") + ">" +
                Escaped(text) + "</text>\n";
    }

    // Text cut to a width, as a field would; `mark` then stands for what is missing.
    void Clipped(const Area& area, std::wstring_view text, bool grey, std::wstring_view mark = {}) {
        const double room = area.width - 6;
        std::wstring shown(text);
        if (TextWidth(shown) > room) {
            while (!shown.empty() && TextWidth(shown) + TextWidth(mark) > room) shown.pop_back();
            shown += mark;
        }
        Text(area.x + 4, area.y + area.height / 2, shown, grey);
    }

    void DrawComponent(const Component& component, const Area& area) {
        const bool grey = !component.sensitive;
        switch (component.kind) {
            case ComponentKind::kLabel:
                DrawLines(component.label, area.x, area.y, grey);
                break;
            case ComponentKind::kPushButton:
                Box(area, component.name == dialog_.defaultButton ? "default" : "button", 1.5);
                Text(area.x + area.width / 2, area.y + area.height / 2, component.label, grey, true);
                break;
            case ComponentKind::kCheckButton:
                DrawCheck(component, area, grey);
                break;
            case ComponentKind::kRadioGroup:
                DrawRadios(component, area, grey);
                break;
            case ComponentKind::kInputPanel:
                Box(area, component.editable && !grey ? "field" : "off");
                Clipped(area, component.value, grey);
                break;
            case ComponentKind::kOptionMenu:
                DrawOptionMenu(component, area, grey);
                break;
            case ComponentKind::kTextArea:
                Box(area, component.editable && !grey ? "field" : "off");
                DrawLines(component.value, area.x + 4, area.y + 3, grey);
                break;
            case ComponentKind::kTable:
                DrawTable(component, area);
                break;
            case ComponentKind::kList:
            case ComponentKind::kTree:
                DrawList(component, area);
                break;
            case ComponentKind::kSeparator:
                DrawSeparator(area);
                break;
            case ComponentKind::kDrawingArea:
                DrawImages(component, area);
                break;
            case ComponentKind::kLayout:
                DrawLayout(component, area);
                break;
            case ComponentKind::kTab:
                DrawTab(component, area);
                break;
            default:
                DrawScale(component, area);
                break;
        }
    }

    void DrawLines(std::wstring_view text, double x, double y, bool grey) {
        for (const std::wstring& line : SplitLines(text)) {
            Text(x, y + kLineHeight / 2, line, grey);
            y += kLineHeight;
        }
    }

    void DrawCheck(const Component& component, const Area& area, bool grey) {
        const double y = area.y + (area.height - kMark) / 2;
        Box({area.x + 0.5, y, kMark, kMark}, grey ? "off" : "mark");
        if (component.checked) Path("M" + Number(area.x + 3) + " " + Number(y + 6.5) + "l3 3.5l5 -7");
        Text(area.x + kMark + 6, area.y + area.height / 2, component.label, grey);
    }

    void DrawRadios(const Component& group, const Area& area, bool grey) {
        const bool vertical = group.Boolean("Orientation", true);
        double x = area.x, y = area.y + (kLineHeight + 4) / 2;
        for (std::size_t i = 0; i < group.labels.size(); ++i) {
            const std::string center = "<circle cx=\"" + Number(x + 7) + "\" cy=\"" + Number(y) + "\" r=\"";
            svg_ += center + "6\" class=\"" + (grey ? "off" : "mark") + "\"/>\n";
            if (group.names[i] == SelectedName(group)) svg_ += center + "3\" class=\"dot\"/>\n";
            Text(x + kMark + 6, y, group.labels[i], grey);
            if (vertical)
                y += kLineHeight + 4;
            else
                x += kMark + 7 + TextWidth(group.labels[i]) + 14;
        }
    }

    void DrawOptionMenu(const Component& menu, const Area& area, bool grey) {
        Box(area, grey ? "off" : menu.editable ? "field" : "button");
        Clipped({area.x, area.y, area.width - kArrow, area.height}, menu.value, grey);
        Path("M" + Number(area.x + area.width - kArrow + 4) + " " + Number(area.y + area.height / 2 - 2) +
             "l4 4l4 -4");
    }

    void DrawTable(const Component& component, const Area& area) {
        const Table& table = component.table;
        Box(area, "field");
        std::vector<std::string> rows;
        for (const Table::Line& row : table.Rows())
            if (table.IsInSight(row.name)) rows.push_back(row.name);
        const auto room = static_cast<std::size_t>(std::max((area.height - 2) / kTableRow - 1, 0.0));
        const std::size_t all = rows.size();
        const bool scrolls = all > room;
        rows.resize(std::min(all, room));
        const double right = area.x + area.width - 1 - (scrolls ? kArrow : 0);
        double x = area.x + 1;
        for (const Table::Line& column : table.Columns()) {
            const double width = std::min(DrawnWidth(table, column, rows), right - x);
            if (width <= 0) break;
            Area cell = {x, area.y + 1, width, kTableRow};
            Box(cell, "head");
            Clipped(cell, column.label, false);
            for (const std::string& row : rows) {
                cell.y += kTableRow;
                DrawCell(component, {row, column.name}, cell);
            }
            x += width;
        }
        if (scrolls)
            DrawScrollBar({right, area.y + 1, kArrow, area.height - 2},
                          static_cast<double>(room) / static_cast<double>(all));
    }

    // A column without a width of its own is as wide as a user would make it.
    static double DrawnWidth(const Table& table, const Table::Line& column,
                             const std::vector<std::string>& rows) {
        double width = ColumnPixels(column);
        for (std::size_t i = 0; column.width == 0 && i < rows.size(); ++i)
            width = std::max(width, TextWidth(table.Cell(rows[i], column.name)->label) + 12);
        return std::min(width, std::max(ColumnPixels(column), kWidestFitted));
    }

    void DrawCell(const Component& table, const CellName& name, const Area& area) {
        const TableCell& cell = *table.table.Cell(name.row, name.column);
        const std::vector<std::string> selected = table.table.SelectedRows();
        if (std::find(selected.begin(), selected.end(), name.row) != selected.end())
            Box(area, "chosen");
        else if (cell.background.value_or(0) != 0)
            Box(area, "tint");
        Box(area, "cell");
        const Component* inside = cell.component.empty() ? nullptr : dialog_.Find(cell.component);
        if (inside == nullptr)
            Clipped(area, cell.label, false, L"\u2026");
        else
            DrawComponent(*inside, {area.x + 4, area.y, area.width - 4, area.height});
    }

    // `part`: how much of the whole is in sight, from its beginning.
    void DrawScrollBar(const Area& area, double part) {
        Box(area, "head");
        Box({area.x + 3, area.y + kArrow, area.width - 6, (area.height - 2 * kArrow) * part}, "thumb");
        const std::string middle = Number(area.x + area.width / 2 - 4);
        Path("M" + middle + " " + Number(area.y + 10) + "l4 -4l4 4");
        Path("M" + middle + " " + Number(area.y + area.height - 10) + "l4 4l4 -4");
    }

    void DrawList(const Component& list, const Area& area) {
        Box(area, "field");
        double y = area.y + 4;
        for (std::size_t i = 0; i < list.labels.size() && y + kLineHeight < area.y + area.height; ++i) {
            const bool on =
                std::find(list.selected.begin(), list.selected.end(), list.names[i]) != list.selected.end();
            if (on) Box({area.x + 1, y, area.width - 2, kLineHeight}, "chosen");
            Clipped({area.x, y, area.width, kLineHeight}, list.labels[i], false);
            y += kLineHeight;
        }
    }

    void DrawImages(const Component& component, const Area& area) {
        Box(area, "field");
        for (const std::string& name : component.drawn) {
            const std::string bytes = images_ ? images_(name) : std::string();
            if (bytes.empty()) continue;
            svg_ += "<image x=\"" + Number(area.x + 1) + "\" y=\"" + Number(area.y + 1) + "\" width=\"" +
                    Number(area.width - 2) + "\" height=\"" + Number(area.height - 2) +
                    "\" preserveAspectRatio=\"xMinYMin\" xmlns:xlink=\"http://www.w3.org/1999/xlink\" "
                    "xlink:href=\"data:" +
                    std::string(bytes.starts_with("GIF") ? "image/gif" : "image/bmp") + ";base64," +
                    Base64(bytes) + "\"/>\n";
        }
    }

    void DrawSeparator(const Area& area) {
        const bool vertical = area.height > area.width;
        svg_ += "<path d=\"M" + Number(area.x) + " " + Number(area.y + 1) +
                (vertical ? "v" + Number(area.height) : "h" + Number(area.width)) + "\" class=\"rule\"/>\n";
    }

    void DrawLayout(const Component& layout, const Area& area) {
        const ResContainer* container = dialog_.Layout().Find(layout.name);
        if (container == nullptr || !container->grid) return;
        Area inner = area;
        if (layout.Boolean("Decorated", false)) {
            DrawFrame(layout.label, {area.x + 0.5, area.y + 7.5, area.width - 1, area.height - 8});
            inner = {area.x + kFrameSide, area.y + kFrameTop, area.width - 2 * kFrameSide,
                     area.height - kFrameTop - kFrameSide};
        }
        Place(*container->grid, inner);
    }

    // A frame whose title interrupts its upper edge.
    void DrawFrame(std::wstring_view title, const Area& area) {
        const double gap = title.empty() ? 0 : TextWidth(title) + 6;
        svg_ += "<path class=\"frame\" d=\"M" + Number(area.x + 8) + " " + Number(area.y) + "H" +
                Number(area.x) + "v" + Number(area.height) + "h" + Number(area.width) + "v" +
                Number(-area.height) + "H" + Number(area.x + 8 + gap) + "\"/>\n";
        Text(area.x + 11, area.y, title);
    }

    void DrawTab(const Component& tab, const Area& area) {
        Box({area.x + 0.5, area.y + kTabHeight, area.width - 1, area.height - kTabHeight}, "frame");
        double x = area.x + 2;
        const std::string shown =
            tab.selected.empty() && !tab.children.empty() ? tab.children.front() : SelectedName(tab);
        for (const std::string& page : tab.children) {
            const ResContainer* container = dialog_.Layout().Find(page);
            if (container == nullptr) continue;
            const auto label = container->attributes.find("Label");
            const bool named = label != container->attributes.end() && !label->second.values.empty();
            const std::wstring text = named ? label->second.values.front().text : Wide(page);
            Box({x, area.y + 2, TextWidth(text) + 16, kTabHeight - 2}, page == shown ? "field" : "head");
            Text(x + 8, area.y + 2 + kTabHeight / 2, text);
            x += TextWidth(text) + 16;
            if (page == shown && container->grid)
                Place(*container->grid,
                      {area.x + kFrameSide, area.y + kTabHeight + kFrameSide, area.width - 2 * kFrameSide,
                       area.height - kTabHeight - 2 * kFrameSide});
        }
    }

    void DrawMenuBar(const ResContainer& container, const Area& area) {
        double x = area.x + 8;
        for (const ResComponent& bar : container.components) {
            if (bar.kind != ComponentKind::kMenuBar) continue;
            for (const std::string& pane : bar.children) {
                Text(x, area.y + area.height / 2, Wide(pane));
                x += TextWidth(Wide(pane)) + 16;
            }
        }
    }

    void DrawScale(const Component& scale, const Area& area) {
        Box(area, "field");
        const double range = scale.maximum - scale.minimum;
        const double part = range > 0 ? std::clamp((scale.position - scale.minimum) / range, 0.0, 1.0) : 0.0;
        if (scale.kind == ComponentKind::kProgressBar)
            Box({area.x + 1, area.y + 1, (area.width - 2) * part, area.height - 2}, "bar2");
        else
            Clipped(area, std::to_wstring(scale.position), !scale.sensitive);
    }

    const Dialog& dialog_;
    DialogMeasure measure_;
    const ImageReader& images_;
    std::string svg_;
};

}  // namespace

std::string DialogSvg(const Dialog& dialog, const ImageReader& images) {
    return Drawing(dialog, images).Draw();
}

}  // namespace sim
