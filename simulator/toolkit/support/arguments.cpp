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

SimModel* FindPathTop(Session& host, const ProAsmcomppath& path) {
    if (path.table_num >= 0 && path.table_num <= PRO_MAX_ASSEM_LEVEL) return FindSolid(host, path.owner);
    host.report.Violation("is given a component path that was never filled");
    return nullptr;
}

SimModel* ModelAlong(SimModel& top, const std::vector<int>& ids) {
    SimModel* model = &top;
    for (const int id : ids) {
        const Feature* feature = model->FindFeature(id);
        if (feature == nullptr || feature->component == nullptr) return nullptr;
        model = feature->component;
    }
    return model;
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

bool FillPath(const std::filesystem::path& path, bool withSeparator, wchar_t* buffer) {
    std::wstring text = path.wstring();
    if (withSeparator && !text.ends_with(L'\\')) text += L'\\';
    return FillBuffer<wchar_t>(text, buffer, PRO_PATH_SIZE);
}

}  // namespace sim
