// The bill of materials as comma-separated values.

#include "bom/bom_csv.h"

#include <vector>

#include "base/csv.h"
#include "base/text.h"

namespace kv {

static constexpr char kCsvMark[] = "\xEF\xBB\xBF";

std::string BomCsv(const BomSheet& sheet) {
    const bool isLevels = sheet.form == BomForm::Levels;
    std::vector<std::wstring> cells = {kBomNumberTitle};
    for (const BomTitle& title : sheet.titles) cells.push_back(title.title);
    cells.insert(cells.end(), {kCsvNameTitle, kCsvTypeTitle});
    if (isLevels) cells.emplace_back(kCsvPathTitle);
    std::string text = kCsvMark + Utf8Text(CsvLine(cells));

    for (std::size_t i = 0; i < sheet.rows.size(); ++i) {
        const BomRow& row = sheet.rows[i];
        cells.assign(1, std::to_wstring(i + 1));
        for (std::size_t column = 0; column < sheet.titles.size(); ++column)
            cells.push_back(BomCellText(sheet, row, column));
        cells.push_back(sheet.models[row.model].name);
        cells.emplace_back(TypeText(IsAssemblyRow(sheet, row)));
        if (isLevels) cells.push_back(ParentPath(sheet, row));
        text += Utf8Text(CsvLine(cells));
    }
    return text;
}

}  // namespace kv
