// Tables as workbooks of the spreadsheet application, which is driven from outside and never seen: writing
// and reading.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace kv {

// Columns are addressed by one letter, A to Z.
inline constexpr std::size_t kMaxSheetColumns = 26;
// Rows of a worksheet, the title's and the column titles' among them.
inline constexpr std::size_t kMaxSheetRows = 1048576;

// Whether a worksheet has room for a table of so many rows.
constexpr bool RowsFitSheet(std::size_t rows) {
    return rows + 2 <= kMaxSheetRows;
}

struct SheetCell {
    std::wstring text;    // stays text, whatever it looks like
    bool marked = false;  // light green
};

// A table under a title: row 1 the title over all columns, row 2 the column titles, then the rows.
struct SheetTable {
    std::wstring title;
    std::vector<std::wstring> columns;
    // As many cells as there are columns; cells missing at the end of a row count as empty.
    std::vector<std::vector<SheetCell>> rows;
};

// A cell that the application did not take: column and row of the table, counted from 0 and from 1; row 0 is
// the column titles'.
struct RefusedCell {
    std::size_t column;
    std::size_t row;
};

enum class SheetExport {
    Written,     // the file is there; cells that were refused are empty in it
    NotCreated,  // the application is missing or does not start
    Failed,      // it started and then refused something; there is no file
};

// What a workbook is to be besides its content.
struct SheetForm {
    bool isOld = false;       // .xls in place of .xlsx
    bool isBordered = false;  // lines around all cells of the table
};

// Writes the table into a new workbook file: starts the application, fills a workbook, saves it and quits, on
// every path out. Works whether or not COM is initialised on this thread.
//
// refused    gets the cells that the application did not take
// path       absolute, with extension; the folder exists. A file in its place is replaced.
// Errors     Failed without starting anything for no columns or more than kMaxSheetColumns.
// Cost       a fixed number of calls, and three for every twenty or so blocks of marked cells: neighbouring
//            rows marked in the same columns are one block for each unbroken stretch of marked columns.
[[nodiscard]] SheetExport SheetTableWrite(const SheetTable& table, const std::wstring& path,
                                          std::vector<RefusedCell>& refused, SheetForm form = {});

// The same where an earlier workbook may be in the place: it is kept when nothing was written.
[[nodiscard]] SheetExport SheetFileWrite(const SheetTable& table, const std::wstring& path,
                                         std::vector<RefusedCell>& refused, SheetForm form = {});

enum class SheetImport {
    Read,
    NotCreated,  // the application is missing or does not start
    Failed,      // it started and then refused something
    TooMany,     // there are more rows than asked for
};

// Reads the texts of the first sheet as they are shown, from row 1 and column A on, empty cells included.
//
// columns  read of each row, at most kMaxSheetColumns
// most     rows
// rows     each has `columns` cells; the last one has something in it
// Cost     a fixed number of calls, and two for each cell that is no text
//
// Nothing of the workbook runs, no link is followed, and the file is only read.
[[nodiscard]] SheetImport SheetTableRead(const std::wstring& path, std::size_t columns, std::size_t most,
                                         std::vector<std::vector<std::wstring>>& rows);

}  // namespace kv
