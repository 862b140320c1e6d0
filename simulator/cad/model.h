// A model in the host's memory: part, assembly, drawing, format or manufacturing model.

#pragma once

#include <array>
#include <filesystem>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <variant>
#include <vector>

#include "simulator/cad/model_data.h"
#include "simulator/cad/relation_check.h"

namespace sim {

// Values are the host's model type codes.
enum class ModelKind { kAssembly = 1, kPart = 2, kDrawing = 4, kFormat = 33, kManufacturing = 37 };

// kMould: a manufacturing model of a mould, which the host opens in its mould mode (8); other manufacturing
// models open in mode 7. In model files: "none", "solid", "sheetmetal", "skeleton", "design", "mould".
enum class ModelSubtype { kNone, kSolidPart, kSheetmetal, kSkeleton, kDesignAssembly, kMould };

using ParameterValue = std::variant<double, int, bool, std::wstring>;

struct ModelParameter {
    std::wstring name;  // as created; compared without regard to letter case
    ParameterValue value;
    bool relationDriven = false;
    bool locked = false;
};

struct Vec3 {
    double x = 0, y = 0, z = 0;
};

// Axis-aligned box of a surface in its part's coordinates and length unit.
struct Box {
    Vec3 minimum, maximum;
};

// How a model, an occurrence or a surface looks; numbers from 0 to 1.
struct Look {
    double ambient = 0.5, diffuse = 0.8, highlight = 0.3, shininess = 0.4, transparency = 0, reflection = 0;
    std::array<double, 3> colour = {0.62, 0.68, 0.75};
    std::array<double, 3> highlightColour = {1, 1, 1};
    bool operator==(const Look&) const = default;
};

struct SurfaceItem {
    int id = 0;
    Box box;
    // Along its normal and on the other side; none: as its part.
    std::array<std::optional<Look>, 2> looks = {};
};

// Rows 0-2 are the component's axes, row 3 its origin in the assembly: point' = point * M.
using Matrix = std::array<std::array<double, 4>, 4>;
Matrix IdentityMatrix();
Matrix TranslationMatrix(double x, double y, double z);
Matrix Product(const Matrix& first, const Matrix& second);  // apply `first`, then `second`
Vec3 Transformed(const Vec3& point, const Matrix& matrix);
// The way back; nothing for a matrix that flattens space.
std::optional<Matrix> Inverse(const Matrix& matrix);

struct CoordinateSystem {
    int id = 0;
    std::wstring name;
    Matrix placement = IdentityMatrix();
};

// An orientation that is kept under a name.
struct SavedView {
    std::wstring name;  // in capitals
    Matrix orientation = IdentityMatrix();
};

// What a simplified representation does with a component and all that is below it.
enum class RepAction { kInclude, kExclude };
struct RepItem {
    std::vector<int> path;  // component feature ids from the assembly down
    RepAction action = RepAction::kExclude;
};
struct Representation {
    int id = 0;
    std::wstring name;
    RepAction usual = RepAction::kInclude;  // with what no item is about
    std::vector<RepItem> items;
};
// The representation that shows everything.
inline constexpr int kMasterRepresentation = -1;

class SimModel;

// Feature statuses of the host that the simulator itself goes by.
inline constexpr int kFeatureActive = 0;
inline constexpr int kFeatureLeftOut = 3;  // by the active simplified representation
inline constexpr int kFeatureSuppressed = 5;
// Feature type of a component.
inline constexpr int kComponentType = 1000;
// Feature type of a merge.
inline constexpr int kMergeType = 1238;

// One way in which a component is tied to its assembly.
struct ComponentConstraint {
    int type = 0;           // the host's constraint type
    int assemblyItem = 0;   // coordinate system of the assembly; 0: none
    int componentItem = 0;  // and of the component's model
    // A program does not take it away.
    bool isOfInterface = false;
};

// A feature of an assembly or part. A component is a feature with a model.
struct Feature {
    int id = 0;
    int type = kComponentType;                 // the host's feature type
    SimModel* component = nullptr;             // null: not a component, or its model could not be found
    std::wstring missingName;                  // the component's model name when it could not be found,
    ModelKind missingKind = ModelKind::kPart;  // its kind,
    int missingStatus = kFeatureActive;        // and the status that the component has in the file
    int status = 0;                            // the host's feature status: 0 active, 5 suppressed, ...
    unsigned statusFlags = 0;
    bool isVisible = true;  // ProFeatureVisibilityGet: false for internal features
    bool isHidden = false;  // hidden by the user; says nothing to ProFeatureVisibilityGet
    Matrix placement = IdentityMatrix();
    std::vector<ComponentConstraint> constraints;  // of a component
    std::optional<Matrix> initial;  // where a component without constraints goes; none: where it is
    bool isFrozen = false;          // its constraints could not be met
    bool isUnplaced = false;
    bool isMovable = false;         // its constraints leave it movable
    std::wstring name;              // empty: none
    SimModel* reference = nullptr;  // the part that a merge has taken in
};

// How a component is placed when not plainly.
struct Placing {
    int status = 0;
    unsigned statusFlags = 0;
    bool isVisible = true;
    bool isHidden = false;
    Matrix placement = IdentityMatrix();
};

struct DrawingSheet {
    std::wstring size;  // "A3"
    std::wstring name;
    double scale = 1.0;   // of the drawing's first model, and of those without one of their own
    std::wstring format;  // format model name, empty: none
    int regenerations = 0;
};

// A table on a sheet of a drawing or format.
struct DrawingTable {
    int id = 0;
    int sheet = 1;
    bool isFromFormat = false;
    std::wstring text;  // what stands in it
};

// The scale of a further model of a drawing on one sheet.
struct ModelScale {
    int sheet = 1;
    SimModel* model = nullptr;
    double scale = 1.0;
    std::wstring missingModel = {};  // "pump.asm": named by the file, but not to be found
};

// Values are the host's view type codes.
enum class ViewType {
    kGeneral = 0,
    kProjection = 1,
    kAuxiliary = 2,
    kDetail = 3,
    kRevolve = 4,
    kCopyAndAlign = 6,
    kFlat = 8
};

struct DrawingView {
    int id = 0;
    int sheet = 1;                // 1-based
    SimModel* model = nullptr;    // null also in a template, which shows whatever is drawn from it
    std::optional<double> scale;  // its own scale, else its parent's or that of its model on the sheet
    std::wstring name;
    std::wstring missingModel;  // "pump.asm": named by the file, but not to be found
    ViewType type = ViewType::kGeneral;
    int parent = 0;  // id of the view that it was made from; 0: none
};

// What a test arranges and looks at, and what the host functions work on. Owned by the ModelStore; the
// address is the host's model handle.
class SimModel {
public:
    SimModel(std::wstring name, ModelKind kind, ModelSubtype subtype);

    const std::wstring& Name() const { return name_; }
    // For the store, which knows every model by its name.
    void SetName(std::wstring_view name) {
        name_ = name;
        modified_ = true;
    }
    ModelKind Kind() const { return kind_; }
    ModelSubtype Subtype() const { return subtype_; }

    // ---- Components. Feature ids grow from 1 in the order of creation.
    SimModel& Place(SimModel& component, int times = 1);
    SimModel& Place(SimModel& component, const Placing& how);
    // A component whose model is not to be found (its file is missing).
    SimModel& PlaceMissing(std::wstring_view name);
    // A feature that is no component.
    SimModel& AddFeature(int type);
    // Takes in another part: a merge feature with a reference to it, and its surfaces, moved by `placement`.
    SimModel& AddMerge(SimModel& part, std::wstring_view name, const Matrix& placement);
    const std::vector<Feature>& Features() const { return features_; }
    Feature* FindFeature(int id);
    // Puts another model in a component's place.
    void ReplaceComponent(Feature& component, SimModel& model);
    // Ties a component to its assembly; a coordinate-system constraint moves it.
    void Constrain(Feature& component, std::vector<ComponentConstraint> constraints);
    // Grows with every change of the features or surfaces.
    int StructureChanges() const { return structureChanges_; }

    // ---- Parameters
    SimModel& SetParameter(std::wstring_view name, ParameterValue value);
    SimModel& DriveByRelation(std::wstring_view name);
    SimModel& LockParameter(std::wstring_view name);
    bool RemoveParameter(std::wstring_view name);
    ModelParameter* FindParameter(std::wstring_view name);
    const ModelParameter* FindParameter(std::wstring_view name) const;
    bool HasParameter(std::wstring_view name) const { return FindParameter(name) != nullptr; }
    // The value as text: strings as they are, integers in decimal, reals "%g", Booleans "YES"/"NO"; empty: no
    // such one.
    std::wstring Parameter(std::wstring_view name) const;
    const std::vector<ModelParameter>& Parameters() const { return parameters_; }

    // ---- Relations and what they can name
    const RelationSet& Relations(RelationKind kind = RelationKind::kOrdinary) const;
    // Makes the set, or changes it; `exists` false takes it away. What its lines assign to is driven by them
    // from then on.
    SimModel& SetRelations(std::vector<std::wstring> lines, RelationKind kind = RelationKind::kOrdinary,
                           bool exists = true);
    SimModel& AddDimension(std::wstring_view symbol, double value, bool isAngle = false);
    const Dimension* FindDimension(std::wstring_view symbol) const;
    // A dimension's identifier is its place in the list, from 1.
    const std::vector<Dimension>& Dimensions() const { return dimensions_; }
    std::vector<Dimension>& Dimensions() { return dimensions_; }
    // Why the model does not take the lines; empty: it does.
    std::string RelationFault(const std::vector<std::wstring>& lines) const;

    // ---- Units
    const std::vector<UnitSystem>& UnitSystems() const { return unitSystems_; }
    // By name without regard to letter case; null: none.
    const UnitSystem* FindUnitSystem(std::wstring_view name) const;
    const UnitSystem& PrincipalUnits() const { return unitSystems_[principalUnits_]; }
    SimModel& AddUnitSystem(UnitSystem system);
    // The principal one stays.
    SimModel& RemoveUnitSystem(std::wstring_view name);
    // With `sameSize` all lengths are converted, else the numbers stay. False: no such system.
    bool SetPrincipalUnits(std::wstring_view name, bool sameSize);

    // ---- Materials (parts), and the bend table of sheet metal
    // Adds it, or puts it in place of the one of that name.
    void AddMaterial(Material material);
    const Material* FindMaterial(std::wstring_view name) const;
    const std::vector<Material>& Materials() const { return materials_; }
    // Empty: none.
    const std::wstring& CurrentMaterial() const { return currentMaterial_; }
    void SetCurrentMaterial(std::wstring_view name);
    const std::wstring& BendTable() const { return bendTable_; }
    void SetBendTable(std::wstring_view name);

    // ---- Geometry (parts)
    SimModel& AddSurface(const Box& box);
    // Six faces of a block from the origin, in x, y, z.
    SimModel& AddBlock(double x, double y, double z);
    SimModel& AddCoordinateSystem(std::wstring_view name, const Matrix& placement = IdentityMatrix());
    const std::vector<CoordinateSystem>& CoordinateSystems() const { return coordinateSystems_; }
    const CoordinateSystem* FindCoordinateSystem(int id) const;
    const std::vector<std::unique_ptr<SurfaceItem>>& Surfaces() const { return surfaces_; }

    // Of the model itself; none: the host's default.
    std::optional<Look> look;
    // Of occurrences below it, by the component feature ids that lead there; none: as their models.
    std::map<std::vector<int>, Look> occurrenceLooks;
    SurfaceItem* FindSurface(int id);

    // Orientations by upper-cased name.
    std::map<std::wstring, SavedView> savedViews;

    // ---- Simplified representations (assemblies)
    const std::vector<Representation>& Representations() const { return representations_; }
    // Takes it in under an id of its own, which it answers.
    int AddRepresentation(Representation representation);
    Representation* FindRepresentation(int id);
    // By name without regard to letter case.
    Representation* FindRepresentation(std::wstring_view name);
    void RemoveRepresentation(int id);
    int ActiveRepresentation() const { return activeRepresentation_; }
    // What the user looks at, no change of the assembly.
    void ActivateRepresentation(int id) { activeRepresentation_ = id; }
    // Whether the active representation leaves out what is at the end of the path.
    bool IsLeftOut(const std::vector<int>& path) const;

    // ---- Drawings and manufacturing models
    SimModel& AddSheet(std::wstring_view size);
    SimModel& AddView(SimModel& model, int sheet);
    // A view whose model is not to be found, "pump.prt".
    SimModel& AddMissingView(std::wstring_view model, int sheet);
    // Of a drawing with sheets, from 1; 0 without.
    int CurrentSheet() const { return sheets_.empty() ? 0 : currentSheet_; }
    // What the user looks at, no change of the drawing.
    void SetCurrentSheet(int sheet) { currentSheet_ = sheet; }
    const std::vector<DrawingSheet>& Sheets() const { return sheets_; }
    std::vector<DrawingSheet>& Sheets() { return sheets_; }
    SimModel& AddTable(int sheet, std::wstring_view text, bool isFromFormat = false);
    std::vector<DrawingTable>& Tables() { return tables_; }
    const std::vector<DrawingTable>& Tables() const { return tables_; }
    // The scale of a model on a sheet, from 1.
    double ScaleOn(int sheet, const SimModel& model) const;
    void SetScaleOn(int sheet, SimModel& model, double scale);
    // The scale that a view has, its own or not.
    double ScaleOf(const DrawingView& view) const;
    // A projected view has the scale of the one that it was made from.
    static bool FollowsParent(const DrawingView& view) {
        return view.type == ViewType::kProjection && view.parent != 0;
    }
    // Null: the drawing has no view of that id.
    const DrawingView* FindView(int id) const;
    // Becomes what the template makes of the model. False: not all of its views could be made.
    [[nodiscard]] bool DrawFrom(const SimModel& source, SimModel& model);
    std::vector<DrawingView>& Views() { return views_; }
    const std::vector<DrawingView>& Views() const { return views_; }
    // A model that the drawing can show; AddView adds its own.
    SimModel& AddShownModel(SimModel& model);
    const std::vector<SimModel*>& ShownModels() const { return shownModels_; }
    SimModel& SetMfgAssembly(SimModel& assembly);
    SimModel* MfgAssembly() const { return mfgAssembly_; }

    // ---- Family tables: a generic with columns, and instances that are models of their own
    // Makes this model an instance of `generic`, which starts with the generic's values in all columns.
    SimModel& MakeInstanceOf(SimModel& generic);
    bool IsInstance() const { return generic_ != nullptr || !missingGeneric_.empty(); }
    // The immediate generic; null for no instance, and for one whose generic is not in memory.
    SimModel* Generic() const { return generic_; }
    // Makes it an instance whose generic is not in memory.
    SimModel& LoseGeneric(std::wstring_view name);
    // Parameters that are columns of this model's table.
    const std::vector<std::wstring>& FamilyColumns() const { return familyColumns_; }
    bool HasFamilyColumn(std::wstring_view parameter) const;
    // False: there is no such parameter, or it is a column already.
    bool AddFamilyColumn(std::wstring_view parameter);
    // Takes over the generic's value of a parameter, unless it has one of its own.
    void InheritFrom(const SimModel& generic, std::wstring_view parameter);

    // Takes over what another model of its kind holds, save for its being an instance or read-only.
    void CopyContent(const SimModel& from);

    // ---- State of the session
    SimModel& SetReadOnly(bool on = true);
    bool IsReadOnly() const { return readOnly_; }
    void CountRegeneration() { ++regenerations_; }
    int Regenerations() const { return regenerations_; }
    void CountTreeRefresh() { ++treeRefreshes_; }
    int TreeRefreshes() const { return treeRefreshes_; }
    bool IsModified() const { return modified_; }
    void SetModified(bool on) { modified_ = on; }
    int BodyCount() const { return bodies_; }
    SimModel& SetBodyCount(int bodies);

    // True when the other model is somewhere below.
    bool HasBelow(const SimModel& other) const;
    // The models right below: of components, of drawing views, of a manufacturing model, the generic of an
    // instance; each once, itself never.
    const std::vector<SimModel*>& ModelsBelow() const { return below_; }
    // How many other models have this one right below them.
    int UserCount() const { return users_; }
    // Cuts the ties to the models below, so that they may be erased.
    void ReleaseModelsBelow();

    // ---- Files. `directory` is where the next save goes; `origin` the file it came from, empty: new.
    std::filesystem::path directory;
    std::filesystem::path origin;

private:
    int TakeId() { return nextId_++; }
    void Use(SimModel* below);
    void StopUsing(SimModel* below);
    SimModel& InsertFeature(Feature feature);
    void InsertFeatureWithId(Feature feature);
    void IndexParameters();
    RelationNames NamesForRelations() const;
    void MarkDriven(const std::vector<std::wstring>& lines, bool driven);
    void ScaleLengths(double factor);

    std::wstring name_;
    ModelKind kind_;
    ModelSubtype subtype_;
    std::vector<Feature> features_;
    std::unordered_map<int, std::size_t> featureIndex_;  // only what does not stand at [id - 1]
    int nextId_ = 1;
    int structureChanges_ = 0;
    std::vector<ModelParameter> parameters_;
    std::unordered_map<std::wstring, std::size_t> parameterIndex_;  // by upper-cased name
    std::array<RelationSet, 2> relations_;                          // by kind
    std::vector<Dimension> dimensions_;
    std::vector<UnitSystem> unitSystems_ = StandardUnitSystems();
    std::size_t principalUnits_ = kFirstUnitSystem;
    std::vector<Material> materials_;
    std::wstring currentMaterial_;
    std::wstring bendTable_;
    std::vector<std::unique_ptr<SurfaceItem>> surfaces_;
    std::vector<CoordinateSystem> coordinateSystems_;
    std::vector<Representation> representations_;
    int activeRepresentation_ = kMasterRepresentation;
    std::vector<DrawingSheet> sheets_;
    int currentSheet_ = 1;
    std::vector<DrawingView> views_;
    std::vector<DrawingTable> tables_;
    std::vector<ModelScale> modelScales_;
    std::vector<SimModel*> shownModels_;
    SimModel* mfgAssembly_ = nullptr;
    SimModel* generic_ = nullptr;
    std::wstring missingGeneric_;  // "pump.prt": named by the file, but not to be found
    std::vector<std::wstring> familyColumns_;
    std::vector<std::wstring> missingShownModels_;  // "pump.asm": named by the file, but not to be found
    std::wstring missingMfgAssembly_;
    std::vector<SimModel*> below_;
    std::unordered_set<SimModel*> belowSet_;
    int users_ = 0;
    bool readOnly_ = false;
    bool modified_ = true;
    int regenerations_ = 0;
    int treeRefreshes_ = 0;
    int bodies_ = 1;

    friend class ModelReader;  // fill a model from its file
    friend class ModelWriter;  // and back
};

}  // namespace sim
