// How large the components of a dialog are, and where they stand: sizes from the texts and the given columns
// and rows, places from the grids.

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "simulator/layout/dialog.h"

namespace sim {

// All measures in pixels of a screen with 96 dots an inch.
inline constexpr double kTitleBar = 30;
inline constexpr double kMargin = 11;
inline constexpr double kGap = 7;
inline constexpr double kLineHeight = 16;
inline constexpr double kColumnWidth = 7;  // one character of a field
inline constexpr double kFieldHeight = 23;
inline constexpr double kButtonHeight = 25;
inline constexpr double kButtonWidth = 80;
inline constexpr double kMark = 13;  // check box, radio button
inline constexpr double kArrow = 17;
inline constexpr double kFrameTop = 20;
inline constexpr double kFrameSide = 10;
inline constexpr double kTabHeight = 24;
inline constexpr double kTableRow = 20;

struct Size {
    double width = 0;
    double height = 0;
};

struct Area {
    double x = 0, y = 0, width = 0, height = 0;
};

// The lines of a text, at least one.
std::vector<std::wstring> SplitLines(std::wstring_view text);
double TextWidth(std::wstring_view text);
double ColumnPixels(const Table::Line& column);

class DialogMeasure {
public:
    explicit DialogMeasure(const Dialog& dialog) : dialog_(dialog) {}

    // The least that a grid takes.
    Size Measure(const ResGrid& grid) const;
    // The room of each cell of a grid that is given this area, in the order of its cells.
    std::vector<Area> Rooms(const ResGrid& grid, const Area& area) const;
    // Where in its cell a component stands: over the whole side when attached at both ends, else in its own
    // size.
    Area Fit(const Component& component, const Area& room, bool columnStretches) const;

private:
    Size Measure(const Component& component) const;
    Size MeasureContainer(const std::string& name) const;
    Size MeasureLayout(const Component& layout) const;
    Size MeasureTab(const Component& tab) const;
    Size MeasureCell(const ResCell& cell) const;
    void MeasureTracks(const ResGrid& grid, std::vector<double>& widths, std::vector<double>& heights) const;

    const Dialog& dialog_;
};

}  // namespace sim
