#include "support/rename_check.h"

#include "simulator/cad/model_store.h"

namespace test {

static std::wstring Label(const std::wstring& name, sim::ModelKind kind) {
    return name + L"." + std::wstring(sim::ExtensionOf(kind));
}

static void AddMissing(const sim::SimModel& model, std::set<std::wstring>& missing) {
    const std::wstring start = Label(model.Name(), model.Kind()) + L" needs ";
    for (const sim::Feature& feature : model.Features())
        if (feature.component == nullptr && !feature.missingName.empty())
            missing.insert(start + Label(feature.missingName, feature.missingKind));
    for (const sim::DrawingView& view : model.Views())
        if (view.model == nullptr) missing.insert(start + view.missingModel);
    if (model.Kind() == sim::ModelKind::kManufacturing && model.MfgAssembly() == nullptr)
        missing.insert(start + L"its assembly");
}

std::set<std::wstring> MissingIn(const std::filesystem::path& folder) {
    std::set<std::wstring> missing;
    sim::ModelStore fresh(folder);
    for (const sim::ModelFile& file : fresh.NewestFiles(folder)) {
        sim::SimModel* model = nullptr;
        if (fresh.Retrieve(file.name, file.kind, model) != PRO_TK_NO_ERROR)
            missing.insert(Label(file.name, file.kind) + L" cannot be read");
    }
    for (const sim::SimModel* model : fresh.All()) AddMissing(*model, missing);
    return missing;
}

bool HasModelFile(const std::filesystem::path& folder, const std::wstring& model) {
    const auto parts = sim::ParseModelFileName(model);
    return parts && sim::ModelStore(folder).NewestFile(parts->name, parts->kind, folder).version > 0;
}

}  // namespace test
