// The table of drawings in the dialogs that work through a folder of them.
#pragma once

#include <string>
#include <vector>

#include "model/batch_run.h"
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

// Fill the parameter columns, resp. number and sizes of the sheets, an item of the run for each drawing. One
// that cannot be read is marked; a parameter that a drawing lacks leaves its cell empty. Nothing is erased
// from the host's memory: the user may have changed what is there.
using DrawingCellsLoad = void (*)(const DrawingTable& table, BatchRun& run);
void LoadParameters(const DrawingTable& table, BatchRun& run);
void LoadSheets(const DrawingTable& table, BatchRun& run);

void SelectAllDrawings(const DrawingTable& table);
void ReverseSelection(const DrawingTable& table);
// Names of the selected drawings, in table order.
std::vector<std::wstring> SelectedDrawings(const DrawingTable& table);

}  // namespace kv
