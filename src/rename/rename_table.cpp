// The table of the rename dialog.

#include "rename/rename_table.h"

#include <utility>

#include "base/status.h"
#include "base/text.h"
#include "model/prefix_list.h"
#include "ui/dialog.h"

namespace kv {

static constexpr char kNumber[] = "num";
static constexpr char kOldName[] = "old_name";
static constexpr char kType[] = "type";
static constexpr char kNewName[] = "new_name";
static constexpr char kPlacements[] = "count";
static constexpr char kDrawing[] = "drawing";
static constexpr char kTemplate[] = "name_input";
static constexpr wchar_t kHasDrawing[] = L"有";

// The row's name stays without an input: one that is still shown then cannot be read.
static void InputDelete(ShownRow& row) {
    CellComponentDelete(kRenameTable, row.name, kNewName);
    row.input.clear();
}

// The inputs go first: a host may keep them when their rows are gone.
ProError RenameRowsClear(std::vector<ShownRow>& shown) {
    for (ShownRow& row : shown) InputDelete(row);
    const ProError status = TableRowsClear(kRenameTable);
    if (!Failed(status)) shown.clear();
    return status;
}

ProError RenameRowsShow(std::vector<RowContent> contents, const char* input, std::vector<ShownRow>& shown) {
    ProError status = TableRowsNumber(kRenameTable, contents.size());
    shown.clear();
    for (std::size_t i = 0; i < contents.size() && !Failed(status); ++i) {
        const std::string number = std::to_string(i + 1);
        ShownRow row = {number, input + number, std::move(contents[i])};
        CellTextSet(kRenameTable, row.name, kNumber, row.content.number);
        CellTextSet(kRenameTable, row.name, kOldName, row.content.row.oldName);
        CellTextSet(kRenameTable, row.name, kType, row.content.row.type);
        CellTextSet(kRenameTable, row.name, kPlacements, row.content.placements);
        CellTextSet(kRenameTable, row.name, kDrawing, row.content.drawing);
        status = CellComponentSet(kRenameTable, row.name, kNewName, kTemplate, row.input);
        if (Failed(status)) continue;
        InputTextSet(kRenameDialog, row.input.c_str(), row.content.row.newName);
        shown.push_back(std::move(row));
    }
    return status;
}

std::vector<RowContent> RowsOf(const RenameTree& tree, const NameSet& folder, const std::wstring& filter) {
    const PrefixList excluded = PrefixListFromText(WithoutBlanks(filter));
    std::vector<RowContent> rows;
    for (const TreeModel& model : tree.models) {
        if (HasPrefix(excluded, model.name)) continue;
        const std::wstring number = std::to_wstring(rows.size() + 1);
        rows.push_back(RowOf({number, {model.name, model.type, model.name}}, tree, folder));
    }
    return rows;
}

RowContent RowOf(LoadedRow loaded, const RenameTree& tree, const NameSet& folder) {
    RowContent content = {std::move(loaded.number), std::move(loaded.row), {}, {}};
    const TreeModel* model = FindRow(tree, content.row);
    if (model != nullptr && model->placements > 0) content.placements = std::to_wstring(model->placements);
    if (folder.Has(content.row.oldName, kDrawingType)) content.drawing = kHasDrawing;
    return content;
}

ProError RenameRowsRead(std::span<const ShownRow> shown, std::vector<RenameRow>& rows) {
    rows.clear();
    rows.reserve(shown.size());
    for (const ShownRow& row : shown) {
        std::wstring name;
        if (row.input.empty()) return PRO_TK_E_NOT_FOUND;
        const ProError status = InputTextGet(kRenameDialog, row.input.c_str(), name);
        if (Failed(status)) return status;
        rows.push_back({row.content.row.oldName, row.content.row.type, std::move(name)});
    }
    return PRO_TK_NO_ERROR;
}

void NewNamesShow(std::span<const ShownRow> shown, std::span<const std::wstring> names) {
    for (std::size_t i = 0; i < shown.size() && i < names.size(); ++i)
        if (!shown[i].input.empty()) InputTextSet(kRenameDialog, shown[i].input.c_str(), names[i]);
}

ProError RenameRowsDrop(std::span<const std::size_t> places, std::vector<ShownRow>& shown) {
    TableNames gone;
    for (const std::size_t place : places) gone.push_back(shown[place].name);
    for (const std::size_t place : places) InputDelete(shown[place]);
    const ProError status = TableRowsDelete(kRenameTable, gone);
    if (Failed(status)) return status;
    for (auto place = places.rbegin(); place != places.rend(); ++place)
        shown.erase(shown.begin() + static_cast<std::ptrdiff_t>(*place));
    for (std::size_t i = 0; i < shown.size(); ++i) {
        const std::wstring number = std::to_wstring(i + 1);
        if (shown[i].content.number == number) continue;
        shown[i].content.number = number;
        CellTextSet(kRenameTable, shown[i].name, kNumber, number);
    }
    return status;
}

}  // namespace kv
