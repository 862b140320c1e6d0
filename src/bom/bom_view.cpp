// Which rows of a list are shown, and in which order.

#include "bom/bom_view.h"

#include <algorithm>

#include "base/natural_order.h"
#include "base/text.h"

namespace kv {

static bool HoldsText(const BomSheet& sheet, unsigned int row, const std::wstring& wanted);
static void SortRows(const BomSheet& sheet, std::size_t column, bool isUp, std::vector<unsigned int>& order);

void TitleClicked(BomView& view, const std::string& column) {
    const bool isAgain = view.column == column;
    if (!isAgain || view.sort == BomSort::ListOrder)
        view.sort = BomSort::Up;
    else
        view.sort = view.sort == BomSort::Up ? BomSort::Down : BomSort::ListOrder;
    view.column = column;
}

std::vector<unsigned int> BomOrder(const BomSheet& sheet, const BomView& view) {
    const std::wstring wanted = UpperCase(view.filter);
    std::vector<unsigned int> order;
    for (unsigned int row = 0; row < sheet.rows.size(); ++row)
        if (wanted.empty() || HoldsText(sheet, row, wanted)) order.push_back(row);
    if (view.sort == BomSort::ListOrder) return order;

    const auto found = std::find_if(sheet.titles.begin(), sheet.titles.end(),
                                    [&](const BomTitle& title) { return title.name == view.column; });
    if (found != sheet.titles.end())
        SortRows(sheet, static_cast<std::size_t>(found - sheet.titles.begin()), view.sort == BomSort::Up,
                 order);
    else if (view.sort == BomSort::Down)  // by the number
        std::reverse(order.begin(), order.end());
    return order;
}

static bool HoldsText(const BomSheet& sheet, unsigned int row, const std::wstring& wanted) {
    if (std::to_wstring(row + 1).find(wanted) != std::wstring::npos) return true;
    for (std::size_t i = 0; i < sheet.titles.size(); ++i)
        if (UpperCase(BomCellText(sheet, sheet.rows[row], i)).find(wanted) != std::wstring::npos) return true;
    return false;
}

static void SortRows(const BomSheet& sheet, std::size_t column, bool isUp, std::vector<unsigned int>& order) {
    const bool isCode = sheet.titles[column].kind == BomColumn::ItemCode;
    std::vector<NaturalKey> keys(sheet.rows.size());
    for (const unsigned int row : order)
        keys[row] = NaturalKeyOf(BomCellText(sheet, sheet.rows[row], column), isCode);
    const auto isBefore = [&](unsigned int one, unsigned int other) {
        const bool isEmpty = keys[one].rank == 2 || keys[other].rank == 2;
        const int compared = NaturalCompare(keys[one], keys[other]);
        return isUp || isEmpty ? compared < 0 : compared > 0;
    };
    std::stable_sort(order.begin(), order.end(), isBefore);
}

}  // namespace kv
