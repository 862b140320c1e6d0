// The table of drawings in the export dialog.
#pragma once

#include <string>
#include <vector>

#include "ui/table.h"

namespace kv {

// A table and what stands in it.
struct DrawingTable {
    TableName name;
    std::vector<std::wstring> drawings = {};    // names, by row
    std::vector<std::wstring> parameters = {};  // of the further columns
};

// Fills the table with these drawings, a row each; what else was loaded for the earlier rows goes.
void ShowDrawings(DrawingTable& table, const std::vector<std::wstring>& drawings);

// Replaces the parameter columns by new ones without content.
void ShowParameterColumns(DrawingTable& table, const std::vector<std::wstring>& parameters);

// Fill the parameter columns, resp. number and sizes of the sheets. A drawing that cannot be retrieved, or a
// parameter that it lacks, leaves its cells empty.
void LoadParameters(const DrawingTable& table);
void LoadSheets(const DrawingTable& table);

void SelectAllDrawings(const DrawingTable& table);
void ReverseSelection(const DrawingTable& table);
// Names of the selected drawings, in table order.
std::vector<std::wstring> SelectedDrawings(const DrawingTable& table);

}  // namespace kv
