// One worksheet: values, styles, merged cells, widths and heights. Rows and columns count from 1.

#pragma once

#include <algorithm>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

inline constexpr int kMaxSheetRow = 1048576;
inline constexpr int kMaxSheetColumn = 16384;
// Of a column whose width nobody set, in characters.
inline constexpr double kStandardWidth = 8.43;

inline constexpr wchar_t kGeneralFormat[] = L"General";
inline constexpr wchar_t kTextFormat[] = L"@";

// Horizontal alignments by their numbers in automation.
inline constexpr int kAlignGeneral = 1;
inline constexpr int kAlignCentre = -4108;
inline constexpr int kAlignLeft = -4131;
inline constexpr int kAlignRight = -4152;

struct CellStyle {
    std::wstring numberFormat = kGeneralFormat;
    bool bold = false;
    double size = 11;              // points
    std::optional<unsigned> fill;  // 0xBBGGRR; nothing: no fill
    int alignment = kAlignGeneral;
    bool bordered = false;  // with lines on all sides; not kept in files

    bool operator==(const CellStyle&) const = default;
};

enum class CellKind { kEmpty, kNumber, kTruth, kText, kFormula, kError };

struct CellValue {
    CellKind kind = CellKind::kEmpty;
    double number = 0;  // of a number; 1 or 0 of a truth value
    std::wstring text;  // of a text, a formula ("=A1+1") or an error ("#N/A")

    bool operator==(const CellValue&) const = default;
};

// Cells from corner to corner, both included.
struct CellArea {
    int top = 1;
    int left = 1;
    int bottom = 1;
    int right = 1;

    int Rows() const { return bottom - top + 1; }
    int Columns() const { return right - left + 1; }
    bool Contains(int row, int column) const {
        return row >= top && row <= bottom && column >= left && column <= right;
    }
    bool operator==(const CellArea&) const = default;
};

// "B7" or "B7:D9", dollar signs allowed. Nothing for anything else, or a cell beyond the sheet.
std::optional<CellArea> AreaFromText(std::wstring_view text);
// "B7", or "B7:D9" for more than one cell.
std::wstring AreaText(const CellArea& area);

// What an entry typed or put into a cell of this number format becomes. Nothing: the entry is refused (a
// formula that cannot be one). A date or percentage changes the format of a General cell.
std::optional<CellValue> ValueOfEntry(std::wstring_view entry, std::wstring& numberFormat);

// The colour at a place (1 to 56) of the standard palette, 0xBBGGRR.
std::optional<unsigned> PaletteColour(int place);
std::optional<int> PalettePlace(unsigned colour);

class Sheet {
public:
    Sheet();

    const CellValue& Value(int row, int column) const;
    const CellStyle& Style(int row, int column) const;
    // Puts a text as a user would type it. False: refused. A cell covered by a merged one ignores it.
    [[nodiscard]] bool Enter(int row, int column, std::wstring_view text);
    void Put(int row, int column, CellValue value);

    // Changes the style of all cells of an area; whole columns keep it for cells to come. `change` takes a
    // CellStyle&.
    template <typename Change>
    void Restyle(const CellArea& area, Change change);

    // False: the area cuts through merged cells. Values but the first are dropped. `dropped` tells whether
    // there were any.
    [[nodiscard]] bool Merge(const CellArea& area, bool& dropped);
    const std::vector<CellArea>& Merged() const { return merged_; }

    void FitColumns(const CellArea& area);
    void FitRows(const CellArea& area);
    // Widths in characters and heights in points, where they differ from the standard.
    std::map<int, double> columnWidths;
    std::map<int, double> rowHeights;

    // What a cell shows: a number that its column is too narrow for shows as "#" alone.
    std::wstring Shown(int row, int column) const;
    // The smallest area with all that is filled; the first cell for an empty sheet.
    CellArea Used() const;

    int LastRow() const { return static_cast<int>(rows_.size()); }
    int LastColumn(int row) const {
        return static_cast<int>(rows_[static_cast<std::size_t>(row - 1)].size());
    }
    // Number of the cell's style in Styles(); the first is the standard.
    int StyleNumber(int row, int column) const;
    const std::vector<CellStyle>& Styles() const { return styles_; }
    const std::map<int, int>& ColumnStyles() const { return columnStyles_; }

private:
    struct Cell {
        CellValue value;
        int style = 0;
    };

    const Cell* Find(int row, int column) const;
    Cell& At(int row, int column);
    int ColumnStyle(int column) const;
    int NumberOf(const CellStyle& style);
    bool IsMerged(int row, int column) const;
    bool IsCovered(int row, int column) const;

    std::vector<std::vector<Cell>> rows_;
    std::vector<CellStyle> styles_;
    std::map<int, int> columnStyles_;
    std::vector<CellArea> merged_;
};

template <typename Change>
void Sheet::Restyle(const CellArea& area, Change change) {
    std::map<int, int> changed;  // style number before and after
    const auto restyle = [&](int& number) {
        const auto known = changed.find(number);
        if (known == changed.end()) {
            CellStyle style = styles_[static_cast<std::size_t>(number)];
            change(style);
            number = changed.emplace(number, NumberOf(style)).first->second;
        } else {
            number = known->second;
        }
    };
    const bool wholeColumns = area.Rows() == kMaxSheetRow;
    for (int column = area.left; wholeColumns && column <= area.right; ++column) {
        int number = ColumnStyle(column);
        restyle(number);
        columnStyles_[column] = number;
    }
    const int bottom = wholeColumns ? LastRow() : area.bottom;
    for (int row = area.top; row <= bottom; ++row) {
        const int right = wholeColumns ? std::min(area.right, LastColumn(row)) : area.right;
        for (int column = area.left; column <= right; ++column) restyle(At(row, column).style);
    }
}

}  // namespace sim
