#include "simulator/toolkit/support/arguments.h"

#include <algorithm>

#include "simulator/memory/host_memory.h"
#include "simulator/report/utf8.h"

namespace sim {

SimModel* FindModel(Session& host, const void* handle) {
    if (handle == nullptr) {
        host.report.Violation("is given NULL, which is no model");
        return nullptr;
    }
    SimModel* model = host.models.FromHandle(handle);
    if (model == nullptr) {
        host.report.Violation("is given a handle that is no model in memory");
        return nullptr;
    }
    if (!host.desk.IsDoomed(*model)) return model;
    host.report.Violation("is given the model " + Utf8(model->Name()) + " after it was erased");
    return nullptr;
}

SimModel* FindModelOf(Session& host, const void* handle, ModelKind kind) {
    SimModel* model = FindModel(host, handle);
    if (model == nullptr || model->Kind() == kind) return model;
    host.report.Violation("is given the model " + Utf8(model->Name()) + ", which is of another type");
    return nullptr;
}

SimModel* FindSolid(Session& host, const void* handle) {
    SimModel* model = FindModel(host, handle);
    if (model == nullptr || model->Kind() == ModelKind::kPart || model->Kind() == ModelKind::kAssembly)
        return model;
    host.report.Violation("is given " + Utf8(model->Name()) +
                          ", which is neither a part nor an assembly, as a solid");
    return nullptr;
}

const Feature* FindFeature(Session& host, const ProModelitem* item) {
    if (item == nullptr) return nullptr;
    if (item->type != PRO_FEATURE || item->owner == nullptr) {
        host.report.Violation("is given an item that is no feature");
        return nullptr;
    }
    SimModel* owner = FindModel(host, item->owner);
    if (owner == nullptr) return nullptr;
    const Feature* feature = owner->FindFeature(item->id);
    if (feature == nullptr)
        host.report.Violation("is given feature " + std::to_string(item->id) + ", which " +
                              Utf8(owner->Name()) + " does not have");
    return feature;
}

std::optional<std::wstring_view> TextInput(Session& host, const wchar_t* text, std::size_t size) {
    if (text == nullptr) return std::nullopt;
    const wchar_t* end = std::find(text, text + size, L'\0');
    if (end == text + size) {
        host.report.Violation("is given a text that does not end within " + std::to_string(size) +
                              " characters");
        return std::nullopt;
    }
    return std::wstring_view(text, static_cast<std::size_t>(end - text));
}

std::optional<ModelKind> KindFromType(int type) {
    for (const ModelKind kind : {ModelKind::kAssembly, ModelKind::kPart, ModelKind::kDrawing,
                                 ModelKind::kFormat, ModelKind::kManufacturing})
        if (static_cast<int>(kind) == type) return kind;
    return std::nullopt;
}

void CopyMatrix(const Matrix& from, ProMatrix to) {
    for (std::size_t row = 0; row < 4; ++row) std::ranges::copy(from[row], to[row]);
}

Matrix MatrixFrom(ProMatrix matrix) {
    Matrix copy;
    for (std::size_t row = 0; row < 4; ++row) std::copy_n(matrix[row], 4, copy[row].begin());
    return copy;
}

const Pick* FindPick(Session& host, ProSelection selection) {
    if (selection == nullptr) return nullptr;
    const Pick* pick = host.desk.FindSelection(selection);
    if (pick == nullptr) host.report.Violation("is given a selection that does not exist, or no longer");
    return pick;
}

SimModel* RootOf(Session& host, const Pick& pick) {
    if (pick.isWithoutPath) return nullptr;
    return pick.root == nullptr ? host.desk.Top() : host.models.FromHandle(pick.root);
}

std::optional<PathEnd> FindPathEnd(SimModel& top, const int* ids, int count) {
    PathEnd end = {&top, IdentityMatrix()};
    for (int level = 0; level < count; ++level) {
        const Feature* feature = end.model->FindFeature(ids[level]);
        if (feature == nullptr || feature->component == nullptr) return std::nullopt;
        end.placement = Product(feature->placement, end.placement);
        end.model = feature->component;
    }
    return end;
}

std::optional<PathEnd> FindPathEnd(Session& host, const ProAsmcomppath* path) {
    if (path == nullptr) return std::nullopt;
    if (path->table_num < 0 || path->table_num > PRO_MAX_ASSEM_LEVEL) {
        host.report.Violation("is given a component path that was never filled");
        return std::nullopt;
    }
    SimModel* top = FindSolid(host, path->owner);
    if (top == nullptr) return std::nullopt;
    return FindPathEnd(*top, path->comp_id_table, path->table_num);
}

bool FillPath(const std::filesystem::path& path, bool withSeparator, wchar_t* buffer) {
    std::wstring text = path.wstring();
    if (withSeparator && !text.ends_with(L'\\')) text += L'\\';
    return FillBuffer<wchar_t>(text, buffer, PRO_PATH_SIZE);
}

}  // namespace sim
