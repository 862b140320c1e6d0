// Reading model files.

#include "simulator/cad/model_file.h"

#include <algorithm>
#include <limits>
#include <optional>
#include <set>
#include <utility>

#include "simulator/cad/folder_index.h"
#include "simulator/cad/json_file.h"
#include "simulator/cad/json_node.h"
#include "simulator/cad/model_words.h"
#include "simulator/report/utf8.h"

namespace sim {

namespace fs = std::filesystem;

namespace {

Matrix ReadPlacement(const Node& node) {
    if (!node.Value().is_array() || node.Value().size() != 4) node.Fail("a list of 4 rows");
    Matrix matrix{};
    for (std::size_t row = 0; row < 4; ++row) {
        const Node line(node.Value()[row], node, row);
        matrix[row] = line.Numbers<4>();
        if (matrix[row][3] != (row == 3 ? 1.0 : 0.0)) line.Fail("a last column of 0, 0, 0, 1");
    }
    return matrix;
}

void ReadPlacing(Entries& entries, Matrix& placement) {
    entries.Optional("origin", [&](const Node& node) {
        const auto [x, y, z] = node.Numbers<3>();
        placement = TranslationMatrix(x, y, z);
    });
    entries.Optional("placement", [&](const Node& node) { placement = ReadPlacement(node); });
}

// "bolt.prt" as name and kind.
std::pair<std::wstring, ModelKind> ReadModelName(const Node& node) {
    const std::optional<ModelFile> parts = ParseModelFileName(Wide(node.Text()));
    if (!parts || parts->version != 0) node.Fail("a model as \"name.prt\", with asm, prt, drw, frm or mfg");
    return {parts->name, parts->kind};
}

}  // namespace

class ModelReader {
public:
    ModelReader(ModelFileContent& content) : model_(*content.model), ties_(content.ties) {}

    void Read(Entries& root) {
        root.Optional("readOnly", [&](const Node& node) { model_.readOnly_ = node.Truth(); });
        root.Optional("bodies", [&](const Node& node) { model_.bodies_ = node.Int(0); });
        root.Optional("parameters", [&](const Node& node) { ReadList(node, &ModelReader::ReadParameter); });
        root.Optional("generic", [&](const Node& node) { ReadGeneric(node); });
        root.Optional("familyColumns", [&](const Node& node) { ReadList(node, &ModelReader::ReadColumn); });
        root.Optional("features", [&](const Node& node) { ReadList(node, &ModelReader::ReadFeature); });
        root.Optional("dimensions", [&](const Node& node) { ReadList(node, &ModelReader::ReadDimension); });
        root.Optional("relations", [&](const Node& node) { ReadRelations(node, RelationKind::kOrdinary); });
        root.Optional("postRelations", [&](const Node& node) { ReadRelations(node, RelationKind::kPost); });
        root.Optional("unitSystems", [&](const Node& node) {
            model_.unitSystems_.clear();
            ReadList(node, &ModelReader::ReadUnitSystem);
            if (model_.unitSystems_.empty()) node.Fail("at least one system");
            model_.principalUnits_ = 0;
        });
        root.Optional("units", [&](const Node& node) {
            if (!model_.SetPrincipalUnits(node.WideText(kLongestName), false))
                node.Fail("a unit system of the model");
        });
        root.Optional("materials", [&](const Node& node) { ReadList(node, &ModelReader::ReadMaterial); });
        root.Optional("material", [&](const Node& node) {
            const std::wstring name = node.WideText(kLongestName);
            if (model_.FindMaterial(name) == nullptr) node.Fail("a material of the model");
            model_.SetCurrentMaterial(name);
        });
        root.Optional("bendTable",
                      [&](const Node& node) { model_.SetBendTable(node.WideText(kLongestName)); });
        root.Optional("surfaces", [&](const Node& node) { ReadList(node, &ModelReader::ReadSurface); });
        root.Optional("look", [&](const Node& node) { model_.look = ReadLook(node); });
        root.Optional("occurrenceLooks",
                      [&](const Node& node) { ReadList(node, &ModelReader::ReadOccurrenceLook); });
        root.Optional("coordinateSystems",
                      [&](const Node& node) { ReadList(node, &ModelReader::ReadSystem); });
        root.Optional("savedViews", [&](const Node& node) { ReadList(node, &ModelReader::ReadSavedView); });
        root.Optional("representations",
                      [&](const Node& node) { ReadList(node, &ModelReader::ReadRepresentation); });
        root.Optional("sheets", [&](const Node& node) { ReadList(node, &ModelReader::ReadSheet); });
        root.Optional("tables", [&](const Node& node) { ReadList(node, &ModelReader::ReadTable); });
        root.Optional("currentSheet", [&](const Node& node) {
            model_.currentSheet_ =
                static_cast<int>(node.Integer(1, static_cast<long long>(model_.sheets_.size())));
        });
        root.Optional("models", [&](const Node& node) {
            std::size_t position = 0;
            node.ForEach([&](const Node& entry) { AddTie(ModelTie::Role::kShownModel, position++, entry); });
        });
        root.Optional("modelScales", [&](const Node& node) { ReadList(node, &ModelReader::ReadModelScale); });
        root.Optional("views", [&](const Node& node) { ReadList(node, &ModelReader::ReadView); });
        root.Optional("assembly", [&](const Node& node) { AddTie(ModelTie::Role::kMfgAssembly, 0, node); });
        model_.modified_ = false;
    }

    static void Tie(SimModel& model, const ModelTie& tie, SimModel* other) {
        const std::wstring label = tie.name + L"." + std::wstring(ExtensionOf(tie.kind));
        switch (tie.role) {
            case ModelTie::Role::kComponent:
                TieComponent(model, tie, other);
                break;
            case ModelTie::Role::kReference:
                TieReference(model, tie, other);
                break;
            case ModelTie::Role::kView:
                if (other == nullptr) model.views_[tie.position].missingModel = label;
                model.views_[tie.position].model = other;
                if (other != nullptr) model.Use(other);
                break;
            case ModelTie::Role::kShownModel:
                if (other != nullptr)
                    model.AddShownModel(*other).SetModified(false);
                else
                    model.missingShownModels_.push_back(label);
                break;
            case ModelTie::Role::kModelScale:
                model.modelScales_[tie.position].model = other;
                if (other == nullptr) model.modelScales_[tie.position].missingModel = label;
                break;
            case ModelTie::Role::kMfgAssembly:
                if (other != nullptr)
                    model.SetMfgAssembly(*other).SetModified(false);
                else
                    model.missingMfgAssembly_ = label;
                break;
            case ModelTie::Role::kGeneric:
                if (other != nullptr)
                    model.MakeInstanceOf(*other).SetModified(false);
                else
                    model.missingGeneric_ = label;
                break;
        }
    }

private:
    static void TieComponent(SimModel& model, const ModelTie& tie, SimModel* other) {
        Feature& feature = model.features_[tie.position];
        feature.component = other;
        if (other != nullptr) {
            model.Use(other);
            return;
        }
        feature.missingName = tie.name;
        feature.missingKind = tie.kind;
        feature.missingStatus = feature.status;
        feature.status = kFeatureSuppressed;
    }

    static void TieReference(SimModel& model, const ModelTie& tie, SimModel* other) {
        Feature& feature = model.features_[tie.position];
        feature.reference = other;
        if (other != nullptr) return model.Use(other);
        feature.missingName = tie.name;
        feature.missingKind = tie.kind;
    }

    void ReadList(const Node& list, void (ModelReader::*read)(const Node&)) {
        list.ForEach([&](const Node& entry) { (this->*read)(entry); });
    }

    void AddTie(ModelTie::Role role, std::size_t position, const Node& node) {
        auto [name, kind] = ReadModelName(node);
        ties_.push_back({role, position, std::move(name), kind});
    }

    void ReadGeneric(const Node& node) {
        const auto [name, kind] = ReadModelName(node);
        const bool isOwn = kind == model_.kind_ && UpperName(name) == UpperName(model_.name_);
        if (kind != model_.kind_ || isOwn) node.Fail("another model of the same kind");
        AddTie(ModelTie::Role::kGeneric, 0, node);
    }

    void ReadColumn(const Node& node) {
        if (!model_.AddFamilyColumn(node.WideText(kLongestName))) node.Fail("a parameter, each once");
    }

    int ReadId(Entries& entries) {
        int id = 0;
        entries.Required("id", [&](const Node& node) {
            // One more than the greatest is the next that the model gives out.
            id = static_cast<int>(node.Integer(1, std::numeric_limits<int>::max() - 1));
            if (!ids_.insert(id).second) node.Fail("an identifier that the model does not use yet");
        });
        model_.nextId_ = std::max(model_.nextId_, id + 1);
        return id;
    }

    void ReadParameter(const Node& node) {
        Entries entries(node);
        ModelParameter parameter;
        entries.Required("name", [&](const Node& name) {
            parameter.name = name.WideText(kLongestName);
            if (parameter.name.empty() || model_.HasParameter(parameter.name)) name.Fail("a name of its own");
        });
        ParameterType type{};
        entries.Required("type", [&](const Node& word) { type = word.OneOf(kParameterTypes); });
        entries.Required("value", [&](const Node& value) { parameter.value = ReadValue(value, type); });
        entries.Optional("relationDriven",
                         [&](const Node& truth) { parameter.relationDriven = truth.Truth(); });
        entries.Optional("locked", [&](const Node& truth) { parameter.locked = truth.Truth(); });
        entries.Close();
        model_.parameterIndex_[UpperName(parameter.name)] = model_.parameters_.size();
        model_.parameters_.push_back(std::move(parameter));
    }

    static ParameterValue ReadValue(const Node& value, ParameterType type) {
        switch (type) {
            case ParameterType::kReal:
                return value.Real();
            case ParameterType::kInteger:
                return value.Int(std::numeric_limits<int>::min());
            case ParameterType::kBoolean:
                return value.Truth();
            case ParameterType::kString:
                break;
        }
        return value.WideText(kLongestText);
    }

    void ReadDimension(const Node& node) {
        Entries entries(node);
        Dimension dimension;
        entries.Required("symbol", [&](const Node& symbol) {
            dimension.symbol = symbol.WideText(kLongestName);
            if (dimension.symbol.empty() || model_.FindDimension(dimension.symbol) != nullptr)
                symbol.Fail("a symbol of its own");
        });
        entries.Required("value", [&](const Node& value) { dimension.value = value.Real(); });
        entries.Optional("angle", [&](const Node& truth) { dimension.isAngle = truth.Truth(); });
        entries.Optional("reference", [&](const Node& truth) { dimension.isReference = truth.Truth(); });
        entries.Optional("text", [&](const Node& lines) {
            dimension.text.clear();
            lines.ForEach([&](const Node& line) { dimension.text.push_back(line.WideText(kLongestText)); });
        });
        entries.Optional("valueDisplay", [&](const Node& number) { dimension.valueDisplay = number.Int(0); });
        entries.Close();
        model_.dimensions_.push_back(std::move(dimension));
    }

    // As they are: what the host would refuse may stand in a file, and drives nothing.
    void ReadRelations(const Node& list, RelationKind kind) {
        RelationSet& set = model_.relations_[static_cast<std::size_t>(kind)];
        set.exists = true;
        list.ForEach([&](const Node& line) { set.lines.push_back(Wide(line.Text())); });
    }

    void ReadUnitSystem(const Node& node) {
        Entries entries(node);
        UnitSystem system;
        entries.Required("name", [&](const Node& name) {
            system.name = name.WideText(kLongestName);
            if (system.name.empty() || model_.FindUnitSystem(system.name) != nullptr)
                name.Fail("a name of its own");
        });
        const auto read = [&](std::string_view key, UnitQuantity quantity, std::wstring& unit) {
            return entries.Optional(key, [&](const Node& name) {
                unit = name.WideText(kLongestName);
                const BasicUnit* found = FindBasicUnit(unit);
                if (found == nullptr || found->quantity != quantity) name.Fail("a unit of the host for this");
            });
        };
        if (!read("length", UnitQuantity::kLength, system.length)) node.Fail("the key \"length\"");
        if (!read("time", UnitQuantity::kTime, system.time)) node.Fail("the key \"time\"");
        read("temperature", UnitQuantity::kTemperature, system.temperature);
        const bool hasMass = read("mass", UnitQuantity::kMass, system.mass);
        if (hasMass == read("force", UnitQuantity::kForce, system.force))
            node.Fail("either \"mass\" or \"force\"");
        entries.Close();
        model_.unitSystems_.push_back(std::move(system));
    }

    void ReadMaterial(const Node& node) {
        Entries entries(node);
        Material material;
        entries.Required("name", [&](const Node& name) { material.name = name.WideText(kLongestName); });
        entries.Optional("bendTable",
                         [&](const Node& name) { material.bendTable = name.WideText(kLongestName); });
        entries.Close();
        model_.materials_.push_back(std::move(material));
    }

    void ReadFeature(const Node& node) {
        Entries entries(node);
        Feature feature;
        feature.id = ReadId(entries);
        const bool hasModel = entries.Optional("model", [&](const Node& name) {
            AddTie(ModelTie::Role::kComponent, model_.features_.size(), name);
        });
        const bool hasType = entries.Optional("type", [&](const Node& type) { feature.type = type.Int(1); });
        if (hasModel == hasType) node.Fail("either \"model\" or \"type\"");
        entries.Optional("name", [&](const Node& name) { feature.name = name.WideText(kLongestName); });
        const bool refers = entries.Optional("reference", [&](const Node& name) {
            AddTie(ModelTie::Role::kReference, model_.features_.size(), name);
        });
        if (refers && hasModel) node.Fail("a reference of a feature that is no component");
        entries.Optional("status", [&](const Node& word) { feature.status = word.OneOf(kStatuses); });
        entries.Optional("statusFlags", [&](const Node& flags) {
            feature.statusFlags =
                static_cast<unsigned>(flags.Integer(0, std::numeric_limits<unsigned>::max()));
        });
        entries.Optional("internal", [&](const Node& truth) { feature.isVisible = !truth.Truth(); });
        entries.Optional("hidden", [&](const Node& truth) { feature.isHidden = truth.Truth(); });
        ReadPlacing(entries, feature.placement);
        entries.Optional("constraints", [&](const Node& list) {
            list.ForEach([&](const Node& entry) { feature.constraints.push_back(ReadConstraint(entry)); });
        });
        ReadFreedom(entries, feature);
        if (hasType && !feature.constraints.empty()) node.Fail("constraints of a component only");
        entries.Close();
        model_.InsertFeatureWithId(std::move(feature));
    }

    void ReadFreedom(Entries& entries, Feature& feature) {
        entries.Optional("initial", [&](const Node& node) {
            Entries placing(node);
            ReadPlacing(placing, feature.initial.emplace(IdentityMatrix()));
            placing.Close();
        });
        entries.Optional("frozen", [&](const Node& truth) { feature.isFrozen = truth.Truth(); });
        entries.Optional("unplaced", [&](const Node& truth) { feature.isUnplaced = truth.Truth(); });
        entries.Optional("movable", [&](const Node& truth) { feature.isMovable = truth.Truth(); });
    }

    static ComponentConstraint ReadConstraint(const Node& node) {
        Entries entries(node);
        ComponentConstraint constraint;
        entries.Required("type", [&](const Node& type) { constraint.type = type.Int(0); });
        entries.Optional("assembly", [&](const Node& id) { constraint.assemblyItem = id.Int(1); });
        entries.Optional("component", [&](const Node& id) { constraint.componentItem = id.Int(1); });
        entries.Optional("interface", [&](const Node& truth) { constraint.isOfInterface = truth.Truth(); });
        entries.Close();
        return constraint;
    }

    static double ReadShare(const Node& node) {
        const double share = node.Real();
        if (!(share >= 0 && share <= 1)) node.Fail("a number from 0 to 1");
        return share;
    }

    static Look ReadLook(const Node& node) {
        Entries entries(node);
        Look look;
        for (const Word<double Look::*>& number : kLookNumbers)
            entries.Optional(number.text, [&](const Node& entry) { look.*number.value = ReadShare(entry); });
        for (const Word<std::array<double, 3> Look::*>& colour : kLookColours)
            entries.Optional(colour.text, [&](const Node& entry) {
                look.*colour.value = entry.Numbers<3>();
                std::size_t place = 0;
                entry.ForEach([&](const Node& share) { (look.*colour.value)[place++] = ReadShare(share); });
            });
        entries.Close();
        return look;
    }

    void ReadOccurrenceLook(const Node& node) {
        Entries entries(node);
        std::vector<int> path;
        entries.Required("path", [&](const Node& ids) {
            ids.ForEach([&](const Node& id) { path.push_back(id.Int(1)); });
        });
        entries.Required("look", [&](const Node& look) { model_.occurrenceLooks[path] = ReadLook(look); });
        entries.Close();
    }

    void ReadSurface(const Node& node) {
        Entries entries(node);
        SurfaceItem surface;
        surface.id = ReadId(entries);
        const auto read = [&](std::string_view key, Vec3& corner) {
            entries.Required(key, [&](const Node& numbers) {
                const auto [x, y, z] = numbers.Numbers<3>();
                corner = {x, y, z};
            });
        };
        read("minimum", surface.box.minimum);
        read("maximum", surface.box.maximum);
        const Box& box = surface.box;
        if (box.minimum.x > box.maximum.x || box.minimum.y > box.maximum.y || box.minimum.z > box.maximum.z)
            node.Fail("a minimum that is nowhere above the maximum");
        entries.Optional("look", [&](const Node& look) { surface.looks[0] = ReadLook(look); });
        entries.Optional("lookInside", [&](const Node& look) { surface.looks[1] = ReadLook(look); });
        entries.Close();
        model_.surfaces_.push_back(std::make_unique<SurfaceItem>(surface));
    }

    void ReadSystem(const Node& node) {
        Entries entries(node);
        CoordinateSystem system;
        system.id = ReadId(entries);
        entries.Required("name", [&](const Node& name) { system.name = name.WideText(kLongestName); });
        ReadPlacing(entries, system.placement);
        entries.Close();
        model_.coordinateSystems_.push_back(std::move(system));
    }

    void ReadSavedView(const Node& node) {
        Entries entries(node);
        SavedView view;
        entries.Required("name", [&](const Node& name) {
            view.name = UpperName(name.WideText(kLongestText));
            if (view.name.empty() || model_.savedViews.contains(view.name)) name.Fail("a name of its own");
        });
        ReadPlacing(entries, view.orientation);
        entries.Close();
        model_.savedViews[view.name] = view;
    }

    void ReadRepresentation(const Node& node) {
        Entries entries(node);
        Representation representation;
        entries.Required("name", [&](const Node& name) {
            representation.name = name.WideText(kLongestName);
            if (representation.name.empty() || model_.FindRepresentation(representation.name) != nullptr)
                name.Fail("a name of its own");
        });
        entries.Optional("default",
                         [&](const Node& word) { representation.usual = word.OneOf(kRepActions); });
        entries.Optional("items", [&](const Node& list) {
            list.ForEach([&](const Node& entry) { representation.items.push_back(ReadRepItem(entry)); });
        });
        entries.Close();
        model_.AddRepresentation(std::move(representation));
    }

    static RepItem ReadRepItem(const Node& node) {
        Entries entries(node);
        RepItem item;
        entries.Required("path", [&](const Node& ids) {
            ids.ForEach([&](const Node& id) { item.path.push_back(id.Int(1)); });
        });
        entries.Required("action", [&](const Node& word) { item.action = word.OneOf(kRepActions); });
        entries.Close();
        return item;
    }

    static double ReadScale(const Node& node) {
        const double scale = node.Real();
        if (scale <= 0) node.Fail("a scale above 0");
        return scale;
    }

    void ReadSheet(const Node& node) {
        Entries entries(node);
        DrawingSheet sheet;
        entries.Required("size", [&](const Node& size) { sheet.size = size.WideText(kLongestName); });
        entries.Optional("name", [&](const Node& name) { sheet.name = name.WideText(kLongestName); });
        entries.Optional("scale", [&](const Node& scale) { sheet.scale = ReadScale(scale); });
        entries.Optional("format", [&](const Node& format) { sheet.format = format.WideText(kLongestText); });
        entries.Close();
        model_.sheets_.push_back(std::move(sheet));
    }

    int ReadSheetNumber(Entries& entries) {
        int sheet = 0;
        entries.Required("sheet", [&](const Node& number) {
            sheet = static_cast<int>(number.Integer(1, static_cast<long long>(model_.sheets_.size())));
        });
        return sheet;
    }

    void ReadTable(const Node& node) {
        Entries entries(node);
        DrawingTable table;
        table.id = ReadId(entries);
        table.sheet = ReadSheetNumber(entries);
        entries.Optional("text", [&](const Node& text) { table.text = text.WideText(kLongestText); });
        entries.Optional("fromFormat", [&](const Node& truth) { table.isFromFormat = truth.Truth(); });
        entries.Close();
        model_.tables_.push_back(std::move(table));
    }

    void ReadModelScale(const Node& node) {
        Entries entries(node);
        ModelScale entry;
        entry.sheet = ReadSheetNumber(entries);
        entries.Required("model", [&](const Node& name) {
            AddTie(ModelTie::Role::kModelScale, model_.modelScales_.size(), name);
        });
        entries.Required("scale", [&](const Node& scale) { entry.scale = ReadScale(scale); });
        entries.Close();
        model_.modelScales_.push_back(std::move(entry));
    }

    void ReadView(const Node& node) {
        Entries entries(node);
        DrawingView view;
        view.id = ReadId(entries);
        view.sheet = ReadSheetNumber(entries);
        entries.Optional(
            "model", [&](const Node& name) { AddTie(ModelTie::Role::kView, model_.views_.size(), name); });
        entries.Optional("type", [&](const Node& word) { view.type = word.OneOf(kViewTypes); });
        entries.Optional("parent", [&](const Node& id) {
            view.parent = static_cast<int>(id.Integer(1, std::numeric_limits<int>::max() - 1));
            if (model_.FindView(view.parent) == nullptr) id.Fail("the identifier of a view before this one");
        });
        entries.Optional("scale", [&](const Node& scale) { view.scale = ReadScale(scale); });
        entries.Optional("name", [&](const Node& name) { view.name = name.WideText(kLongestName); });
        entries.Close();
        model_.views_.push_back(std::move(view));
    }

    SimModel& model_;
    std::vector<ModelTie>& ties_;
    std::set<int> ids_;
};

ModelFileContent ReadModelFile(const fs::path& file, std::wstring_view name, ModelKind kind) {
    const std::string label = Utf8(file.filename().wstring());
    const Json json = ReadJsonFile(file, label);
    const Node node(json, label);
    Entries root(node);
    root.Required("format", [](const Node& format) {
        if (format.Text() != kFormat) format.Fail("\"" + std::string(kFormat) + "\"");
    });
    root.Required("version", [](const Node& version) { version.Integer(kFormatVersion, kFormatVersion); });
    std::wstring modelName;
    root.Required("name", [&](const Node& text) {
        modelName = Wide(text.Text());
        if (UpperName(modelName) != UpperName(name))
            text.Fail("\"" + Utf8(UpperName(name)) + "\", as the file is called");
    });
    root.Required("kind", [&](const Node& word) {
        if (word.OneOf(kKinds) != kind)
            word.Fail("\"" + std::string(std::ranges::find(kKinds, kind, &Word<ModelKind>::value)->text) +
                      "\"");
    });
    ModelSubtype subtype = ModelSubtype::kNone;
    root.Optional("subtype", [&](const Node& word) { subtype = word.OneOf(kSubtypes); });

    ModelFileContent content{std::make_unique<SimModel>(std::move(modelName), kind, subtype), {}};
    ModelReader(content).Read(root);
    root.Close();
    return content;
}

std::string PlaceOf(const ModelTie& tie) {
    const std::string position = std::to_string(tie.position);
    switch (tie.role) {
        case ModelTie::Role::kComponent:
            return "/features/" + position + "/model";
        case ModelTie::Role::kReference:
            return "/features/" + position + "/reference";
        case ModelTie::Role::kView:
            return "/views/" + position + "/model";
        case ModelTie::Role::kModelScale:
            return "/modelScales/" + position + "/model";
        case ModelTie::Role::kShownModel:
            return "/models/" + position;
        case ModelTie::Role::kMfgAssembly:
            return "/assembly";
        case ModelTie::Role::kGeneric:
            break;
    }
    return "/generic";
}

void TieModels(SimModel& model, const ModelTie& tie, SimModel* other) {
    ModelReader::Tie(model, tie, other);
}

}  // namespace sim
