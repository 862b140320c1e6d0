// Model files: JSON in UTF-8, one model a file.

#pragma once

#include <filesystem>
#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "simulator/cad/model.h"

namespace sim {

// "file:line: what was expected" for a text that is no JSON, "file: /place: what was expected" for content
// that does not fit.
class ModelFileError : public std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Another model that a file names.
struct ModelTie {
    enum class Role { kComponent, kReference, kView, kShownModel, kModelScale, kMfgAssembly, kGeneric };
    Role role;
    std::size_t position;  // of the feature, view or scale in its model
    std::wstring name;
    ModelKind kind;
};

struct ModelFileContent {
    std::unique_ptr<SimModel> model;
    std::vector<ModelTie> ties;  // not yet tied
};

// Reads a model of this kind. Its name is `name`, in the letter case of the file's own name entry. Throws
// ModelFileError; unknown keys, wrong types and another name are errors.
ModelFileContent ReadModelFile(const std::filesystem::path& file, std::wstring_view name, ModelKind kind);

// Ties the model to what its file names; `other` is null when that cannot be had. A component then becomes a
// suppressed feature without a model, and the file's entry is kept for the next save.
void TieModels(SimModel& model, const ModelTie& tie, SimModel* other);

// Where in its file the model names the other one: "/features/2/model".
std::string PlaceOf(const ModelTie& tie);

// The file's text. Throws ModelFileError for a model that no file can hold.
std::string ModelFileText(const SimModel& model);

// `name` in lower case, as the host writes file names.
std::wstring LowerName(std::wstring_view name);

}  // namespace sim
