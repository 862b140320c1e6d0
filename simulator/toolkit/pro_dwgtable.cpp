#include <ProDwgtable.h>

#include <algorithm>
#include <vector>

#include <ProDrawing.h>

#include "simulator/memory/host_memory.h"
#include "simulator/report/utf8.h"
#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

namespace {

constexpr int kOnlySegment = -1;

// Null for NULL and, with a violation, for an item that is no table of its drawing.
const DrawingTable* FindTable(Session& host, const ProDwgtable* item) {
    if (item == nullptr) return nullptr;
    const SimModel* drawing = FindModelOf(host, item->owner, ModelKind::kDrawing);
    if (drawing == nullptr) return nullptr;
    const auto found = std::ranges::find(drawing->Tables(), item->id, &DrawingTable::id);
    if (item->type == PRO_DRAW_TABLE && found != drawing->Tables().end()) return &*found;
    host.report.Violation("is given a table that " + Utf8(drawing->Name()) + " does not have");
    return nullptr;
}

}  // namespace

ProError ProDrawingTablesCollect(ProDrawing drawing, ProDwgtable** tables) {
    static const CallSite kSite("ProDrawingTablesCollect", {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {drawing, Out(tables)}, [&](Session& host) -> ProError {
        SimModel* model = FindModelOf(host, drawing, ModelKind::kDrawing);
        if (model == nullptr || tables == nullptr) return PRO_TK_BAD_INPUTS;
        if (model->Tables().empty()) return PRO_TK_E_NOT_FOUND;
        std::vector<ProDwgtable> found;
        for (const DrawingTable& table : model->Tables()) found.push_back({PRO_DRAW_TABLE, table.id, model});
        *tables = NewHostArray(host.memory, found);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProDwgtableIsFromFormat(ProDwgtable* table, ProBoolean* is_from_format) {
    static const CallSite kSite("ProDwgtableIsFromFormat", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {table, Out(is_from_format)}, [&](Session& host) -> ProError {
        const DrawingTable* found = FindTable(host, table);
        if (found == nullptr || is_from_format == nullptr) return PRO_TK_BAD_INPUTS;
        *is_from_format = found->isFromFormat ? PRO_B_TRUE : PRO_B_FALSE;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProDwgtableSegCount(ProDwgtable* table, int* n_segments) {
    static const CallSite kSite("ProDwgtableSegCount", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {table, n_segments}, [&](Session& host) -> ProError {
        if (n_segments == nullptr) return PRO_TK_BAD_INPUTS;
        const DrawingTable* found = FindTable(host, table);
        *n_segments = found == nullptr ? -1 : 1;
        return found == nullptr ? PRO_TK_BAD_INPUTS : PRO_TK_NO_ERROR;
    });
}

ProError ProDwgtableSegSheetGet(ProDwgtable* table, int segment, int* sheet) {
    static const CallSite kSite("ProDwgtableSegSheetGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {table, segment, Out(sheet)}, [&](Session& host) -> ProError {
        const DrawingTable* found = FindTable(host, table);
        if (found == nullptr || sheet == nullptr || segment != kOnlySegment) return PRO_TK_BAD_INPUTS;
        *sheet = found->sheet;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProDwgtableDelete(ProDwgtable* table, int display) {
    static const CallSite kSite("ProDwgtableDelete", {PRO_TK_BAD_INPUTS, PRO_TK_CANT_MODIFY});
    return Traced(kSite, {table, display}, [&](Session& host) -> ProError {
        if (FindTable(host, table) == nullptr) return PRO_TK_BAD_INPUTS;
        SimModel* drawing = host.models.FromHandle(table->owner);
        if (drawing->IsReadOnly()) return PRO_TK_CANT_MODIFY;
        std::erase_if(drawing->Tables(), [&](const DrawingTable& one) { return one.id == table->id; });
        drawing->SetModified(true);
        return PRO_TK_NO_ERROR;
    });
}
