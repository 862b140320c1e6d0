// The bill of materials and its changes as pages.

#include "bom/bom_pages.h"

#include <cstddef>
#include <iterator>
#include <utility>

#include "base/plugin_version.h"

namespace kv {

static constexpr wchar_t kFootModel[] = L"模型：";
static constexpr wchar_t kFootTime[] = L"日期：";
static constexpr wchar_t kFootDeepest[] = L"列到层级：";
static constexpr wchar_t kFootLevels[] = L"分层清单的列：";
static constexpr wchar_t kFootSummed[] = L"汇总清单的列：";
static constexpr wchar_t kFootEarlier[] = L"旧清单：";
static constexpr wchar_t kFootPlugin[] = L"Korvane ";

static void ListAdd(PageWriter& page, const BomSheet& sheet);
static std::wstring TitlesText(const BomSheet& sheet);

std::string BomPage(const BomSheet& levels, const BomSheet& summed, const PageFacts& facts,
                    const PageParts& parts) {
    PageWriter page({PageKind::Bom, facts.title, facts.model}, parts);
    ListAdd(page, levels);
    ListAdd(page, summed);
    return page.End(std::vector<std::wstring>{
        kFootModel + facts.model, kFootTime + facts.time, kFootDeepest + std::to_wstring(facts.deepest),
        kFootLevels + TitlesText(levels), kFootSummed + TitlesText(summed),
        std::wstring(kFootPlugin) + kPluginVersion});
}

std::string ChangesPage(const std::vector<ChangeLine>& lines, const std::wstring& earlier,
                        const PageFacts& facts, const PageParts& parts) {
    std::vector<PageColumn> columns;
    columns.reserve(std::size(kChangeTitles));
    for (const wchar_t* title : kChangeTitles) columns.push_back({title});
    PageWriter page({PageKind::Changes, facts.title, facts.model}, parts);
    page.ListBegin(PageForm::Changes, columns, columns.size());
    for (const ChangeLine& line : lines) {
        const auto cells = ChangeCells(line);
        page.RowAdd({0, line.isAssembly, line.name, 0, {cells.begin(), cells.end()}});
    }
    page.ListEnd();
    return page.End(std::vector<std::wstring>{kFootModel + facts.model, kFootTime + facts.time,
                                              kFootEarlier + earlier,
                                              std::wstring(kFootPlugin) + kPluginVersion});
}

static void ListAdd(PageWriter& page, const BomSheet& sheet) {
    const bool isTree = sheet.form == BomForm::Levels;
    std::vector<PageColumn> columns = {{kBomNumberTitle}};
    std::size_t tree = 0;
    for (const BomTitle& title : sheet.titles) {
        if (title.kind == BomColumn::ModelName && tree == 0) tree = columns.size();
        columns.push_back(
            {title.title, title.kind == BomColumn::Quantity, title.kind == BomColumn::ItemCode});
    }
    page.ListBegin(isTree ? PageForm::Levels : PageForm::Summed, columns, isTree ? tree : columns.size());
    PageRow shown;
    for (std::size_t i = 0; i < sheet.rows.size(); ++i) {
        const BomRow& row = sheet.rows[i];
        shown = {row.level,
                 IsAssemblyRow(sheet, row),
                 sheet.models[row.model].name,
                 row.count,
                 {std::to_wstring(i + 1)}};
        for (std::size_t column = 0; column < sheet.titles.size(); ++column)
            shown.cells.push_back(BomCellText(sheet, row, column));
        page.RowAdd(shown);
    }
    page.ListEnd();
}

static std::wstring TitlesText(const BomSheet& sheet) {
    std::wstring text = kBomNumberTitle;
    for (const BomTitle& title : sheet.titles) text += L"，" + title.title;
    return text;
}

}  // namespace kv
