#include "simulator/cad/model_file.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <fstream>
#include <iterator>
#include <limits>
#include <set>
#include <string_view>
#include <system_error>
#include <utility>

#include <windows.h>

#include <nlohmann/json.hpp>

#include "simulator/cad/folder_index.h"
#include "simulator/report/utf8.h"

namespace sim {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

namespace {

constexpr std::string_view kFormat = "hostsim model";
constexpr int kFormatVersion = 1;
// Limits of the host: characters of a parameter's name and of its text.
constexpr std::size_t kLongestName = 31;
constexpr std::size_t kLongestText = 80;

template <typename Value>
struct Word {
    std::string_view text;
    Value value;
};

constexpr std::array<Word<ModelKind>, 5> kKinds = {{
    {"assembly", ModelKind::kAssembly},
    {"part", ModelKind::kPart},
    {"drawing", ModelKind::kDrawing},
    {"format", ModelKind::kFormat},
    {"manufacturing", ModelKind::kManufacturing},
}};

constexpr std::array<Word<ModelSubtype>, 6> kSubtypes = {{
    {"none", ModelSubtype::kNone},
    {"solid", ModelSubtype::kSolidPart},
    {"sheetmetal", ModelSubtype::kSheetmetal},
    {"skeleton", ModelSubtype::kSkeleton},
    {"design", ModelSubtype::kDesignAssembly},
    {"mould", ModelSubtype::kMould},
}};

// The host's feature statuses.
constexpr std::array<Word<int>, 8> kStatuses = {{
    {"invalid", -1},
    {"active", kFeatureActive},
    {"inactive", 1},
    {"family table suppressed", 2},
    {"simplified representation suppressed", 3},
    {"program suppressed", 4},
    {"suppressed", kFeatureSuppressed},
    {"unregenerated", 6},
}};

enum class ParameterType { kReal, kInteger, kBoolean, kString };
constexpr std::array<Word<ParameterType>, 4> kParameterTypes = {{
    {"real", ParameterType::kReal},
    {"integer", ParameterType::kInteger},
    {"boolean", ParameterType::kBoolean},
    {"string", ParameterType::kString},
}};

template <typename Words>
std::string List(const Words& words) {
    std::string list;
    for (const auto& word : words) list += (list.empty() ? "" : ", ") + std::string(word.text);
    return list;
}

// ---- Reading

// A value with the way to it, so that an error can name its place.
class Node {
public:
    Node(const Json& value, const std::string& file) : value_(value), file_(file) {}
    Node(const Json& value, const Node& parent, std::string_view key)
        : value_(value), file_(parent.file_), parent_(&parent), key_(key) {}
    Node(const Json& value, const Node& parent, std::size_t index)
        : value_(value), file_(parent.file_), parent_(&parent), index_(index) {}

    const Json& Value() const { return value_; }

    [[noreturn]] void Fail(const std::string& expected) const {
        const std::string path = Path();
        throw ModelFileError(file_ + ": " + (path.empty() ? "/" : path) + ": expected " + expected);
    }

    std::string Text() const {
        if (!value_.is_string()) Fail("a text");
        return value_.get<std::string>();
    }
    std::wstring WideText(std::size_t longest) const {
        std::wstring text = Wide(Text());
        if (text.size() > longest) Fail("at most " + std::to_string(longest) + " characters");
        return text;
    }
    bool Truth() const {
        if (!value_.is_boolean()) Fail("true or false");
        return value_.get<bool>();
    }
    double Real() const {
        if (!value_.is_number()) Fail("a number");
        return value_.get<double>();
    }
    long long Integer(long long minimum, long long maximum) const {
        const bool isHuge =
            value_.is_number_unsigned() &&
            value_.get<std::uint64_t>() > std::uint64_t{std::numeric_limits<std::int64_t>::max()};
        const bool fits = value_.is_number_integer() && !isHuge && value_.get<long long>() >= minimum &&
                          value_.get<long long>() <= maximum;
        if (!fits) Fail("a whole number from " + std::to_string(minimum) + " to " + std::to_string(maximum));
        return value_.get<long long>();
    }
    int Int(int minimum) const { return static_cast<int>(Integer(minimum, std::numeric_limits<int>::max())); }

    template <typename Value, std::size_t size>
    Value OneOf(const std::array<Word<Value>, size>& words) const {
        const std::string text = Text();
        const auto found = std::ranges::find(words, std::string_view(text), &Word<Value>::text);
        if (found == words.end()) Fail("one of " + List(words));
        return found->value;
    }

    template <typename Visit>
    void ForEach(Visit visit) const {
        if (!value_.is_array()) Fail("a list");
        for (std::size_t i = 0; i < value_.size(); ++i) visit(Node(value_[i], *this, i));
    }

    template <std::size_t size>
    std::array<double, size> Numbers() const {
        if (!value_.is_array() || value_.size() != size)
            Fail("a list of " + std::to_string(size) + " numbers");
        std::array<double, size> numbers{};
        for (std::size_t i = 0; i < size; ++i) numbers[i] = Node(value_[i], *this, i).Real();
        return numbers;
    }

private:
    std::string Path() const {
        if (parent_ == nullptr) return {};
        return parent_->Path() + "/" + (key_.empty() ? std::to_string(index_) : std::string(key_));
    }

    const Json& value_;
    const std::string& file_;
    const Node* parent_ = nullptr;
    std::string_view key_;
    std::size_t index_ = 0;
};

// An object whose every key somebody has to ask for: what is left over at the end is an error.
class Entries {
public:
    explicit Entries(const Node& node) : node_(node) {
        if (!node.Value().is_object()) node.Fail("an object");
    }

    template <typename Read>
    bool Optional(std::string_view key, Read read) {
        const auto found = node_.Value().find(key);
        if (found == node_.Value().end()) return false;
        ++asked_;
        read(Node(*found, node_, key));
        return true;
    }
    template <typename Read>
    void Required(std::string_view key, Read read) {
        if (!Optional(key, read)) node_.Fail("the key \"" + std::string(key) + "\"");
    }
    // `known`: all keys, for finding the one that nobody asked for.
    void Close(std::initializer_list<std::string_view> known) const {
        if (asked_ == node_.Value().size()) return;
        for (const auto& [key, value] : node_.Value().items())
            if (std::ranges::find(known, std::string_view(key)) == known.end())
                node_.Fail("no key \"" + key + "\" here");
        node_.Fail("each key once");
    }

private:
    const Node& node_;
    std::size_t asked_ = 0;
};

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

std::string ReadBytes(const fs::path& file, const std::string& label) {
    std::ifstream stream(file, std::ios::binary);
    if (!stream) throw std::system_error(std::make_error_code(std::errc::io_error), label);
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

Json Parse(const std::string& bytes, const std::string& label) {
    try {
        return Json::parse(bytes);
    } catch (const Json::parse_error& error) {
        const std::size_t end = std::min(error.byte == 0 ? 0 : error.byte - 1, bytes.size());
        const auto line =
            1 + std::count(bytes.begin(), bytes.begin() + static_cast<std::ptrdiff_t>(end), '\n');
        // The library's own words, without its number and position.
        std::string what = error.what();
        if (const std::size_t dash = what.find(": syntax error"); dash != std::string::npos)
            what = what.substr(dash + 2);
        throw ModelFileError(label + ":" + std::to_string(line) + ": expected JSON: " + what);
    }
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
        root.Optional("surfaces", [&](const Node& node) { ReadList(node, &ModelReader::ReadSurface); });
        root.Optional("coordinateSystems",
                      [&](const Node& node) { ReadList(node, &ModelReader::ReadSystem); });
        root.Optional("sheets", [&](const Node& node) { ReadList(node, &ModelReader::ReadSheet); });
        root.Optional("currentSheet", [&](const Node& node) {
            model_.currentSheet_ =
                static_cast<int>(node.Integer(1, static_cast<long long>(model_.sheets_.size())));
        });
        root.Optional("models", [&](const Node& node) {
            node.ForEach([&](const Node& entry) { AddTie(ModelTie::Role::kShownModel, 0, entry); });
        });
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
            id = node.Int(1);
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
        entries.Close({"name", "type", "value", "relationDriven", "locked"});
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

    void ReadFeature(const Node& node) {
        Entries entries(node);
        Feature feature;
        feature.id = ReadId(entries);
        const bool hasModel = entries.Optional("model", [&](const Node& name) {
            AddTie(ModelTie::Role::kComponent, model_.features_.size(), name);
        });
        const bool hasType = entries.Optional("type", [&](const Node& type) { feature.type = type.Int(1); });
        if (hasModel == hasType) node.Fail("either \"model\" or \"type\"");
        entries.Optional("status", [&](const Node& word) { feature.status = word.OneOf(kStatuses); });
        entries.Optional("statusFlags", [&](const Node& flags) {
            feature.statusFlags =
                static_cast<unsigned>(flags.Integer(0, std::numeric_limits<unsigned>::max()));
        });
        entries.Optional("internal", [&](const Node& truth) { feature.isVisible = !truth.Truth(); });
        entries.Optional("hidden", [&](const Node& truth) { feature.isHidden = truth.Truth(); });
        ReadPlacing(entries, feature.placement);
        entries.Close(
            {"id", "model", "type", "status", "statusFlags", "internal", "hidden", "origin", "placement"});
        model_.InsertFeatureWithId(std::move(feature));
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
        entries.Close({"id", "minimum", "maximum"});
        model_.surfaces_.push_back(std::make_unique<SurfaceItem>(surface));
    }

    void ReadSystem(const Node& node) {
        Entries entries(node);
        CoordinateSystem system;
        system.id = ReadId(entries);
        entries.Required("name", [&](const Node& name) { system.name = name.WideText(kLongestName); });
        ReadPlacing(entries, system.placement);
        entries.Close({"id", "name", "origin", "placement"});
        model_.coordinateSystems_.push_back(std::move(system));
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
        entries.Close({"size", "name", "scale", "format"});
        model_.sheets_.push_back(std::move(sheet));
    }

    void ReadView(const Node& node) {
        Entries entries(node);
        DrawingView view;
        view.id = ReadId(entries);
        entries.Required("sheet", [&](const Node& sheet) {
            view.sheet = static_cast<int>(sheet.Integer(1, static_cast<long long>(model_.sheets_.size())));
        });
        entries.Required(
            "model", [&](const Node& name) { AddTie(ModelTie::Role::kView, model_.views_.size(), name); });
        entries.Optional("scale", [&](const Node& scale) { view.scale = ReadScale(scale); });
        entries.Optional("name", [&](const Node& name) { view.name = name.WideText(kLongestName); });
        entries.Close({"id", "sheet", "model", "scale", "name"});
        model_.views_.push_back(std::move(view));
    }

    SimModel& model_;
    std::vector<ModelTie>& ties_;
    std::set<int> ids_;
};

ModelFileContent ReadModelFile(const fs::path& file, std::wstring_view name, ModelKind kind) {
    const std::string label = Utf8(file.filename().wstring());
    const Json json = Parse(ReadBytes(file, label), label);
    const Node node(json, label);
    Entries root(node);
    root.Required("format", [](const Node& format) {
        if (format.Text() != kFormat) format.Fail("\"" + std::string(kFormat) + "\"");
    });
    root.Required("version", [](const Node& version) { version.Integer(kFormatVersion, kFormatVersion); });
    std::wstring modelName = UpperName(name);
    root.Required("name", [&](const Node& text) {
        std::wstring own = Wide(text.Text());
        if (UpperName(own) == modelName) modelName = std::move(own);
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
    root.Close({"format", "version", "name", "kind", "subtype", "readOnly", "bodies", "parameters", "generic",
                "familyColumns", "features", "surfaces", "coordinateSystems", "sheets", "currentSheet",
                "models", "views", "assembly"});
    return content;
}

void TieModels(SimModel& model, const ModelTie& tie, SimModel* other) {
    ModelReader::Tie(model, tie, other);
}

// ---- Writing

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
        for (const auto& surface : model_.surfaces_)
            root["surfaces"].push_back({{"id", surface->id},
                                        {"minimum", Write(surface->box.minimum)},
                                        {"maximum", Write(surface->box.maximum)}});
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
