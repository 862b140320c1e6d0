// The rename itself.
//
// In memory whatever refers to a model follows its rename; on disk nothing does. So all that may refer to a
// renamed model is in memory before the first rename, and is written again after the last.

#include "rename/rename_run.h"

#include <algorithm>
#include <optional>
#include <string>
#include <unordered_set>
#include <utility>
#include <vector>

#include <ProDrawing.h>

#include "base/file.h"
#include "base/host_handle.h"
#include "base/status.h"
#include "base/text.h"
#include "model/model_data.h"

namespace kv {

static constexpr wchar_t kStepOpenDrawing[] = L"打开工程图";
static constexpr wchar_t kStepTrace[] = L"写入撤销记录";
static constexpr wchar_t kStepRename[] = L"重命名模型";
static constexpr wchar_t kStepRenameDrawing[] = L"重命名工程图";
static constexpr wchar_t kStepSave[] = L"保存模型";
static constexpr wchar_t kStepSaveDrawing[] = L"保存工程图";
static constexpr wchar_t kStepSaveOwner[] = L"保存上级组件";

// A drawing in memory, and the model whose name it has.
struct NamedDrawing {
    ProMdl drawing = nullptr;
    std::wstring name;
    ProMdl saved = nullptr;  // renamed before the drawing was last saved
};

// A row with what it is about.
struct RowModels {
    ProMdl model = nullptr;
    std::optional<std::size_t> drawing;  // place among the drawings
    RunEntry problem = {};               // a failing status: the row is left alone
};

struct RenamePass {
    std::vector<NamedDrawing> drawings;
    std::unordered_set<std::wstring> drawingsTried;  // names, upper-cased
    std::unordered_set<ProMdl> renamed;
};

static RowModels RowModelsGet(const RenameTask& task, const RenameRow& row, RenamePass& pass);
static ProError DrawingOpen(const RenameTask& task, const std::wstring& name, RenamePass& pass);
static void OtherDrawingsOpen(const RenameTask& task, RenamePass& pass);
static void RowRename(const RenameTask& task, const RenameRow& row, RowModels& models, RenamePass& pass);
static void DrawingRename(const RenameTask& task, const RenameRow& row, ProMdl model, NamedDrawing& drawing);
static void TakeBack(const RenameRow& row, ProMdl model, NamedDrawing* drawing);
static ProError NameChange(const RenameTask& task, ProMdl model, const RenameChange& change);
static void NameRestore(ProMdl model, const std::wstring& name);
static ProError SaveFully(ProMdl model);
static bool HasFile(const WorkFolder& folder, const std::wstring& name, std::wstring_view type);
static void OwnersSave(const RenameTask& task, RenamePass& pass);
static void DrawingsSave(const RenameTask& task, RenamePass& pass);
static bool ShowsUnsaved(const NamedDrawing& drawing, const std::unordered_set<ProMdl>& renamed);

void ModelsRename(const RenameTask& task, std::span<const RenameRow> rows) {
    RenamePass pass;
    std::vector<RowModels> models;
    models.reserve(rows.size());
    for (const RenameRow& row : rows) models.push_back(RowModelsGet(task, row, pass));
    OtherDrawingsOpen(task, pass);
    for (std::size_t i = 0; i < rows.size(); ++i) {
        if (!task.run.Begin(rows[i].oldName)) continue;
        if (Failed(models[i].problem.status))
            task.run.Add(std::move(models[i].problem));
        else
            RowRename(task, rows[i], models[i], pass);
    }
    OwnersSave(task, pass);
    DrawingsSave(task, pass);
}

// ---- Into memory

static RowModels RowModelsGet(const RenameTask& task, const RenameRow& row, RenamePass& pass) {
    RowModels models;
    models.problem = {row.oldName, kStepFindModel, PRO_TK_E_NOT_FOUND};
    if (FindRow(task.tree, row) == nullptr) return models;
    models.problem.status = ModelRetrieveByType(row.oldName, FileTypeOf(TypeOf(row)), models.model);
    if (Failed(models.problem.status)) return models;
    const std::size_t place = pass.drawings.size();
    const ProError status = DrawingOpen(task, row.oldName, pass);
    // A part and an assembly of one name have one drawing, which goes with the first row.
    if (pass.drawings.size() > place) models.drawing = place;
    // A drawing that is there but stays on disk would look for the old name.
    if (Failed(status)) models.problem = {row.oldName, kStepOpenDrawing, status};
    return models;
}

// The drawing of a name, where there is one, into memory, once. Errors: of a drawing whose file is there.
static ProError DrawingOpen(const RenameTask& task, const std::wstring& name, RenamePass& pass) {
    if (!pass.drawingsTried.insert(UpperCase(name)).second) return PRO_TK_NO_ERROR;
    ProMdl drawing = nullptr;
    const ProError status = ModelRetrieveByType(name, PRO_MDLFILE_DRAWING, drawing);
    if (!Failed(status)) pass.drawings.push_back({drawing, name});
    return task.folder.names.Has(name, kDrawingType) ? status : PRO_TK_NO_ERROR;
}

// Drawings of models in no row may show renamed ones.
static void OtherDrawingsOpen(const RenameTask& task, RenamePass& pass) {
    std::vector<std::wstring> names;
    for (const TreeModel& model : task.tree.models) names.push_back(model.name);
    std::wstring current;
    if (!Failed(ModelNameGet(task.current, current))) names.push_back(current);
    for (const std::wstring& name : names) {
        if (!task.folder.names.Has(name, kDrawingType)) continue;
        const ProError status = DrawingOpen(task, name, pass);
        if (Failed(status)) task.run.Add({name, kStepOpenDrawing, status});
    }
}

// ---- One row

static void RowRename(const RenameTask& task, const RenameRow& row, RowModels& models, RenamePass& pass) {
    RunEntry entry = {row.oldName, kStepRename};
    entry.file = row.newName;
    entry.status = NameChange(task, models.model, {row.oldName, TypeOf(row), row.newName});
    if (entry.status == PRO_TK_CANT_WRITE) entry.step = kStepTrace;
    if (Failed(entry.status)) {
        task.run.Add(std::move(entry));
        return;
    }
    NamedDrawing* drawing = models.drawing ? &pass.drawings[*models.drawing] : nullptr;
    if (drawing != nullptr) DrawingRename(task, row, models.model, *drawing);
    const ProError saved = SaveFully(models.model);
    if (Failed(saved) && !HasFile(task.folder, row.newName, TypeOf(row))) {
        // In memory alone the new name would send all assemblies after a file that is not there.
        TakeBack(row, models.model, drawing);
        task.run.Add({row.oldName, kStepSave, saved});
        return;
    }
    pass.renamed.insert(models.model);
    task.run.Add(std::move(entry));
    if (Failed(saved)) task.run.Add({row.newName, kStepSave, saved});
}

// A drawing that has the new name already keeps it, and this one keeps its own. It is saved all the same: it
// shows the renamed model.
static void DrawingRename(const RenameTask& task, const RenameRow& row, ProMdl model, NamedDrawing& drawing) {
    ProError status = PRO_TK_E_FOUND;
    if (!task.folder.names.Has(row.newName, kDrawingType))
        status = NameChange(task, drawing.drawing, {row.oldName, kDrawingType, row.newName});
    if (Failed(status)) {
        task.run.Add({row.oldName, kStepRenameDrawing, status});
    } else {
        drawing.name = row.newName;
        task.folder.names.Add(row.newName, kDrawingType);
    }
    status = SaveFully(drawing.drawing);
    if (Failed(status))
        task.run.Add({drawing.name, kStepSaveDrawing, status});
    else
        drawing.saved = model;
}

static void TakeBack(const RenameRow& row, ProMdl model, NamedDrawing* drawing) {
    NameRestore(model, row.oldName);
    if (drawing == nullptr) return;
    NameRestore(drawing->drawing, row.oldName);
    drawing->name = row.oldName;
    drawing->saved = nullptr;
    (void)SaveFully(drawing->drawing);
}

// Nothing is renamed without a trace of it. PRO_TK_CANT_WRITE: the reverse table takes no row.
static ProError NameChange(const RenameTask& task, ProMdl model, const RenameChange& change) {
    ProMdlName name;
    ProError status = CopyText(change.to, name);
    if (Failed(status)) return status;
    if (Failed(task.table.Add(change.to, change.type, change.from))) return PRO_TK_CANT_WRITE;
    status = ProMdlnameRename(model, name);
    task.table.Mark(Failed(status) ? kStateFailed : kStateDone);
    return status;
}

static void NameRestore(ProMdl model, const std::wstring& name) {
    ProMdlName text;
    if (!Failed(CopyText(name, text))) (void)ProMdlnameRename(model, text);
}

// One refusal is not taken for an answer: other files count on this one.
static ProError SaveFully(ProMdl model) {
    const ProError status = ProMdlSave(model);
    return Failed(status) ? ProMdlSave(model) : status;
}

static bool HasFile(const WorkFolder& folder, const std::wstring& name, std::wstring_view type) {
    return !FileNamesIn(folder.path, (name + L"." + std::wstring(type) + L".*").c_str()).empty();
}

// ---- What refers to renamed models

static void OwnersSave(const RenameTask& task, RenamePass& pass) {
    if (pass.renamed.empty()) return;
    std::vector<std::size_t> changed;
    for (std::size_t i = 0; i < task.tree.models.size(); ++i)
        if (pass.renamed.contains(task.tree.models[i].model)) changed.push_back(i);
    const auto save = [&](ProMdl model, const std::wstring& name) {
        task.run.Add({name, kStepSaveOwner, SaveFully(model)});
    };
    for (const std::size_t owner : OwnersOf(task.tree.ties, changed))
        save(task.tree.models[owner].model, task.tree.models[owner].name);
    const bool isAbove = task.current != task.tree.models.front().model;
    std::wstring name;
    if (isAbove && !Failed(ModelNameGet(task.current, name))) save(task.current, name);
}

static void DrawingsSave(const RenameTask& task, RenamePass& pass) {
    if (pass.renamed.empty()) return;
    for (const NamedDrawing& drawing : pass.drawings) {
        if (!ShowsUnsaved(drawing, pass.renamed)) continue;
        task.run.Add({drawing.name, kStepSaveDrawing, SaveFully(drawing.drawing)});
    }
}

// Whether a drawing shows a renamed model other than the one that it was saved with. One that cannot be asked
// is taken to.
static bool ShowsUnsaved(const NamedDrawing& drawing, const std::unordered_set<ProMdl>& renamed) {
    HostArray<ProSolid> solids;
    const ProError status =
        solids.Received(ProDrawingSolidsCollect(static_cast<ProDrawing>(drawing.drawing), solids.Receive()));
    if (status == PRO_TK_E_NOT_FOUND) return false;
    if (Failed(status)) return true;
    return std::ranges::any_of(
        Items(solids), [&](ProSolid solid) { return solid != drawing.saved && renamed.contains(solid); });
}

// ---- The way back

// A change with its model in memory.
struct BackStep {
    const RenameChange* change;
    ProMdl model = nullptr;
    bool done = false;
};

static void BackRename(const RenameTask& task, BackStep& step, RenamePass& pass) {
    const RenameChange& change = *step.change;
    RunEntry entry = {change.from, kStepRename};
    entry.file = change.to;
    if (step.model == nullptr) {
        entry.step = kStepFindModel;
        entry.status = PRO_TK_E_NOT_FOUND;
    } else if (IsInSession(change.to, change.type)) {
        entry.status = PRO_TK_E_FOUND;
    } else {
        entry.status = NameChange(task, step.model, change);
    }
    step.done = !Failed(entry.status);
    if (step.done) pass.renamed.insert(step.model);
    task.run.Add(std::move(entry));
}

// All are in memory before the first is renamed, and all are renamed before the first is saved: what one
// refers to follows, in whichever order they stand.
void ModelsRenameBack(const RenameTask& task, std::span<const RenameChange> changes) {
    RenamePass pass;
    std::vector<BackStep> steps;
    for (const RenameChange& change : changes) {
        BackStep step = {&change};
        if (Failed(ModelRetrieveByType(change.from, FileTypeOf(change.type), step.model)))
            step.model = nullptr;
        steps.push_back(step);
    }
    OtherDrawingsOpen(task, pass);
    for (BackStep& step : steps)
        if (task.run.Begin(step.change->from)) BackRename(task, step, pass);
    for (const BackStep& step : steps) {
        const ProError saved = step.done ? SaveFully(step.model) : PRO_TK_NO_ERROR;
        if (Failed(saved)) task.run.Add({step.change->to, kStepSave, saved});
    }
    OwnersSave(task, pass);
    DrawingsSave(task, pass);
}

}  // namespace kv
