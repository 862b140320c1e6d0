#include "simulator/cad/model.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <utility>

#include "simulator/report/utf8.h"

namespace sim {

Matrix IdentityMatrix() {
    return {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}}};
}

Matrix TranslationMatrix(double x, double y, double z) {
    return {{{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {x, y, z, 1}}};
}

Matrix Product(const Matrix& first, const Matrix& second) {
    Matrix product{};
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t column = 0; column < 4; ++column)
            for (std::size_t k = 0; k < 4; ++k) product[row][column] += first[row][k] * second[k][column];
    return product;
}

Vec3 Transformed(const Vec3& point, const Matrix& matrix) {
    const auto at = [&](std::size_t column) {
        return point.x * matrix[0][column] + point.y * matrix[1][column] + point.z * matrix[2][column] +
               matrix[3][column];
    };
    return {at(0), at(1), at(2)};
}

std::optional<Matrix> Inverse(const Matrix& m) {
    // The 3x3 part by its cofactors, then the shift turned back.
    Matrix inverse = IdentityMatrix();
    double determinant = 0;
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t j = 0; j < 3; ++j) {
            const std::size_t a = (i + 1) % 3, b = (i + 2) % 3, c = (j + 1) % 3, d = (j + 2) % 3;
            inverse[j][i] = m[a][c] * m[b][d] - m[a][d] * m[b][c];
        }
        determinant +=
            m[0][i] * (m[1][(i + 1) % 3] * m[2][(i + 2) % 3] - m[1][(i + 2) % 3] * m[2][(i + 1) % 3]);
    }
    if (std::abs(determinant) < 1e-12) return std::nullopt;
    for (std::size_t i = 0; i < 3; ++i)
        for (std::size_t j = 0; j < 3; ++j) inverse[i][j] /= determinant;
    const Vec3 shift = Transformed({-m[3][0], -m[3][1], -m[3][2]}, inverse);
    inverse[3] = {shift.x, shift.y, shift.z, 1};
    return inverse;
}

SimModel::SimModel(std::wstring name, ModelKind kind, ModelSubtype subtype)
    : name_(std::move(name)), kind_(kind), subtype_(subtype) {
    if (subtype_ != ModelSubtype::kNone) return;
    if (kind_ == ModelKind::kPart) subtype_ = ModelSubtype::kSolidPart;
    if (kind_ == ModelKind::kAssembly) subtype_ = ModelSubtype::kDesignAssembly;
}

// ---- Features

SimModel& SimModel::Place(SimModel& component, int times) {
    for (int i = 0; i < times; ++i) Place(component, Placing{});
    return *this;
}

SimModel& SimModel::Place(SimModel& component, const Placing& how) {
    Feature feature;
    feature.component = &component;
    feature.status = how.status;
    feature.statusFlags = how.statusFlags;
    feature.isVisible = how.isVisible;
    feature.isHidden = how.isHidden;
    feature.placement = how.placement;
    return InsertFeature(std::move(feature));
}

SimModel& SimModel::PlaceMissing(std::wstring_view name) {
    Feature feature;
    feature.missingName = name;
    feature.status = kFeatureSuppressed;
    return InsertFeature(std::move(feature));
}

SimModel& SimModel::AddFeature(int type) {
    Feature feature;
    feature.type = type;
    return InsertFeature(std::move(feature));
}

SimModel& SimModel::InsertFeature(Feature feature) {
    feature.id = TakeId();
    InsertFeatureWithId(std::move(feature));
    modified_ = true;
    return *this;
}

void SimModel::InsertFeatureWithId(Feature feature) {
    if (feature.id != static_cast<int>(features_.size()) + 1) featureIndex_[feature.id] = features_.size();
    if (feature.component != nullptr) Use(feature.component);
    features_.push_back(std::move(feature));
    ++structureChanges_;
}

Feature* SimModel::FindFeature(int id) {
    const auto position = static_cast<std::size_t>(id) - 1;
    if (position < features_.size() && features_[position].id == id) return &features_[position];
    const auto found = featureIndex_.find(id);
    return found == featureIndex_.end() ? nullptr : &features_[found->second];
}

// ---- Parameters

void SimModel::IndexParameters() {
    parameterIndex_.clear();
    for (std::size_t i = 0; i < parameters_.size(); ++i) parameterIndex_[UpperName(parameters_[i].name)] = i;
}

SimModel& SimModel::SetParameter(std::wstring_view name, ParameterValue value) {
    modified_ = true;
    if (ModelParameter* parameter = FindParameter(name)) {
        parameter->value = std::move(value);
        return *this;
    }
    parameterIndex_[UpperName(name)] = parameters_.size();
    parameters_.push_back({std::wstring(name), std::move(value)});
    return *this;
}

SimModel& SimModel::DriveByRelation(std::wstring_view name) {
    if (ModelParameter* parameter = FindParameter(name)) parameter->relationDriven = true;
    return *this;
}

SimModel& SimModel::LockParameter(std::wstring_view name) {
    if (ModelParameter* parameter = FindParameter(name)) parameter->locked = true;
    return *this;
}

bool SimModel::RemoveParameter(std::wstring_view name) {
    const auto found = parameterIndex_.find(UpperName(name));
    if (found == parameterIndex_.end()) return false;
    parameters_.erase(parameters_.begin() + static_cast<std::ptrdiff_t>(found->second));
    IndexParameters();
    modified_ = true;
    return true;
}

ModelParameter* SimModel::FindParameter(std::wstring_view name) {
    return const_cast<ModelParameter*>(std::as_const(*this).FindParameter(name));
}

const ModelParameter* SimModel::FindParameter(std::wstring_view name) const {
    const auto found = parameterIndex_.find(UpperName(name));
    return found == parameterIndex_.end() ? nullptr : &parameters_[found->second];
}

std::wstring SimModel::Parameter(std::wstring_view name) const {
    const ModelParameter* parameter = FindParameter(name);
    if (parameter == nullptr) return {};
    if (const auto* text = std::get_if<std::wstring>(&parameter->value)) return *text;
    if (const auto* number = std::get_if<int>(&parameter->value)) return std::to_wstring(*number);
    if (const auto* truth = std::get_if<bool>(&parameter->value)) return *truth ? L"YES" : L"NO";
    char real[32];
    std::snprintf(real, sizeof real, "%g", std::get<double>(parameter->value));
    return Wide(real);
}

// ---- Geometry

SimModel& SimModel::AddSurface(const Box& box) {
    surfaces_.push_back(std::make_unique<SurfaceItem>(SurfaceItem{TakeId(), box}));
    ++structureChanges_;
    modified_ = true;
    return *this;
}

SurfaceItem* SimModel::FindSurface(int id) {
    const auto hasId = [id](const std::unique_ptr<SurfaceItem>& surface) { return surface->id == id; };
    const auto found = std::ranges::find_if(surfaces_, hasId);
    return found == surfaces_.end() ? nullptr : found->get();
}

SimModel& SimModel::AddBlock(double x, double y, double z) {
    AddSurface({{0, 0, 0}, {0, y, z}});
    AddSurface({{x, 0, 0}, {x, y, z}});
    AddSurface({{0, 0, 0}, {x, 0, z}});
    AddSurface({{0, y, 0}, {x, y, z}});
    AddSurface({{0, 0, 0}, {x, y, 0}});
    return AddSurface({{0, 0, z}, {x, y, z}});
}

SimModel& SimModel::AddCoordinateSystem(std::wstring_view name, const Matrix& placement) {
    coordinateSystems_.push_back({TakeId(), std::wstring(name), placement});
    modified_ = true;
    return *this;
}

SimModel& SimModel::SetBodyCount(int bodies) {
    bodies_ = bodies;
    modified_ = true;
    return *this;
}

// ---- Drawings and manufacturing models

SimModel& SimModel::AddSheet(std::wstring_view size) {
    DrawingSheet sheet;
    sheet.size = size;
    sheets_.push_back(std::move(sheet));
    modified_ = true;
    return *this;
}

SimModel& SimModel::AddView(SimModel& model, int sheet) {
    DrawingView view;
    view.id = TakeId();
    view.sheet = sheet;
    view.model = &model;
    views_.push_back(std::move(view));
    return AddShownModel(model);
}

SimModel& SimModel::AddMissingView(std::wstring_view model, int sheet) {
    DrawingView view;
    view.id = TakeId();
    view.sheet = sheet;
    view.missingModel = model;
    views_.push_back(std::move(view));
    modified_ = true;
    return *this;
}

SimModel& SimModel::AddShownModel(SimModel& model) {
    if (std::ranges::find(shownModels_, &model) == shownModels_.end()) shownModels_.push_back(&model);
    Use(&model);
    modified_ = true;
    return *this;
}

SimModel& SimModel::SetMfgAssembly(SimModel& assembly) {
    mfgAssembly_ = &assembly;
    Use(&assembly);
    modified_ = true;
    return *this;
}

// ---- Family tables

SimModel& SimModel::MakeInstanceOf(SimModel& generic) {
    generic_ = &generic;
    missingGeneric_.clear();
    Use(&generic);
    for (const std::wstring& column : generic.familyColumns_) InheritFrom(generic, column);
    modified_ = true;
    return *this;
}

SimModel& SimModel::LoseGeneric(std::wstring_view name) {
    generic_ = nullptr;
    missingGeneric_ = std::wstring(name) + (kind_ == ModelKind::kAssembly ? L".asm" : L".prt");
    return *this;
}

bool SimModel::HasFamilyColumn(std::wstring_view parameter) const {
    const std::wstring wanted = UpperName(parameter);
    return std::ranges::any_of(familyColumns_,
                               [&](const std::wstring& column) { return UpperName(column) == wanted; });
}

bool SimModel::AddFamilyColumn(std::wstring_view parameter) {
    if (!HasParameter(parameter) || HasFamilyColumn(parameter)) return false;
    familyColumns_.emplace_back(parameter);
    modified_ = true;
    return true;
}

void SimModel::InheritFrom(const SimModel& generic, std::wstring_view parameter) {
    const ModelParameter* given = generic.FindParameter(parameter);
    if (given != nullptr && !HasParameter(parameter)) SetParameter(given->name, given->value);
}

SimModel& SimModel::SetReadOnly(bool on) {
    readOnly_ = on;
    return *this;
}

// ---- Ties to other models

void SimModel::Use(SimModel* below) {
    if (below == this || !belowSet_.insert(below).second) return;
    below_.push_back(below);
    ++below->users_;
}

void SimModel::ReleaseModelsBelow() {
    for (SimModel* model : below_) --model->users_;
    below_.clear();
    belowSet_.clear();
    for (Feature& feature : features_) feature.component = nullptr;
    views_.clear();
    shownModels_.clear();
    mfgAssembly_ = nullptr;
    generic_ = nullptr;
}

}  // namespace sim
