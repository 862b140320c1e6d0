// The bill of materials as files: a workbook, comma-separated values, a page; and its changes as a page.
#pragma once

#include <string>
#include <vector>

#include "bom/bom_changes.h"
#include "bom/bom_sheet.h"

namespace kv {

// Each lets the user choose a file and writes the whole list into it, rows in the order of their numbers.
// What goes wrong is shown, unless the user cancelled, and leaves an earlier file as it was.

// A workbook, which is opened. Where the application does not start, the values are offered in its place.
void BomExport(const BomSheet& sheet);

// Comma-separated values.
void BomCsvExport(const BomSheet& sheet);

// A page, which is opened, with the list by level down to level `deepest` and the summed list. The one that
// is loaded stands there as it is; the other one is made from what the walk has met, under the columns that
// the settings name for it.
void BomPageExport(const BomSource& source, const BomSheet& sheet, int deepest);

// A page with changes, which is opened. earlier: name of the file that the list was compared with
void ChangesExport(const std::vector<ChangeLine>& lines, const std::wstring& earlier);

}  // namespace kv
