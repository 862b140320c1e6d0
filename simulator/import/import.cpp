#include "simulator/import/import.h"

#include <algorithm>
#include <optional>
#include <system_error>
#include <utility>

#include <windows.h>

#include "simulator/cad/model_store.h"
#include "simulator/cad/model_words.h"
#include "simulator/import/csv_structure.h"
#include "simulator/import/import_error.h"
#include "simulator/import/model_names.h"
#include "simulator/import/step_structure.h"
#include "simulator/import/structure.h"
#include "simulator/report/utf8.h"

namespace sim {

namespace fs = std::filesystem;

namespace {

// What a workspace may reasonably hold: a slip in a column of numbers fills no disk.
constexpr std::size_t kMostComponents = 2'000'000;

// A folder beside the workspace, which goes with the object unless it has become the workspace.
class FolderInTheMaking {
public:
    explicit FolderInTheMaking(fs::path workspace) : workspace_(std::move(workspace)) {
        std::error_code error;
        if (fs::exists(workspace_, error) && !fs::is_empty(workspace_, error))
            throw ImportError(Utf8(workspace_.wstring()) + " is not empty: an import makes a new folder");
        if (workspace_.has_parent_path()) fs::create_directories(workspace_.parent_path(), error);
        folder_ = workspace_;
        folder_ += L".import-" + std::to_wstring(GetCurrentProcessId());
        if (!fs::create_directory(folder_, error))
            throw ImportError("cannot make the folder " + Utf8(folder_.wstring()));
    }
    ~FolderInTheMaking() {
        std::error_code error;
        if (!folder_.empty()) fs::remove_all(folder_, error);
    }
    FolderInTheMaking(const FolderInTheMaking&) = delete;
    FolderInTheMaking& operator=(const FolderInTheMaking&) = delete;

    const fs::path& Path() const { return folder_; }

    void BecomeWorkspace() {
        std::error_code error;
        // Only an empty one can be taken away; what has come into it meanwhile stays.
        const bool wasThere = fs::remove(workspace_, error);
        if (MoveFileW(folder_.c_str(), workspace_.c_str()) == 0) {
            if (wasThere) fs::create_directory(workspace_, error);
            throw ImportError("cannot make the folder " + Utf8(workspace_.wstring()));
        }
        folder_.clear();
    }

private:
    fs::path workspace_;
    fs::path folder_;
};

class WorkspaceMaker {
public:
    WorkspaceMaker(const ImportedStructure& structure, const fs::path& folder)
        : structure_(structure), models_(folder) {
        report_.notes = structure.notes;
    }

    ImportReport Make() {
        const std::vector<std::size_t> tops = TopProducts(structure_);
        for (const ImportedProduct& product : structure_.products) made_.push_back(&MakeModel(product));
        for (std::size_t i = 0; i < made_.size(); ++i) PlaceComponents(i);
        for (const std::size_t top : tops) {
            // With everything below it.
            if (models_.Save(*made_[top]) != PRO_TK_NO_ERROR)
                throw ImportError("cannot write into " + Utf8(models_.WorkingDirectory().wstring()));
            report_.tops.push_back(
                Utf8(UpperName(made_[top]->Name() + L"." + std::wstring(ExtensionOf(made_[top]->Kind())))));
        }
        report_.models = made_.size();
        return std::move(report_);
    }

private:
    void Note(const ImportedProduct& product, const std::string& what) {
        report_.notes.push_back("line " + std::to_string(product.line) + ": " + what);
    }

    SimModel& MakeModel(const ImportedProduct& product) {
        const std::wstring name = names_.Take(product.name, product.kind);
        if (name != product.name) Note(product, "\"" + Utf8(product.name) + "\" is called " + Utf8(name));
        SimModel* model = models_.Create(name, product.kind, product.subtype);
        if (model == nullptr) throw ImportError(structure_.file, product.line, "a name for a model");
        if (!product.units.empty()) (void)model->SetPrincipalUnits(product.units, false);
        for (const auto& [parameter, value] : product.parameters) {
            model->SetParameter(parameter, value.substr(0, kLongestText));
            if (value.size() > kLongestText)
                Note(product, "the text of " + Utf8(parameter) + " of " + Utf8(name) + " is cut after " +
                                  std::to_string(kLongestText) + " characters");
        }
        return *model;
    }

    void PlaceComponents(std::size_t product) {
        for (const ImportedComponent& component : structure_.products[product].components) {
            report_.components += static_cast<std::size_t>(component.count);
            if (report_.components > kMostComponents)
                throw ImportError(structure_.file, structure_.products[product].line,
                                  "at most " + std::to_string(kMostComponents) + " components");
            Placing how;
            how.placement = component.placement;
            for (int i = 0; i < component.count; ++i) made_[product]->Place(*made_[component.product], how);
        }
    }

    const ImportedStructure& structure_;
    ModelStore models_;
    ModelNames names_;
    std::vector<SimModel*> made_;
    ImportReport report_;
};

ImportedStructure ReadStructureOf(const fs::path& file) {
    const std::wstring extension = UpperName(file.extension().wstring());
    if (extension == L".CSV") return ReadCsvStructure(file);
    if (extension == L".STP" || extension == L".STEP" || extension == L".P21") return ReadStepStructure(file);
    throw ImportError(Utf8(file.filename().wstring()) +
                      ": expected a STEP file (.stp, .step, .p21) or a .csv");
}

}  // namespace

ImportReport ImportWorkspace(const fs::path& file, const fs::path& workspace) {
    const ImportedStructure structure = ReadStructureOf(file);
    FolderInTheMaking folder(workspace);
    ImportReport report = WorkspaceMaker(structure, folder.Path()).Make();
    folder.BecomeWorkspace();
    return report;
}

}  // namespace sim
