#include "simulator/import/step_structure.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <map>
#include <optional>
#include <string_view>
#include <unordered_map>
#include <utility>
#include <vector>

#include "simulator/import/import_error.h"
#include "simulator/import/step_instances.h"
#include "simulator/import/step_text.h"

namespace sim {

namespace {

using StepId = std::uint64_t;

struct LengthUnit {
    double millimetres;
    std::wstring_view units;  // the unit system that has it
};

// The first is that of a new model.
constexpr std::array<LengthUnit, 5> kLengthUnits = {{
    {1, L""},
    {10, L"Centimeter Gram Second (CGS)"},
    {1000, L"Meter Kilogram Second (MKS)"},
    {25.4, L"Inch Pound Second (IPS)"},
    {304.8, L"Foot Pound Second (FPS)"},
}};

// Numbers beyond it are none that a designer has written.
constexpr double kFarthest = 1e15;

const std::string* TextIn(const StepValue& value) {
    return std::get_if<std::string>(&value.content);
}

std::string_view WordIn(const StepValue& value) {
    const auto* word = std::get_if<StepWord>(&value.content);
    return word == nullptr ? std::string_view() : std::string_view(word->text);
}

double Prefix(std::string_view word) {
    constexpr std::array<std::pair<std::string_view, double>, 9> kPrefixes = {{
        {"MICRO", 1e-6},
        {"MILLI", 1e-3},
        {"CENTI", 1e-2},
        {"DECI", 1e-1},
        {"DECA", 1e1},
        {"HECTO", 1e2},
        {"KILO", 1e3},
        {"MEGA", 1e6},
        {"NANO", 1e-9},
    }};
    const auto found = std::ranges::find(kPrefixes, word, &std::pair<std::string_view, double>::first);
    return found == kPrefixes.end() ? 1 : found->second;
}

// What the arithmetic leaves of 0 and 1.
double CleanAxis(double number) {
    if (std::abs(number - std::round(number)) > 1e-12) return number;
    return std::round(number) + 0.0;
}

double CleanLength(double number) {
    const double rounded = std::round(number * 1e6) / 1e6;
    return std::abs(number - rounded) < 1e-9 ? rounded + 0.0 : number;
}

Vec3 Cross(const Vec3& a, const Vec3& b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

double Length(const Vec3& v) {
    return std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
}

Vec3 Scaled(const Vec3& v, double factor) {
    return {v.x * factor, v.y * factor, v.z * factor};
}

// The foot of surveyors is the common one here.
bool IsAbout(double one, double other) {
    return std::abs(one - other) < 1e-5 * other;
}

class StepStructureReader {
public:
    explicit StepStructureReader(const std::filesystem::path& file) : step_(file) {}

    ImportedStructure Read() {
        structure_.file = step_.Label();
        step_.ReadStructure();
        FindProducts();
        FindShapes();
        FindUsages();
        FindPlacements();
        Build();
        return std::move(structure_);
    }

private:
    // One use of a product in an assembly.
    struct Usage {
        StepId id;
        StepId assembly, component;  // product definitions
        StepId relation = 0;         // between their shapes; 0: none
    };

    // ---- What there is

    void FindProducts() {
        for (const StepId id : step_.Ids("PRODUCT_DEFINITION")) {
            const StepEntity& definition = step_.Need(id, "PRODUCT_DEFINITION", 3);
            const StepEntity& formation =
                step_.Need(id, definition.values[2], "PRODUCT_DEFINITION_FORMATION");
            products_[id] =
                &step_.Need(StepInstances::Reference(definition.values[2]), formation.values[2], "PRODUCT");
        }
        if (products_.empty())
            throw ImportError(step_.Label() + ": expected a product structure (PRODUCT_DEFINITION)");
    }

    void FindShapes() {
        for (const StepId id : step_.Ids("PRODUCT_DEFINITION_SHAPE"))
            shapeOf_[id] = StepInstances::Reference(step_.Need(id, "PRODUCT_DEFINITION_SHAPE", 3).values[2]);
        for (const StepId id : step_.Ids("SHAPE_DEFINITION_REPRESENTATION")) {
            const StepEntity& entity = step_.Need(id, "SHAPE_DEFINITION_REPRESENTATION", 2);
            const auto shape = shapeOf_.find(StepInstances::Reference(entity.values[0]));
            if (shape != shapeOf_.end() && products_.contains(shape->second))
                representations_[shape->second].push_back(StepInstances::Reference(entity.values[1]));
        }
    }

    void FindUsages() {
        constexpr std::string_view kUsage = "NEXT_ASSEMBLY_USAGE_OCCURRENCE";
        std::unordered_map<StepId, std::size_t> places;
        for (const StepId id : step_.Ids(kUsage)) {
            const StepEntity& entity = step_.Need(id, kUsage, 5);
            for (const unsigned side : {3U, 4U})
                (void)step_.Need(id, entity.values[side], "PRODUCT_DEFINITION");
            places[id] = usages_.size();
            usages_.push_back(
                {id, StepInstances::Reference(entity.values[3]), StepInstances::Reference(entity.values[4])});
        }
        constexpr std::string_view kInContext = "CONTEXT_DEPENDENT_SHAPE_REPRESENTATION";
        for (const StepId id : step_.Ids(kInContext)) {
            const StepEntity& entity = step_.Need(id, kInContext, 2);
            const auto shape = shapeOf_.find(StepInstances::Reference(entity.values[1]));
            if (shape == shapeOf_.end()) continue;
            const auto usage = places.find(shape->second);
            if (usage != places.end())
                usages_[usage->second].relation = StepInstances::Reference(entity.values[0]);
        }
    }

    // ---- Where it stands: two more readings

    const StepEntity* TransformationOf(const Usage& usage) const {
        const StepEntity* relation =
            step_.Find(usage.relation, "REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION");
        if (relation == nullptr || relation->values.empty()) return nullptr;
        return step_.Find(StepInstances::Reference(relation->values[0]), "ITEM_DEFINED_TRANSFORMATION");
    }

    void FindPlacements() {
        StepIds placements;
        for (const Usage& usage : usages_)
            if (const StepEntity* entity = TransformationOf(usage); entity != nullptr)
                for (const unsigned side : {2U, 3U})
                    placements.insert(StepInstances::Reference(entity->values[side]));
        step_.ReadById(placements);
        StepIds parts;
        for (const StepId id : step_.Ids("AXIS2_PLACEMENT_3D"))
            for (const StepValue& value : step_.Need(id, "AXIS2_PLACEMENT_3D", 4).values)
                if (StepInstances::Reference(value) != 0) parts.insert(StepInstances::Reference(value));
        step_.ReadById(parts);
    }

    Vec3 Coordinates(StepId user, const StepValue& value, std::string_view keyword) const {
        const StepEntity& entity = step_.Need(user, value, keyword);
        const auto* list = std::get_if<std::vector<StepValue>>(&entity.values[1].content);
        std::array<double, 3> numbers{};
        bool isPoint = list != nullptr && list->size() == numbers.size();
        for (std::size_t i = 0; isPoint && i < numbers.size(); ++i) {
            const auto* number = std::get_if<double>(&(*list)[i].content);
            isPoint = number != nullptr && std::abs(*number) <= kFarthest;
            if (isPoint) numbers[i] = *number;
        }
        if (!isPoint) step_.Fail(StepInstances::Reference(value), "three numbers between -1e15 and 1e15");
        return {numbers[0], numbers[1], numbers[2]};
    }

    // The axes as rows and the origin, in units of which `scale` makes the one of the file.
    Matrix Frame(StepId user, const StepValue& value, double scale) const {
        const StepEntity& entity = step_.Need(user, value, "AXIS2_PLACEMENT_3D");
        const StepId id = StepInstances::Reference(value);
        const auto direction = [&](const StepValue& from, const Vec3& usual) {
            return StepInstances::Reference(from) == 0 ? usual : Coordinates(id, from, "DIRECTION");
        };
        const Vec3 origin = Scaled(Coordinates(id, entity.values[1], "CARTESIAN_POINT"), scale);
        Vec3 z = direction(entity.values[2], {0, 0, 1});
        const bool isAlongX = std::abs(z.x) > 0.999 * Length(z);
        const Vec3 x = direction(entity.values[3], isAlongX ? Vec3{0, 1, 0} : Vec3{1, 0, 0});
        Vec3 y = Cross(z, x);
        if (!(Length(y) > 1e-9 * Length(z) * Length(x))) step_.Fail(id, "two directions that differ");
        y = Scaled(y, 1 / Length(y));
        z = Scaled(z, 1 / Length(z));
        const Vec3 square = Cross(y, z);
        return {{{square.x, square.y, square.z, 0},
                 {y.x, y.y, y.z, 0},
                 {z.x, z.y, z.z, 0},
                 {origin.x, origin.y, origin.z, 1}}};
    }

    // Nothing: the file does not say where the component stands, or not in a way that is read here.
    std::optional<Matrix> PlacementOf(const Usage& usage) {
        const StepEntity* transformation = TransformationOf(usage);
        const StepEntity* relation = step_.Find(usage.relation, "REPRESENTATION_RELATIONSHIP");
        if (transformation == nullptr || relation == nullptr || relation->values.size() < 4)
            return std::nullopt;
        const StepId first = StepInstances::Reference(relation->values[2]);
        const StepId second = StepInstances::Reference(relation->values[3]);
        const double unit = SystemFor(UnitOf(usage.assembly)).millimetres;
        const double firstScale = Millimetres(first).value_or(unit) / unit;
        const double secondScale = Millimetres(second).value_or(unit) / unit;
        const Matrix firstFrame = Frame(usage.relation, transformation->values[2], firstScale);
        const Matrix secondFrame = Frame(usage.relation, transformation->values[3], secondScale);
        // The first side is the component's; some programs turn it round.
        const bool isTurned = Shows(usage.assembly, first) && !Shows(usage.assembly, second);
        Matrix placement = isTurned ? Product(*Inverse(secondFrame), firstFrame)
                                    : Product(*Inverse(firstFrame), secondFrame);
        for (std::size_t row = 0; row < 4; ++row)
            for (double& number : placement[row]) number = row == 3 ? CleanLength(number) : CleanAxis(number);
        return placement;
    }

    bool Shows(StepId product, StepId representation) const {
        const auto found = representations_.find(product);
        return found != representations_.end() &&
               std::ranges::find(found->second, representation) != found->second.end();
    }

    // ---- Units

    // Of a product's own coordinates.
    double UnitOf(StepId product) {
        const auto found = representations_.find(product);
        if (found != representations_.end())
            for (const StepId representation : found->second)
                if (const std::optional<double> unit = Millimetres(representation)) return *unit;
        return kLengthUnits.front().millimetres;
    }

    // A unit that no system has becomes millimetres.
    static const LengthUnit& SystemFor(double millimetres) {
        for (const LengthUnit& unit : kLengthUnits)
            if (IsAbout(unit.millimetres, millimetres)) return unit;
        return kLengthUnits.front();
    }

    // The unit of a representation; nothing when it has none.
    std::optional<double> Millimetres(StepId representation) {
        const auto [known, isNew] = units_.try_emplace(representation);
        if (!isNew) return known->second;
        const StepEntity* shape = step_.Find(representation, "SHAPE_REPRESENTATION");
        if (shape == nullptr || shape->values.size() < 3) return std::nullopt;
        const StepEntity* context =
            step_.Find(StepInstances::Reference(shape->values[2]), "GLOBAL_UNIT_ASSIGNED_CONTEXT");
        const auto* units = context == nullptr || context->values.empty()
                                ? nullptr
                                : std::get_if<std::vector<StepValue>>(&context->values[0].content);
        if (units == nullptr) return std::nullopt;
        for (const StepValue& unit : *units)
            if (step_.Find(StepInstances::Reference(unit), "LENGTH_UNIT") != nullptr)
                known->second = UnitValue(StepInstances::Reference(unit), 0);
        return known->second;
    }

    std::optional<double> UnitValue(StepId id, int depth) const {
        if (const StepEntity* si = step_.Find(id, "SI_UNIT"); si != nullptr && si->values.size() >= 2)
            return 1000 * Prefix(WordIn(si->values[si->values.size() - 2]));
        const StepEntity* converted = step_.Find(id, "CONVERSION_BASED_UNIT");
        if (converted == nullptr || converted->values.size() < 2 || depth > 4) return std::nullopt;
        const StepEntity& measure = step_.Need(id, converted->values[1], "MEASURE_WITH_UNIT");
        const auto* factor =
            measure.values.empty() ? nullptr : std::get_if<double>(&measure.values[0].content);
        if (factor == nullptr || !(*factor > 0) || measure.values.size() < 2)
            step_.Fail(StepInstances::Reference(converted->values[1]), "a length above 0 and its unit");
        const auto unit = UnitValue(StepInstances::Reference(measure.values[1]), depth + 1);
        return unit ? std::optional(*unit * *factor) : std::nullopt;
    }

    // ---- The result

    // Documents and the like are products without a shape that nothing is made of.
    bool IsModel(StepId product) const {
        return inUse_.contains(product) || representations_.contains(product);
    }

    void Build() {
        for (const Usage& usage : usages_) inUse_.insert({usage.assembly, usage.component});
        for (const auto& [shape, product] : shapeOf_)
            if (products_.contains(product)) inUse_.insert(product);
        const bool isAnyInUse = !inUse_.empty();
        ChooseRawBytes();
        std::size_t leftOut = 0;
        for (const StepId id : step_.Ids("PRODUCT_DEFINITION")) {
            if (isAnyInUse && !IsModel(id)) {
                ++leftOut;
                continue;
            }
            places_[id] = structure_.products.size();
            structure_.products.push_back(MakeProduct(id));
        }
        if (isConverted_)
            structure_.notes.push_back(
                "lengths are converted into millimetres: no unit system has their unit");
        if (leftOut > 0)
            structure_.notes.push_back("products left out, as they have neither a shape nor a place: " +
                                       std::to_string(leftOut));
        std::size_t unplaced = 0;
        for (const Usage& usage : usages_) unplaced += AddComponent(usage) ? 0 : 1;
        if (unplaced > 0)
            structure_.notes.push_back(std::to_string(unplaced) + " of " + std::to_string(usages_.size()) +
                                       " components stand at the origin: the file does not place them by "
                                       "ITEM_DEFINED_TRANSFORMATION");
    }

    void ChooseRawBytes() {
        std::vector<std::string_view> texts;
        for (const auto& [id, product] : products_)
            for (const StepValue& value : product->values)
                if (const std::string* text = TextIn(value)) texts.push_back(*text);
        rawBytes_ = RawBytesOf(texts);
        if (rawBytes_ == RawBytes::kGbk) structure_.notes.push_back("names are read as GBK");
        if (rawBytes_ == RawBytes::kLatin1)
            structure_.notes.push_back("names are neither UTF-8 nor GBK and are read as Latin-1");
    }

    ImportedProduct MakeProduct(StepId id) {
        const auto text = [this](const StepValue& value) {
            const std::string* raw = TextIn(value);
            return raw == nullptr ? std::wstring() : StepText(*raw, rawBytes_);
        };
        const StepEntity& product = *products_[id];
        const std::wstring number = text(product.values[0]);
        ImportedProduct made;
        made.name = text(product.values[1]);
        if (made.name.find_first_not_of(L' ') == std::wstring::npos) made.name = number;
        made.line = step_.Line(id);
        if (!number.empty() && number != made.name) made.parameters.emplace_back(L"PRODUCT_ID", number);
        if (const std::wstring description = text(product.values[2]); !description.empty())
            made.parameters.emplace_back(L"DESCRIPTION", description);
        const LengthUnit& unit = SystemFor(UnitOf(id));
        if (!IsAbout(unit.millimetres, UnitOf(id))) isConverted_ = true;
        made.units = unit.units;
        return made;
    }

    // False: where it stands is not known.
    bool AddComponent(const Usage& usage) {
        ImportedProduct& assembly = structure_.products[places_[usage.assembly]];
        assembly.kind = ModelKind::kAssembly;
        assembly.subtype = ModelSubtype::kDesignAssembly;
        const std::optional<Matrix> placement = PlacementOf(usage);
        assembly.components.push_back({places_[usage.component], 1, placement.value_or(IdentityMatrix())});
        return placement.has_value();
    }

    StepInstances step_;
    ImportedStructure structure_;
    RawBytes rawBytes_ = RawBytes::kUtf8;
    bool isConverted_ = false;                                         // lengths, into millimetres
    std::unordered_map<StepId, const StepEntity*> products_;           // by product definition
    std::unordered_map<StepId, StepId> shapeOf_;                       // what a shape belongs to
    std::unordered_map<StepId, std::vector<StepId>> representations_;  // by product definition
    std::unordered_map<StepId, std::optional<double>> units_;          // by representation
    std::vector<Usage> usages_;
    StepIds inUse_;
    std::unordered_map<StepId, std::size_t> places_;  // in the structure, by product definition
};

}  // namespace

ImportedStructure ReadStepStructure(const std::filesystem::path& file) {
    return StepStructureReader(file).Read();
}

}  // namespace sim
