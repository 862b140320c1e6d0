// Writing model files.

#include "simulator/cad/model_file.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <string_view>
#include <variant>

#include <windows.h>

#include <nlohmann/json.hpp>

#include "simulator/cad/folder_index.h"
#include "simulator/cad/model_words.h"
#include "simulator/report/utf8.h"

namespace sim {

using Json = nlohmann::ordered_json;

class ModelWriter {
public:
    explicit ModelWriter(const SimModel& model) : model_(model) {}

    Json Root() const {
        Json root;
        root["format"] = kFormat;
        root["version"] = kFormatVersion;
        root["name"] = Utf8(model_.name_);
        root["kind"] = TextOf(kKinds, model_.kind_);
        if (model_.subtype_ != ModelSubtype::kNone) root["subtype"] = TextOf(kSubtypes, model_.subtype_);
        if (model_.readOnly_) root["readOnly"] = true;
        if (model_.bodies_ != 1) root["bodies"] = model_.bodies_;
        for (const ModelParameter& parameter : model_.parameters_)
            root["parameters"].push_back(Write(parameter));
        if (model_.generic_ != nullptr)
            root["generic"] = Label(*model_.generic_);
        else if (!model_.missingGeneric_.empty())
            root["generic"] = Utf8(model_.missingGeneric_);
        for (const std::wstring& column : model_.familyColumns_)
            root["familyColumns"].push_back(Utf8(column));
        for (const Feature& feature : model_.features_) root["features"].push_back(Write(feature));
        WriteData(root);
        for (const auto& surface : model_.surfaces_) root["surfaces"].push_back(Write(*surface));
        if (model_.look) root["look"] = Write(*model_.look);
        for (const auto& [path, look] : model_.occurrenceLooks) {
            Json entry = {{"path", path}};
            entry["look"] = Write(look);
            root["occurrenceLooks"].push_back(std::move(entry));
        }
        for (const CoordinateSystem& system : model_.coordinateSystems_) {
            Json entry = {{"id", system.id}, {"name", Utf8(system.name)}};
            WritePlacing(entry, system.placement);
            root["coordinateSystems"].push_back(std::move(entry));
        }
        for (const auto& [key, view] : model_.savedViews) {
            Json entry = {{"name", Utf8(view.name)}};
            WritePlacing(entry, view.orientation);
            root["savedViews"].push_back(std::move(entry));
        }
        for (const Representation& representation : model_.representations_)
            root["representations"].push_back(Write(representation));
        for (const DrawingSheet& sheet : model_.sheets_) root["sheets"].push_back(Write(sheet));
        for (const DrawingTable& table : model_.tables_) {
            Json entry = {{"id", table.id}, {"sheet", table.sheet}, {"text", Utf8(table.text)}};
            if (table.isFromFormat) entry["fromFormat"] = true;
            root["tables"].push_back(std::move(entry));
        }
        if (model_.CurrentSheet() > 1) root["currentSheet"] = model_.currentSheet_;
        for (const SimModel* shown : model_.shownModels_) root["models"].push_back(Label(*shown));
        for (const std::wstring& missing : model_.missingShownModels_)
            root["models"].push_back(Utf8(missing));
        for (const ModelScale& entry : model_.modelScales_)
            root["modelScales"].push_back(
                {{"sheet", entry.sheet},
                 {"model", entry.model != nullptr ? Label(*entry.model) : Utf8(entry.missingModel)},
                 {"scale", Write(entry.scale)}});
        for (const DrawingView& view : model_.views_) root["views"].push_back(Write(view));
        if (model_.mfgAssembly_ != nullptr)
            root["assembly"] = Label(*model_.mfgAssembly_);
        else if (!model_.missingMfgAssembly_.empty())
            root["assembly"] = Utf8(model_.missingMfgAssembly_);
        return root;
    }

private:
    void WriteData(Json& root) const {
        for (const Dimension& dimension : model_.dimensions_) {
            Json entry = {{"symbol", Utf8(dimension.symbol)}, {"value", Write(dimension.value)}};
            if (dimension.isAngle) entry["angle"] = true;
            if (dimension.isReference) entry["reference"] = true;
            if (dimension.text != Dimension().text)
                for (const std::wstring& line : dimension.text) entry["text"].push_back(Utf8(line));
            if (dimension.valueDisplay != 0) entry["valueDisplay"] = dimension.valueDisplay;
            root["dimensions"].push_back(std::move(entry));
        }
        WriteRelations(root, "relations", model_.Relations(RelationKind::kOrdinary));
        WriteRelations(root, "postRelations", model_.Relations(RelationKind::kPost));
        const bool isStandard = model_.unitSystems_ == StandardUnitSystems();
        if (!isStandard)
            for (const UnitSystem& system : model_.unitSystems_) root["unitSystems"].push_back(Write(system));
        if (!isStandard || model_.principalUnits_ != kFirstUnitSystem)
            root["units"] = Utf8(model_.PrincipalUnits().name);
        for (const Material& material : model_.materials_) {
            Json entry = {{"name", Utf8(material.name)}};
            if (!material.bendTable.empty()) entry["bendTable"] = Utf8(material.bendTable);
            root["materials"].push_back(std::move(entry));
        }
        if (!model_.currentMaterial_.empty()) root["material"] = Utf8(model_.currentMaterial_);
        if (!model_.bendTable_.empty()) root["bendTable"] = Utf8(model_.bendTable_);
    }

    static void WriteRelations(Json& root, const char* key, const RelationSet& set) {
        if (set.exists) root[key] = Json::array();
        for (const std::wstring& line : set.lines) root[key].push_back(Utf8(line));
    }

    static Json Write(const UnitSystem& system) {
        Json entry = {{"name", Utf8(system.name)}};
        const auto write = [&entry](const char* key, const std::wstring& unit) {
            if (!unit.empty()) entry[key] = Utf8(unit);
        };
        write("length", system.length);
        write("mass", system.mass);
        write("force", system.force);
        write("time", system.time);
        write("temperature", system.temperature);
        return entry;
    }

    [[noreturn]] void Fail(const std::string& what) const {
        throw ModelFileError(Label(model_) + ": cannot be written: " + what);
    }

    template <typename Value, std::size_t size>
    std::string_view TextOf(const std::array<Word<Value>, size>& words, Value value) const {
        const auto found = std::ranges::find(words, value, &Word<Value>::value);
        if (found == words.end()) Fail("a value that the host does not know");
        return found->text;
    }

    static std::string Label(const SimModel& model) {
        return Utf8(model.Name() + L"." + std::wstring(ExtensionOf(model.Kind())));
    }

    double Write(double number) const {
        if (!std::isfinite(number)) Fail("a number that is not finite");
        return number;
    }

    Json Write(const Vec3& point) const {
        return Json::array({Write(point.x), Write(point.y), Write(point.z)});
    }

    // What differs from the default.
    Json Write(const Look& look) const {
        const Look usual;
        Json entry = Json::object();
        for (const Word<double Look::*>& number : kLookNumbers)
            if (look.*number.value != usual.*number.value)
                entry[std::string(number.text)] = Write(look.*number.value);
        for (const Word<std::array<double, 3> Look::*>& colour : kLookColours) {
            const auto& [red, green, blue] = look.*colour.value;
            if (look.*colour.value != usual.*colour.value)
                entry[std::string(colour.text)] = Write(Vec3{red, green, blue});
        }
        return entry;
    }

    Json Write(const SurfaceItem& surface) const {
        Json entry = {{"id", surface.id},
                      {"minimum", Write(surface.box.minimum)},
                      {"maximum", Write(surface.box.maximum)}};
        if (surface.looks[0]) entry["look"] = Write(*surface.looks[0]);
        if (surface.looks[1]) entry["lookInside"] = Write(*surface.looks[1]);
        return entry;
    }

    Json Write(const ModelParameter& parameter) const {
        Json entry = {{"name", Utf8(parameter.name)}};
        if (const auto* text = std::get_if<std::wstring>(&parameter.value)) {
            if (text->size() > kLongestText)
                Fail("the text of parameter " + Utf8(parameter.name) + " is too long");
            entry["type"] = "string";
            entry["value"] = Utf8(*text);
        } else if (const auto* number = std::get_if<int>(&parameter.value)) {
            entry["type"] = "integer";
            entry["value"] = *number;
        } else if (const auto* truth = std::get_if<bool>(&parameter.value)) {
            entry["type"] = "boolean";
            entry["value"] = *truth;
        } else {
            entry["type"] = "real";
            entry["value"] = Write(std::get<double>(parameter.value));
        }
        if (parameter.relationDriven) entry["relationDriven"] = true;
        if (parameter.locked) entry["locked"] = true;
        return entry;
    }

    Json Write(const Feature& feature) const {
        Json entry = {{"id", feature.id}};
        const bool isMissing =
            feature.type == kComponentType && feature.component == nullptr && !feature.missingName.empty();
        if (feature.component != nullptr)
            entry["model"] = Label(*feature.component);
        else if (isMissing)
            entry["model"] =
                Utf8(feature.missingName + L"." + std::wstring(ExtensionOf(feature.missingKind)));
        else
            entry["type"] = feature.type;
        if (!feature.name.empty()) entry["name"] = Utf8(feature.name);
        if (feature.reference != nullptr)
            entry["reference"] = Label(*feature.reference);
        else if (!isMissing && !feature.missingName.empty())
            entry["reference"] =
                Utf8(feature.missingName + L"." + std::wstring(ExtensionOf(feature.missingKind)));
        const int status = isMissing ? feature.missingStatus : feature.status;
        if (status != kFeatureActive) entry["status"] = TextOf(kStatuses, status);
        if (feature.statusFlags != 0) entry["statusFlags"] = feature.statusFlags;
        if (!feature.isVisible) entry["internal"] = true;
        if (feature.isHidden) entry["hidden"] = true;
        WritePlacing(entry, feature.placement);
        for (const ComponentConstraint& constraint : feature.constraints) {
            Json tie = {{"type", constraint.type}};
            if (constraint.assemblyItem != 0) tie["assembly"] = constraint.assemblyItem;
            if (constraint.componentItem != 0) tie["component"] = constraint.componentItem;
            if (constraint.isOfInterface) tie["interface"] = true;
            entry["constraints"].push_back(std::move(tie));
        }
        WriteFreedom(entry, feature);
        return entry;
    }

    void WriteFreedom(Json& entry, const Feature& feature) const {
        if (feature.initial) {
            Json initial = Json::object();
            WritePlacing(initial, *feature.initial);
            entry["initial"] = std::move(initial);
        }
        if (feature.isFrozen) entry["frozen"] = true;
        if (feature.isUnplaced) entry["unplaced"] = true;
        if (feature.isMovable) entry["movable"] = true;
    }

    void WritePlacing(Json& entry, const Matrix& placement) const {
        if (placement == IdentityMatrix()) return;
        const auto& [x, y, z, one] = placement[3];
        if (placement == TranslationMatrix(x, y, z)) {
            entry["origin"] = Write(Vec3{x, y, z});
            return;
        }
        for (const auto& row : placement)
            entry["placement"].push_back(
                Json::array({Write(row[0]), Write(row[1]), Write(row[2]), Write(row[3])}));
    }

    Json Write(const Representation& representation) const {
        Json entry = {{"name", Utf8(representation.name)}};
        if (representation.usual != RepAction::kInclude)
            entry["default"] = TextOf(kRepActions, representation.usual);
        for (const RepItem& item : representation.items)
            entry["items"].push_back({{"path", item.path}, {"action", TextOf(kRepActions, item.action)}});
        return entry;
    }

    Json Write(const DrawingSheet& sheet) const {
        Json entry = {{"size", Utf8(sheet.size)}};
        if (!sheet.name.empty()) entry["name"] = Utf8(sheet.name);
        if (sheet.scale != 1.0) entry["scale"] = Write(sheet.scale);
        if (!sheet.format.empty()) entry["format"] = Utf8(sheet.format);
        return entry;
    }

    Json Write(const DrawingView& view) const {
        Json entry = {{"id", view.id}, {"sheet", view.sheet}};
        if (view.model != nullptr)
            entry["model"] = Label(*view.model);
        else if (!view.missingModel.empty())
            entry["model"] = Utf8(view.missingModel);
        if (view.type != ViewType::kGeneral) entry["type"] = TextOf(kViewTypes, view.type);
        if (view.parent != 0) entry["parent"] = view.parent;
        if (view.scale) entry["scale"] = Write(*view.scale);
        if (!view.name.empty()) entry["name"] = Utf8(view.name);
        return entry;
    }

    const SimModel& model_;
};

std::string ModelFileText(const SimModel& model) {
    const Json root = ModelWriter(model).Root();
    // One line an entry: short enough to be read, and a change shows as one line.
    std::string text = "{";
    for (const auto& [key, value] : root.items()) {
        text += (text.size() > 1 ? ",\n  " : "\n  ") + Json(key).dump() + ": ";
        if (!value.is_array()) {
            text += value.dump();
            continue;
        }
        text += "[";
        for (std::size_t i = 0; i < value.size(); ++i)
            text += (i > 0 ? ",\n    " : "\n    ") + value[i].dump();
        text += "\n  ]";
    }
    return text + "\n}\n";
}

std::wstring LowerName(std::wstring_view name) {
    std::wstring lower(name);
    if (!lower.empty())
        LCMapStringEx(LOCALE_NAME_INVARIANT, LCMAP_LOWERCASE, name.data(), static_cast<int>(name.size()),
                      lower.data(), static_cast<int>(lower.size()), nullptr, nullptr, 0);
    return lower;
}

}  // namespace sim
