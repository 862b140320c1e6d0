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

namespace {

// The box around a box that was turned and shifted.
Box Moved(const Box& box, const Matrix& placement) {
    Box moved;
    for (unsigned corner = 0; corner < 8; ++corner) {
        const Vec3 point = Transformed({(corner & 1) != 0 ? box.maximum.x : box.minimum.x,
                                        (corner & 2) != 0 ? box.maximum.y : box.minimum.y,
                                        (corner & 4) != 0 ? box.maximum.z : box.minimum.z},
                                       placement);
        if (corner == 0) moved = {point, point};
        moved.minimum = {std::min(moved.minimum.x, point.x), std::min(moved.minimum.y, point.y),
                         std::min(moved.minimum.z, point.z)};
        moved.maximum = {std::max(moved.maximum.x, point.x), std::max(moved.maximum.y, point.y),
                         std::max(moved.maximum.z, point.z)};
    }
    return moved;
}

}  // namespace

SimModel& SimModel::AddMerge(SimModel& part, std::wstring_view name, const Matrix& placement) {
    Feature feature;
    feature.type = kMergeType;
    feature.name = name;
    feature.reference = &part;
    InsertFeature(std::move(feature));
    for (const auto& surface : part.surfaces_) AddSurface(Moved(surface->box, placement));
    return *this;
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
    if (feature.reference != nullptr) Use(feature.reference);
    features_.push_back(std::move(feature));
    ++structureChanges_;
}

Feature* SimModel::FindFeature(int id) {
    const auto position = static_cast<std::size_t>(id) - 1;
    if (position < features_.size() && features_[position].id == id) return &features_[position];
    const auto found = featureIndex_.find(id);
    return found == featureIndex_.end() ? nullptr : &features_[found->second];
}

void SimModel::ReplaceComponent(Feature& component, SimModel& model) {
    SimModel* before = std::exchange(component.component, &model);
    Use(&model);
    const bool isLast = std::ranges::find(features_, before, &Feature::component) == features_.end();
    if (isLast) StopUsing(before);
    ++structureChanges_;
    modified_ = true;
}

void SimModel::Constrain(Feature& component, std::vector<ComponentConstraint> constraints) {
    for (const ComponentConstraint& constraint : constraints) {
        const CoordinateSystem* target = FindCoordinateSystem(constraint.assemblyItem);
        const CoordinateSystem* own = component.component->FindCoordinateSystem(constraint.componentItem);
        const auto back = own == nullptr ? std::nullopt : Inverse(own->placement);
        if (target != nullptr && back) component.placement = Product(*back, target->placement);
    }
    component.constraints = std::move(constraints);
    modified_ = true;
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

// ---- Relations

const RelationSet& SimModel::Relations(RelationKind kind) const {
    return relations_[static_cast<std::size_t>(kind)];
}

SimModel& SimModel::SetRelations(std::vector<std::wstring> lines, RelationKind kind, bool exists) {
    RelationSet& set = relations_[static_cast<std::size_t>(kind)];
    MarkDriven(set.lines, false);
    set = {exists, std::move(lines)};
    MarkDriven(set.lines, true);
    modified_ = true;
    return *this;
}

SimModel& SimModel::AddDimension(std::wstring_view symbol, double value, bool isAngle) {
    dimensions_.push_back({std::wstring(symbol), value, isAngle});
    modified_ = true;
    return *this;
}

const Dimension* SimModel::FindDimension(std::wstring_view symbol) const {
    const std::wstring wanted = UpperName(symbol);
    const auto found = std::ranges::find_if(
        dimensions_, [&](const Dimension& dimension) { return UpperName(dimension.symbol) == wanted; });
    return found == dimensions_.end() ? nullptr : &*found;
}

std::string SimModel::RelationFault(const std::vector<std::wstring>& lines) const {
    return ReadRelations(lines, NamesForRelations()).fault;
}

RelationNames SimModel::NamesForRelations() const {
    return {[this](std::wstring_view name) { return HasParameter(name); },
            [this](std::wstring_view name) { return FindDimension(name) != nullptr; }};
}

void SimModel::MarkDriven(const std::vector<std::wstring>& lines, bool driven) {
    for (const std::wstring& name : ReadRelations(lines, NamesForRelations()).assigned)
        if (ModelParameter* parameter = FindParameter(name)) parameter->relationDriven = driven;
}

// ---- Units

const UnitSystem* SimModel::FindUnitSystem(std::wstring_view name) const {
    const std::wstring wanted = UpperName(name);
    const auto found = std::ranges::find_if(
        unitSystems_, [&](const UnitSystem& system) { return UpperName(system.name) == wanted; });
    return found == unitSystems_.end() ? nullptr : &*found;
}

SimModel& SimModel::AddUnitSystem(UnitSystem system) {
    unitSystems_.push_back(std::move(system));
    modified_ = true;
    return *this;
}

SimModel& SimModel::RemoveUnitSystem(std::wstring_view name) {
    const UnitSystem principal = PrincipalUnits();
    std::erase_if(unitSystems_, [&](const UnitSystem& system) {
        return UpperName(system.name) == UpperName(name) && system != principal;
    });
    principalUnits_ =
        static_cast<std::size_t>(std::ranges::find(unitSystems_, principal) - unitSystems_.begin());
    modified_ = true;
    return *this;
}

bool SimModel::SetPrincipalUnits(std::wstring_view name, bool sameSize) {
    const UnitSystem* system = FindUnitSystem(name);
    if (system == nullptr) return false;
    if (sameSize) ScaleLengths(LengthFactor(PrincipalUnits(), *system));
    principalUnits_ = static_cast<std::size_t>(system - unitSystems_.data());
    modified_ = true;
    return true;
}

void SimModel::ScaleLengths(double factor) {
    if (factor == 1) return;
    const auto scale = [factor](Vec3& point) {
        point = {point.x * factor, point.y * factor, point.z * factor};
    };
    const auto scaleOrigin = [factor](Matrix& placement) {
        for (std::size_t i = 0; i < 3; ++i) placement[3][i] *= factor;
    };
    for (Dimension& dimension : dimensions_)
        if (!dimension.isAngle) dimension.value *= factor;
    for (const auto& surface : surfaces_) {
        scale(surface->box.minimum);
        scale(surface->box.maximum);
    }
    for (CoordinateSystem& system : coordinateSystems_) scaleOrigin(system.placement);
    for (Feature& feature : features_) scaleOrigin(feature.placement);
}

// ---- Materials

void SimModel::AddMaterial(Material material) {
    const std::wstring name = UpperName(material.name);
    std::erase_if(materials_, [&](const Material& other) { return UpperName(other.name) == name; });
    materials_.push_back(std::move(material));
    modified_ = true;
}

const Material* SimModel::FindMaterial(std::wstring_view name) const {
    const std::wstring wanted = UpperName(name);
    const auto found = std::ranges::find_if(
        materials_, [&](const Material& material) { return UpperName(material.name) == wanted; });
    return found == materials_.end() ? nullptr : &*found;
}

void SimModel::SetCurrentMaterial(std::wstring_view name) {
    currentMaterial_ = name;
    modified_ = true;
}

void SimModel::SetBendTable(std::wstring_view name) {
    bendTable_ = name;
    modified_ = true;
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
    ++structureChanges_;
    modified_ = true;
    return *this;
}

const CoordinateSystem* SimModel::FindCoordinateSystem(int id) const {
    const auto found = std::ranges::find(coordinateSystems_, id, &CoordinateSystem::id);
    return found == coordinateSystems_.end() ? nullptr : &*found;
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

SimModel& SimModel::AddTable(int sheet, std::wstring_view text, bool isFromFormat) {
    tables_.push_back({TakeId(), sheet, isFromFormat, std::wstring(text)});
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

double SimModel::ScaleOn(int sheet, const SimModel& model) const {
    const auto own = std::ranges::find_if(
        modelScales_, [&](const ModelScale& entry) { return entry.sheet == sheet && entry.model == &model; });
    return own != modelScales_.end() ? own->scale : sheets_[static_cast<std::size_t>(sheet) - 1].scale;
}

// What the other models have stays as it is: those that shared the sheet's scale get it as their own.
void SimModel::SetScaleOn(int sheet, SimModel& model, double scale) {
    DrawingSheet& found = sheets_[static_cast<std::size_t>(sheet) - 1];
    const auto own = [&](const SimModel* wanted) {
        return std::ranges::find_if(modelScales_, [&](const ModelScale& entry) {
            return entry.sheet == sheet && entry.model == wanted;
        });
    };
    modified_ = true;
    if (const auto entry = own(&model); entry != modelScales_.end()) {
        entry->scale = scale;
        return;
    }
    if (shownModels_.empty() || shownModels_.front() != &model) {
        modelScales_.push_back({sheet, &model, scale});
        return;
    }
    for (SimModel* other : shownModels_)
        if (other != &model && own(other) == modelScales_.end())
            modelScales_.push_back({sheet, other, found.scale});
    found.scale = scale;
}

const DrawingView* SimModel::FindView(int id) const {
    const auto found = std::ranges::find(views_, id, &DrawingView::id);
    return found == views_.end() ? nullptr : &*found;
}

double SimModel::ScaleOf(const DrawingView& view) const {
    if (view.scale) return *view.scale;
    const DrawingView* parent = FollowsParent(view) ? FindView(view.parent) : nullptr;
    // Files may go in circles: a parent comes before its children.
    if (parent != nullptr && parent < &view) return ScaleOf(*parent);
    if (view.model != nullptr) return ScaleOn(view.sheet, *view.model);
    return sheets_[static_cast<std::size_t>(view.sheet) - 1].scale;
}

bool SimModel::DrawFrom(const SimModel& source, SimModel& model) {
    for (const ModelParameter& parameter : source.parameters_) SetParameter(parameter.name, parameter.value);
    sheets_ = source.sheets_;
    for (DrawingSheet& sheet : sheets_) sheet.regenerations = 0;
    AddShownModel(model);
    bool isWhole = true;
    for (const DrawingView& view : source.views_) {
        // A projection needs something to be projected from.
        if (view.type == ViewType::kProjection && FindView(view.parent) == nullptr) {
            isWhole = false;
            continue;
        }
        DrawingView& made = views_.emplace_back(view);
        made.model = &model;
        made.missingModel.clear();
        nextId_ = std::max(nextId_, view.id + 1);
    }
    return isWhole;
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

void SimModel::CopyContent(const SimModel& from) {
    features_ = from.features_;
    featureIndex_ = from.featureIndex_;
    nextId_ = from.nextId_;
    parameters_ = from.parameters_;
    parameterIndex_ = from.parameterIndex_;
    for (const auto& surface : from.surfaces_) surfaces_.push_back(std::make_unique<SurfaceItem>(*surface));
    coordinateSystems_ = from.coordinateSystems_;
    savedViews = from.savedViews;
    representations_ = from.representations_;
    sheets_ = from.sheets_;
    tables_ = from.tables_;
    currentSheet_ = from.currentSheet_;
    views_ = from.views_;
    shownModels_ = from.shownModels_;
    mfgAssembly_ = from.mfgAssembly_;
    familyColumns_ = from.familyColumns_;
    missingShownModels_ = from.missingShownModels_;
    missingMfgAssembly_ = from.missingMfgAssembly_;
    bodies_ = from.bodies_;
    for (SimModel* below : from.below_)
        if (below != from.generic_) Use(below);
    ++structureChanges_;
    modified_ = true;
}

bool SimModel::HasBelow(const SimModel& other) const {
    std::unordered_set<const SimModel*> seen = {this};
    std::vector<const SimModel*> open = {this};
    while (!open.empty()) {
        const SimModel* model = open.back();
        open.pop_back();
        for (const SimModel* below : model->below_) {
            if (below == &other) return true;
            if (seen.insert(below).second) open.push_back(below);
        }
    }
    return false;
}

void SimModel::Use(SimModel* below) {
    if (below == this || !belowSet_.insert(below).second) return;
    below_.push_back(below);
    ++below->users_;
}

void SimModel::StopUsing(SimModel* below) {
    if (belowSet_.erase(below) == 0) return;
    std::erase(below_, below);
    --below->users_;
}

void SimModel::ReleaseModelsBelow() {
    for (SimModel* model : below_) --model->users_;
    below_.clear();
    belowSet_.clear();
    for (Feature& feature : features_) feature.component = feature.reference = nullptr;
    views_.clear();
    modelScales_.clear();
    shownModels_.clear();
    mfgAssembly_ = nullptr;
    generic_ = nullptr;
}

}  // namespace sim
