#include "support/cell_by_cell.h"

#include <array>

#include "office/automation.h"

namespace test {

namespace {

using kv::Dispatch;
using kv::Variant;

std::wstring CellName(std::size_t column, std::size_t row) {
    return static_cast<wchar_t>(L'A' + column) + std::to_wstring(row);
}

bool Range(const Dispatch& sheet, const std::wstring& first, const std::wstring& last, Dispatch& range) {
    const std::array<Variant, 2> corners = {Variant(first), Variant(last)};
    return SUCCEEDED(sheet.Get(197, range, corners));
}

bool PutPart(const Dispatch& object, DISPID part, DISPID property, const Variant& value) {
    Dispatch held;
    return SUCCEEDED(object.Get(part, held)) && SUCCEEDED(held.Put(property, value));
}

bool WriteTitle(const Dispatch& sheet, const kv::SheetTable& table) {
    Dispatch range;
    Dispatch first;
    return Range(sheet, L"A1", L"A1", first) && SUCCEEDED(first.Put(193, Variant(L"@"))) &&
           Range(sheet, L"A1", CellName(table.columns.size() - 1, 1), range) &&
           SUCCEEDED(range.Put(1388, Variant(table.title))) && SUCCEEDED(range.Call(564)) &&
           PutPart(range, 129, 99, Variant(65535L)) && PutPart(range, 246, 136, Variant(-4108L)) &&
           PutPart(range, 146, 96, Variant(true)) && PutPart(range, 146, 104, Variant(16L));
}

bool WriteHeader(const Dispatch& sheet, const kv::SheetTable& table, std::size_t column) {
    Dispatch cell;
    const std::wstring name = CellName(column, 2);
    return Range(sheet, name, name, cell) && SUCCEEDED(cell.Put(193, Variant(L"@"))) &&
           SUCCEEDED(cell.Put(1388, Variant(table.columns[column]))) &&
           PutPart(cell, 246, 136, Variant(-4108L)) && PutPart(cell, 146, 96, Variant(true));
}

bool WriteCell(const Dispatch& sheet, const kv::SheetCell& cell, std::size_t column, std::size_t row) {
    Dispatch range;
    const std::wstring name = CellName(column, row);
    return Range(sheet, name, name, range) && SUCCEEDED(range.Put(193, Variant(L"@"))) &&
           SUCCEEDED(range.Put(1388, Variant(cell.text))) &&
           (!cell.marked || PutPart(range, 129, 97, Variant(35L)));
}

bool WriteSheet(const Dispatch& sheet, const kv::SheetTable& table) {
    bool good = WriteTitle(sheet, table);
    for (std::size_t c = 0; good && c < table.columns.size(); ++c) good = WriteHeader(sheet, table, c);
    for (std::size_t r = 0; good && r < table.rows.size(); ++r)
        for (std::size_t c = 0; good && c < table.columns.size(); ++c)
            good = WriteCell(sheet, table.rows[r][c], c, r + 3);
    Dispatch lines;
    return good && SUCCEEDED(sheet.Get(241, lines)) && SUCCEEDED(lines.Call(237)) &&
           SUCCEEDED(sheet.Get(258, lines)) && SUCCEEDED(lines.Call(237));
}

bool FirstSheet(const Dispatch& application, Dispatch& workbook, Dispatch& sheet) {
    const std::array<Variant, 1> omitted = {Variant::Omitted()};
    const std::array<Variant, 1> first = {Variant(1L)};
    Dispatch workbooks;
    Dispatch sheets;
    return SUCCEEDED(application.Get(572, workbooks)) &&
           SUCCEEDED(workbooks.CallFor(181, workbook, omitted)) && SUCCEEDED(workbook.Get(485, sheets)) &&
           SUCCEEDED(sheets.Get(170, sheet, first));
}

}  // namespace

bool WriteCellByCell(const kv::SheetTable& table, const std::wstring& path) {
    const kv::ComApartment apartment;
    Dispatch application;
    Dispatch workbook;
    Dispatch sheet;
    if (FAILED(application.Create(L"Excel.Application"))) return false;
    const std::array<Variant, 1> file = {Variant(path)};
    const bool good = FirstSheet(application, workbook, sheet) && WriteSheet(sheet, table) &&
                      SUCCEEDED(application.Put(558, Variant(false))) &&
                      SUCCEEDED(application.Put(1210, Variant(false))) &&
                      SUCCEEDED(workbook.Call(175, file)) && SUCCEEDED(workbook.Put(298, Variant(true)));
    sheet.Release();
    workbook.Release();
    return SUCCEEDED(application.Call(302)) && good;
}

}  // namespace test
