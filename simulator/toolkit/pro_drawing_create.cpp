#include <ProDrawing.h>

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <optional>
#include <string>

#include "simulator/cad/folder_index.h"
#include "simulator/memory/host_memory.h"
#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/drawing_call.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

namespace {

// The template by its name as the call gives it. One that had to be loaded does not stay in memory.
class Template {
public:
    Template(Session& host, std::wstring_view text) : host_(host) {
        const bool isPath = text.find_first_of(L"\\/") != std::wstring_view::npos;
        const auto parts = ParseModelFileName(std::wstring(text));
        const bool hasExtension = parts && parts->kind == ModelKind::kDrawing;
        if (isPath ? host.strict.pathAsNameRefused : hasExtension && host.strict.templateExtensionRefused)
            return;
        const std::wstring name = hasExtension ? parts->name : std::wstring(text);
        SimModel* present =
            host.models.Find(isPath ? std::filesystem::path(name).filename().wstring() : name, kKind);
        if (present != nullptr && !host.strict.templateFromMemory && !IsInReach(*present)) return;
        const ProError status =
            isPath ? host.models.Load(text, kKind, model_) : host.models.Retrieve(name, kKind, model_);
        if (status != PRO_TK_NO_ERROR) model_ = nullptr;
        isOwn_ = present == nullptr && model_ != nullptr;
    }
    Template(const Template&) = delete;
    Template& operator=(const Template&) = delete;
    ~Template() {
        if (isOwn_) host_.models.Erase(*model_);
    }
    const SimModel* Get() const { return model_; }

private:
    static constexpr ModelKind kKind = ModelKind::kDrawing;

    bool IsInReach(const SimModel& model) const {
        return model.origin.parent_path() == host_.models.WorkingDirectory();
    }

    Session& host_;
    SimModel* model_ = nullptr;
    bool isOwn_ = false;
};

// The model of that name and type, such as PRT in either letter case; loaded if it is not in memory.
SimModel* NamedModel(Session& host, const ProModel& named) {
    const auto name = TextInput(host, named.name, std::size(named.name));
    const auto type = TextInput(host, named.type, std::size(named.type));
    if (!name || !type) return nullptr;
    const std::optional<ModelKind> kind = KindOf(*type);
    SimModel* model = nullptr;
    if (!kind || host.models.Retrieve(*name, *kind, model) != PRO_TK_NO_ERROR) return nullptr;
    return model;
}

ProError Create(Session& host, std::wstring_view name, const Template& source, SimModel& model,
                SimModel*& drawing) {
    ModelStore& models = host.models;
    const ModelFile file = models.NewestFile(name, ModelKind::kDrawing, models.WorkingDirectory());
    if (models.Find(name, ModelKind::kDrawing) != nullptr || file.version != 0) return PRO_TK_E_FOUND;
    drawing = models.Create(name, ModelKind::kDrawing);
    if (drawing == nullptr) return PRO_TK_INVALID_NAME;
    if (host.strict.newDrawingJoinsModel) drawing->directory = model.directory;
    return drawing->DrawFrom(*source.Get(), model) ? PRO_TK_NO_ERROR : PRO_TK_DWGCREATE_ERRORS;
}

}  // namespace

ProError ProDrawingFromTmpltCreate(ProName new_name, ProName dwg_template, ProModel* new_model,
                                   ProDwgcreateOptions options, ProDrawing* drawing,
                                   ProDwgcreateErrs* errors) {
    static const CallSite kSite("ProDrawingFromTmpltCreate", {PRO_TK_E_FOUND, PRO_TK_E_NOT_FOUND,
                                                              PRO_TK_INVALID_NAME, PRO_TK_NO_PERMISSION});
    return Traced(
        kSite,
        {new_name, dwg_template, static_cast<const void*>(new_model), options, Out(drawing), Out(errors)},
        [&](Session& host) -> ProError {
            const auto name = TextInput(host, new_name, PRO_NAME_SIZE);
            const auto text = TextInput(host, dwg_template, PRO_NAME_SIZE);
            if (!name || !text || new_model == nullptr || drawing == nullptr || errors == nullptr)
                return PRO_TK_BAD_INPUTS;
            if (name->empty()) return PRO_TK_INVALID_NAME;
            const Template source(host, *text);
            SimModel* model = NamedModel(host, *new_model);
            if (source.Get() == nullptr || model == nullptr) return PRO_TK_E_NOT_FOUND;
            SimModel* created = nullptr;
            const ProError status = Create(host, *name, source, *model, created);
            if (created == nullptr) return status;
            *drawing = reinterpret_cast<ProDrawing>(created);
            *errors = static_cast<ProDwgcreateErrs>(host.drawingErrors.New(host.report));
            const bool isShown = (options & PRODWGCREATE_DISPLAY_DRAWING) != 0;
            if (isShown && status == PRO_TK_NO_ERROR) (void)host.desk.OwnWindowFor(*created);
            return status;
        });
}

ProError ProDwgcreateErrsFree(ProDwgcreateErrs* errors) {
    static const CallSite kSite("ProDwgcreateErrsFree", {PRO_TK_BAD_INPUTS}, true);
    return Traced(kSite, {static_cast<const void*>(errors)}, [&](Session& host) -> ProError {
        const bool isFreed = errors != nullptr && host.drawingErrors.Free(host.report, *errors);
        return isFreed ? PRO_TK_NO_ERROR : PRO_TK_BAD_INPUTS;
    });
}

ProError ProDrawingFormatAdd(ProDrawing drawing, int drawing_sheet, ProSolid solid, ProMdl format,
                             int format_sheet) {
    static const CallSite kSite("ProDrawingFormatAdd", {PRO_TK_BAD_INPUTS, PRO_TK_CANT_MODIFY});
    return Traced(
        kSite, {drawing, drawing_sheet, solid, format, format_sheet}, [&](Session& host) -> ProError {
            const void* handle = drawing == nullptr ? static_cast<const void*>(host.models.current) : drawing;
            SimModel* model = FindModelOf(host, handle, ModelKind::kDrawing);
            const SimModel* frame = FindModelOf(host, format, ModelKind::kFormat);
            if (model == nullptr || frame == nullptr) return PRO_TK_BAD_INPUTS;
            if (solid != nullptr && FindShown(host, *model, solid) == nullptr) return PRO_TK_BAD_INPUTS;
            const int sheet = SheetOrCurrent(*model, drawing_sheet);
            const int source = std::max(format_sheet, 1);
            if (!HasSheet(*model, sheet) || !HasSheet(*frame, source)) return PRO_TK_BAD_INPUTS;
            if (model->IsReadOnly()) return PRO_TK_CANT_MODIFY;
            if (host.strict.formatTakesOldTables)
                std::erase_if(model->Tables(), [sheet](const DrawingTable& table) {
                    return table.isFromFormat && table.sheet == sheet;
                });
            for (const DrawingTable& table : frame->Tables())
                if (table.sheet == source) model->AddTable(sheet, table.text, true);
            DrawingSheet& target = model->Sheets()[static_cast<std::size_t>(sheet) - 1];
            target.format = frame->Name();
            target.size = frame->Sheets()[static_cast<std::size_t>(source) - 1].size;
            model->SetModified(true);
            return PRO_TK_NO_ERROR;
        });
}

ProError ProDrawingFormatGet(ProDrawing drawing, int sheet, ProName format_name) {
    static const CallSite kSite("ProDrawingFormatGet",
                                {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND, PRO_TK_NOT_EXIST});
    return Traced(kSite, {drawing, sheet, Out(format_name, PRO_NAME_SIZE)}, [&](Session& host) -> ProError {
        const SimModel* model = FindModelOf(host, drawing, ModelKind::kDrawing);
        if (model == nullptr || format_name == nullptr || !HasSheet(*model, sheet)) return PRO_TK_BAD_INPUTS;
        const std::wstring& name = model->Sheets()[static_cast<std::size_t>(sheet) - 1].format;
        if (name.empty()) return PRO_TK_NOT_EXIST;
        return FillBuffer<wchar_t>(name, format_name, PRO_NAME_SIZE) ? PRO_TK_NO_ERROR : PRO_TK_GENERAL_ERROR;
    });
}
