#include "simulator/spreadsheet/sheet.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cwchar>
#include <cwctype>

namespace sim {

namespace {

constexpr int kLetters = 26;
constexpr double kStandardHeight = 15;  // points, of the standard size
constexpr double kStandardSize = 11;
constexpr double kBoldFactor = 1.1;
constexpr double kPadding = 1.5;  // characters beside a text
constexpr double kMaxWidth = 255;

// The standard palette, 0xRRGGBB as it is usually printed.
constexpr std::array<unsigned, 56> kPalette = {
    0x000000, 0xFFFFFF, 0xFF0000, 0x00FF00, 0x0000FF, 0xFFFF00, 0xFF00FF, 0x00FFFF, 0x800000, 0x008000,
    0x000080, 0x808000, 0x800080, 0x008080, 0xC0C0C0, 0x808080, 0x9999FF, 0x993366, 0xFFFFCC, 0xCCFFFF,
    0x660066, 0xFF8080, 0x0066CC, 0xCCCCFF, 0x000080, 0xFF00FF, 0xFFFF00, 0x00FFFF, 0x800080, 0x800000,
    0x008080, 0x0000FF, 0x00CCFF, 0xCCFFFF, 0xCCFFCC, 0xFFFF99, 0x99CCFF, 0xFF99CC, 0xCC99FF, 0xFFCC99,
    0x3366FF, 0x33CCCC, 0x99CC00, 0xFFCC00, 0xFF9900, 0xFF6600, 0x666699, 0x969696, 0x003366, 0x339966,
    0x003300, 0x333300, 0x993300, 0x993366, 0x333399, 0x333333,
};

unsigned Swapped(unsigned colour) {
    return (colour & 0xFFU) << 16 | (colour & 0xFF00U) | (colour >> 16 & 0xFFU);
}

// Takes "$B$7" off the front of the text.
bool TakeCell(std::wstring_view& text, int& row, int& column) {
    std::size_t i = 0;
    row = 0;
    column = 0;
    if (i < text.size() && text[i] == L'$') ++i;
    for (; i < text.size() && std::iswalpha(text[i]) && text[i] < 0x80 && column <= kMaxSheetColumn; ++i)
        column = column * kLetters + (std::towupper(text[i]) - L'A' + 1);
    if (i < text.size() && text[i] == L'$') ++i;
    for (; i < text.size() && text[i] >= L'0' && text[i] <= L'9' && row <= kMaxSheetRow; ++i)
        row = row * 10 + (text[i] - L'0');
    text.remove_prefix(i);
    return row >= 1 && row <= kMaxSheetRow && column >= 1 && column <= kMaxSheetColumn;
}

std::wstring CellText(int row, int column) {
    std::wstring letters;
    for (int rest = column; rest > 0; rest = (rest - 1) / kLetters)
        letters.insert(letters.begin(), static_cast<wchar_t>(L'A' + (rest - 1) % kLetters));
    return letters + std::to_wstring(row);
}

// Chinese characters and their marks take two places.
// Of the formats for numbers there is the one that fills with zeros.
std::wstring NumberText(double number, const std::wstring& format) {
    std::array<wchar_t, 64> digits = {};
    std::swprintf(digits.data(), digits.size(), L"%.10g", number);
    std::wstring text = digits.data();
    const bool filled = format.find_first_not_of(L'0') == std::wstring::npos;
    if (filled && text.size() < format.size()) text.insert(0, format.size() - text.size(), L'0');
    return text;
}

double WidthOf(const CellValue& value, const CellStyle& style) {
    const std::wstring text =
        value.kind == CellKind::kNumber ? NumberText(value.number, style.numberFormat) : value.text;
    double places = 0;
    for (const wchar_t c : text) places += c >= 0x2E80 ? 2 : 1;
    const double width = places * style.size / kStandardSize * (style.bold ? kBoldFactor : 1);
    return std::min(width + kPadding, kMaxWidth);
}

}  // namespace

std::optional<CellArea> AreaFromText(std::wstring_view text) {
    CellArea area;
    if (!TakeCell(text, area.top, area.left)) return std::nullopt;
    area.bottom = area.top;
    area.right = area.left;
    if (text.empty()) return area;
    if (text.front() != L':') return std::nullopt;
    text.remove_prefix(1);
    if (!TakeCell(text, area.bottom, area.right) || !text.empty()) return std::nullopt;
    if (area.bottom < area.top) std::swap(area.top, area.bottom);
    if (area.right < area.left) std::swap(area.left, area.right);
    return area;
}

std::wstring AreaText(const CellArea& area) {
    const std::wstring first = CellText(area.top, area.left);
    const bool single = area.Rows() == 1 && area.Columns() == 1;
    return single ? first : first + L":" + CellText(area.bottom, area.right);
}

std::optional<unsigned> PaletteColour(int place) {
    if (place < 1 || place > static_cast<int>(kPalette.size())) return std::nullopt;
    return Swapped(kPalette[static_cast<std::size_t>(place - 1)]);
}

std::optional<int> PalettePlace(unsigned colour) {
    const auto* const found = std::find(kPalette.begin(), kPalette.end(), Swapped(colour));
    if (found == kPalette.end()) return std::nullopt;
    return static_cast<int>(found - kPalette.begin()) + 1;
}

Sheet::Sheet() : styles_(1) {}

const Sheet::Cell* Sheet::Find(int row, int column) const {
    if (row > LastRow() || column > LastColumn(row)) return nullptr;
    return &rows_[static_cast<std::size_t>(row - 1)][static_cast<std::size_t>(column - 1)];
}

Sheet::Cell& Sheet::At(int row, int column) {
    if (row > LastRow()) rows_.resize(static_cast<std::size_t>(row));
    std::vector<Cell>& cells = rows_[static_cast<std::size_t>(row - 1)];
    while (static_cast<int>(cells.size()) < column)
        cells.push_back({{}, ColumnStyle(static_cast<int>(cells.size()) + 1)});
    return cells[static_cast<std::size_t>(column - 1)];
}

const CellValue& Sheet::Value(int row, int column) const {
    static const CellValue kEmpty;
    const Cell* cell = Find(row, column);
    return cell == nullptr ? kEmpty : cell->value;
}

int Sheet::StyleNumber(int row, int column) const {
    const Cell* cell = Find(row, column);
    return cell == nullptr ? ColumnStyle(column) : cell->style;
}

const CellStyle& Sheet::Style(int row, int column) const {
    return styles_[static_cast<std::size_t>(StyleNumber(row, column))];
}

int Sheet::ColumnStyle(int column) const {
    const auto style = columnStyles_.find(column);
    return style == columnStyles_.end() ? 0 : style->second;
}

int Sheet::NumberOf(const CellStyle& style) {
    const auto known = std::find(styles_.begin(), styles_.end(), style);
    const auto number = static_cast<int>(known - styles_.begin());
    if (known == styles_.end()) styles_.push_back(style);
    return number;
}

bool Sheet::IsMerged(int row, int column) const {
    return std::any_of(merged_.begin(), merged_.end(),
                       [&](const CellArea& area) { return area.Contains(row, column); });
}

bool Sheet::IsCovered(int row, int column) const {
    return std::any_of(merged_.begin(), merged_.end(), [&](const CellArea& area) {
        return area.Contains(row, column) && (row != area.top || column != area.left);
    });
}

bool Sheet::Enter(int row, int column, std::wstring_view text) {
    if (IsCovered(row, column)) return true;
    CellStyle style = Style(row, column);
    const std::wstring format = style.numberFormat;
    std::optional<CellValue> value = ValueOfEntry(text, style.numberFormat);
    if (!value) return false;
    Cell& cell = At(row, column);
    cell.value = std::move(*value);
    if (style.numberFormat != format) cell.style = NumberOf(style);
    return true;
}

void Sheet::Put(int row, int column, CellValue value) {
    if (!IsCovered(row, column)) At(row, column).value = std::move(value);
}

bool Sheet::Merge(const CellArea& area, bool& dropped) {
    dropped = false;
    for (const CellArea& other : merged_) {
        const bool apart = other.right < area.left || other.left > area.right || other.bottom < area.top ||
                           other.top > area.bottom;
        const bool inside = area.Contains(other.top, other.left) && area.Contains(other.bottom, other.right);
        if (!apart && !inside) return false;
    }
    std::erase_if(merged_, [&](const CellArea& other) { return area.Contains(other.top, other.left); });
    for (int i = 1; i < area.Rows() * area.Columns(); ++i) {
        Cell& covered = At(area.top + i / area.Columns(), area.left + i % area.Columns());
        dropped = dropped || covered.value.kind != CellKind::kEmpty;
        covered.value = {};
    }
    if (area.Rows() * area.Columns() > 1) merged_.push_back(area);
    return true;
}

void Sheet::FitColumns(const CellArea& area) {
    for (int row = 1; row <= LastRow(); ++row) {
        for (int column = area.left; column <= std::min(area.right, LastColumn(row)); ++column) {
            const CellValue& value = Value(row, column);
            // Merged cells have no say in the width.
            if (value.kind == CellKind::kEmpty || IsMerged(row, column)) continue;
            double& width = columnWidths[column];
            width = std::max(width, WidthOf(value, Style(row, column)));
        }
    }
}

std::wstring Sheet::Shown(int row, int column) const {
    const CellValue& value = Value(row, column);
    if (value.kind == CellKind::kTruth) return value.number != 0 ? L"TRUE" : L"FALSE";
    if (value.kind != CellKind::kNumber) return value.text;
    const std::wstring shown = NumberText(value.number, Style(row, column).numberFormat);
    const auto width = columnWidths.find(column);
    const double room = width == columnWidths.end() ? kStandardWidth : width->second;
    return static_cast<double>(shown.size()) > room ? L"####" : shown;
}

CellArea Sheet::Used() const {
    CellArea used = {LastRow(), kMaxSheetColumn, 0, 0};
    for (int row = 1; row <= LastRow(); ++row) {
        for (int column = 1; column <= LastColumn(row); ++column) {
            if (Value(row, column).kind == CellKind::kEmpty) continue;
            used = {std::min(used.top, row), std::min(used.left, column), row, std::max(used.right, column)};
        }
    }
    return used.bottom == 0 ? CellArea() : used;
}

void Sheet::FitRows(const CellArea& area) {
    for (int row = area.top; row <= std::min(area.bottom, LastRow()); ++row) {
        double size = kStandardSize;
        for (int column = 1; column <= LastColumn(row); ++column)
            size = std::max(size, Style(row, column).size);
        if (size > kStandardSize) rowHeights[row] = std::ceil(size * kStandardHeight / kStandardSize);
    }
}

}  // namespace sim
