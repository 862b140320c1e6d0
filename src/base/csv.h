// Comma-separated values (RFC 4180): rows of texts as one text. Plain rules, without a host call.
#pragma once

#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace kv {

// One row with its line end. A cell with a comma, a quote or a line end stands in quotes.
std::wstring CsvLine(std::span<const std::wstring> cells);

// A text that no spreadsheet takes for a formula: one that begins like a formula gets an apostrophe in front.
std::wstring HarmlessCell(std::wstring text);

// The text that HarmlessCell was given.
std::wstring CellAsWritten(std::wstring text);

// The rows of a text, cells as they were before CsvLine. A semicolon divides like a comma where it comes
// first in the first row. An empty line is no row.
std::vector<std::vector<std::wstring>> CsvRows(std::wstring_view text);

// The text without a last row that has no line end: whoever wrote it did not get to its end.
std::wstring_view WholeRows(std::wstring_view text);

}  // namespace kv
