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
        for (const DrawingSheet& sheet : model_.sheets_) root["sheets"].push_back(Write(sheet));
        if (model_.CurrentSheet() > 1) root["currentSheet"] = model_.currentSheet_;
        for (const SimModel* shown : model_.shownModels_) root["models"].push_back(Label(*shown));
        for (const std::wstring& missing : model_.missingShownModels_)
            root["models"].push_back(Utf8(missing));
        for (const DrawingView& view : model_.views_) root["views"].push_back(Write(view));
        if (model_.mfgAssembly_ != nullptr)
            root["assembly"] = Label(*model_.mfgAssembly_);
        else if (!model_.missingMfgAssembly_.empty())
            root["assembly"] = Utf8(model_.missingMfgAssembly_);
        return root;
    }

private:
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
        const bool isMissing = feature.component == nullptr && !feature.missingName.empty();
        if (feature.component != nullptr)
            entry["model"] = Label(*feature.component);
        else if (isMissing)
            entry["model"] =
                Utf8(feature.missingName + L"." + std::wstring(ExtensionOf(feature.missingKind)));
        else
            entry["type"] = feature.type;
        const int status = isMissing ? feature.missingStatus : feature.status;
        if (status != kFeatureActive) entry["status"] = TextOf(kStatuses, status);
        if (feature.statusFlags != 0) entry["statusFlags"] = feature.statusFlags;
        if (!feature.isVisible) entry["internal"] = true;
        if (feature.isHidden) entry["hidden"] = true;
        WritePlacing(entry, feature.placement);
        return entry;
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

    Json Write(const DrawingSheet& sheet) const {
        Json entry = {{"size", Utf8(sheet.size)}};
        if (!sheet.name.empty()) entry["name"] = Utf8(sheet.name);
        if (sheet.scale != 1.0) entry["scale"] = Write(sheet.scale);
        if (!sheet.format.empty()) entry["format"] = Utf8(sheet.format);
        return entry;
    }

    Json Write(const DrawingView& view) const {
        Json entry = {{"id", view.id}, {"sheet", view.sheet}};
        entry["model"] = view.model != nullptr ? Label(*view.model) : Utf8(view.missingModel);
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
