#include "simulator/layout/dialog_measure.h"

#include <algorithm>
#include <numeric>

namespace sim {

std::vector<std::wstring> SplitLines(std::wstring_view text) {
    std::vector<std::wstring> lines;
    for (;;) {
        const std::size_t end = text.find(L'\n');
        lines.emplace_back(text.substr(0, end));
        if (end == std::wstring_view::npos) return lines;
        text.remove_prefix(end + 1);
    }
}

double TextWidth(std::wstring_view text) {
    double widest = 0;
    for (const std::wstring& line : SplitLines(text)) {
        double width = 0;
        for (const wchar_t c : line)
            width += c >= 0x1100 ? 12.2 : (c >= L'A' && c <= L'Z') || c == L'W' ? 8 : 6.4;
        widest = std::max(widest, width);
    }
    return widest;
}

double ColumnPixels(const Table::Line& column) {
    return std::max(column.width * kColumnWidth, TextWidth(column.label)) + 12;
}

namespace {

bool IsField(ComponentKind kind) {
    switch (kind) {
        case ComponentKind::kInputPanel:
        case ComponentKind::kTextArea:
        case ComponentKind::kOptionMenu:
        case ComponentKind::kLayout:
        case ComponentKind::kTable:
        case ComponentKind::kList:
        case ComponentKind::kTree:
        case ComponentKind::kTab:
        case ComponentKind::kSeparator:
        case ComponentKind::kDrawingArea:
        case ComponentKind::kProgressBar:
        case ComponentKind::kSlider:
            return true;
        default:
            return false;
    }
}

Size MeasureTable(const Component& table) {
    double width = 0;
    for (const Table::Line& column : table.table.Columns()) width += ColumnPixels(column);
    width = std::max({width, table.Integer("MinColumns", 0) * kColumnWidth, 120.0});
    const int rows = table.Integer("VisibleRows", table.Integer("MinRows", 8));
    return {width + kArrow, kTableRow * (rows + 1) + 2};
}

Size MeasureEntries(const Component& group, double mark) {
    const bool vertical = group.Boolean("Orientation", true);
    Size size;
    for (const std::wstring& label : group.labels) {
        const double width = mark + TextWidth(label);
        size.width = vertical ? std::max(size.width, width) : size.width + width + 14;
        size.height = vertical ? size.height + kLineHeight + 4 : kLineHeight + 4;
    }
    return size;
}

double Sum(const std::vector<double>& tracks) {
    const auto gaps = std::count_if(tracks.begin(), tracks.end(), [](double track) { return track > 0; });
    return std::accumulate(tracks.begin(), tracks.end(), 0.0) +
           kGap * static_cast<double>(std::max<std::ptrdiff_t>(gaps - 1, 0));
}

// Room that is left over goes to the tracks that stretch.
void Stretch(std::vector<double>& tracks, const std::vector<bool>& stretches, double room) {
    const double left = room - Sum(tracks);
    const auto takers = std::count(stretches.begin(), stretches.end(), true);
    if (left <= 0 || takers == 0) return;
    for (std::size_t i = 0; i < tracks.size(); ++i)
        if (stretches[i]) tracks[i] += left / static_cast<double>(takers);
}

double Start(const std::vector<double>& tracks, int index) {
    double start = 0;
    for (std::size_t i = 0; i < static_cast<std::size_t>(index); ++i)
        if (tracks[i] > 0) start += tracks[i] + kGap;
    return start;
}

}  // namespace

// ---- Sizes

Size DialogMeasure::MeasureContainer(const std::string& name) const {
    const ResContainer* container = dialog_.Layout().Find(name);
    return container == nullptr || !container->grid ? Size{} : Measure(*container->grid);
}

Size DialogMeasure::Measure(const Component& component) const {
    const double columns = component.Integer("Columns", component.Integer("MinColumns", 20)) * kColumnWidth;
    switch (component.kind) {
        case ComponentKind::kLabel: {
            const double lines = static_cast<double>(SplitLines(component.label).size());
            return {std::max(TextWidth(component.label), component.Integer("Columns", 0) * kColumnWidth),
                    lines * kLineHeight};
        }
        case ComponentKind::kPushButton:
            return {std::max(TextWidth(component.label) + 24, kButtonWidth), kButtonHeight};
        case ComponentKind::kCheckButton:
            return {kMark + 7 + TextWidth(component.label), kLineHeight + 4};
        case ComponentKind::kRadioGroup:
            return MeasureEntries(component, kMark + 7);
        case ComponentKind::kInputPanel:
            return {columns + 8, kFieldHeight};
        case ComponentKind::kOptionMenu: {
            double widest = component.Integer("Columns", component.Integer("MinColumns", 8)) * kColumnWidth;
            for (const std::wstring& label : component.labels) widest = std::max(widest, TextWidth(label));
            return {widest + kArrow + 12, kFieldHeight};
        }
        case ComponentKind::kTextArea:
            return {columns + kArrow,
                    component.Integer("Rows", component.Integer("MinRows", 5)) * kLineHeight + 8};
        case ComponentKind::kTable:
            return MeasureTable(component);
        case ComponentKind::kList:
        case ComponentKind::kTree:
            return {columns + kArrow, component.Integer("VisibleRows", 6) * kLineHeight + 8};
        case ComponentKind::kSeparator:
            return {2, 2};
        case ComponentKind::kDrawingArea:
            return {component.Integer("DrawingWidth", 200) + 2.0,
                    component.Integer("DrawingHeight", 150) + 2.0};
        case ComponentKind::kLayout:
            return MeasureLayout(component);
        case ComponentKind::kTab:
            return MeasureTab(component);
        default:
            return {component.Integer("Length", 150) * 1.0, kFieldHeight};
    }
}

Size DialogMeasure::MeasureLayout(const Component& layout) const {
    Size size = MeasureContainer(layout.name);
    if (!layout.Boolean("Decorated", false)) return size;
    size.width = std::max(size.width, TextWidth(layout.label) + 20) + 2 * kFrameSide;
    size.height += kFrameTop + kFrameSide;
    return size;
}

Size DialogMeasure::MeasureTab(const Component& tab) const {
    Size size;
    for (const std::string& page : tab.children) {
        const Size one = MeasureContainer(page);
        size = {std::max(size.width, one.width), std::max(size.height, one.height)};
    }
    return {size.width + 2 * kFrameSide, size.height + kTabHeight + 2 * kFrameSide};
}

Size DialogMeasure::MeasureCell(const ResCell& cell) const {
    if (!cell.grid.empty()) return Measure(cell.grid.front());
    const Component* component = dialog_.Find(cell.component);
    return component == nullptr || !component->visible ? Size{} : Measure(*component);
}

void DialogMeasure::MeasureTracks(const ResGrid& grid, std::vector<double>& widths,
                                  std::vector<double>& heights) const {
    widths.assign(grid.columnStretches.size(), 0);
    heights.assign(grid.rowStretches.size(), 0);
    for (const ResCell& cell : grid.cells) {
        const Size size = MeasureCell(cell);
        double& width = widths[static_cast<std::size_t>(cell.column)];
        double& height = heights[static_cast<std::size_t>(cell.row)];
        width = std::max(width, size.width);
        height = std::max(height, size.height);
    }
}

Size DialogMeasure::Measure(const ResGrid& grid) const {
    std::vector<double> widths, heights;
    MeasureTracks(grid, widths, heights);
    return {Sum(widths), Sum(heights)};
}

// ---- Places

std::vector<Area> DialogMeasure::Rooms(const ResGrid& grid, const Area& area) const {
    std::vector<double> widths, heights;
    MeasureTracks(grid, widths, heights);
    Stretch(widths, grid.columnStretches, area.width);
    Stretch(heights, grid.rowStretches, area.height);
    std::vector<Area> rooms;
    for (const ResCell& cell : grid.cells)
        rooms.push_back({area.x + Start(widths, cell.column), area.y + Start(heights, cell.row),
                         widths[static_cast<std::size_t>(cell.column)],
                         heights[static_cast<std::size_t>(cell.row)]});
    return rooms;
}

Area DialogMeasure::Fit(const Component& component, const Area& room, bool columnStretches) const {
    const Size size = Measure(component);
    const bool field = IsField(component.kind);
    const bool button = component.kind == ComponentKind::kPushButton;
    const auto attached = [&](const char* first, const char* second, bool otherwise, bool& atFirst,
                              bool& atSecond) {
        const bool said = component.attributes.contains(first) || component.attributes.contains(second);
        atFirst = said ? component.Boolean(first, false) : otherwise;
        atSecond = said ? component.Boolean(second, false) : otherwise;
    };
    bool left, right, top, bottom;
    attached("AttachLeft", "AttachRight", field || (button && !columnStretches), left, right);
    const bool tall = component.kind == ComponentKind::kTable || component.kind == ComponentKind::kTextArea ||
                      component.kind == ComponentKind::kLayout || component.kind == ComponentKind::kList ||
                      component.kind == ComponentKind::kTab || component.kind == ComponentKind::kTree;
    attached("AttachTop", "AttachBottom", tall, top, bottom);
    Area area = room;
    if (!(left && right)) {
        area.width = std::min(size.width, room.width);
        // Attached to neither side on purpose: in the middle. Without a word about it: at the left.
        const bool centred = !left && !right && component.attributes.contains("AttachLeft");
        const double slack = room.width - area.width;
        area.x = room.x + (right ? slack : centred ? slack / 2 : 0);
    }
    if (!(top && bottom)) {
        area.height = std::min(size.height, room.height);
        const double slack = room.height - area.height;
        area.y = room.y + (bottom ? slack : top ? 0 : slack / 2);
    }
    return area;
}

}  // namespace sim
