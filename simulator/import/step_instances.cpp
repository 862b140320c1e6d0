#include "simulator/import/step_instances.h"

#include <algorithm>
#include <array>
#include <utility>

#include "simulator/import/import_error.h"
#include "simulator/report/utf8.h"

namespace sim {

namespace {

struct StepKeyword {
    std::string_view text;
    std::string_view family;
    bool isStructure = true;  // else kept by number only
    std::size_t values = 0;   // that an entity standing alone has at least
};

constexpr std::string_view kShapes = "SHAPE_REPRESENTATION";

// clang-format off
constexpr std::array kKeywords = {
    StepKeyword{"PRODUCT", "PRODUCT", true, 3},
    StepKeyword{"PRODUCT_DEFINITION_FORMATION", "PRODUCT_DEFINITION_FORMATION", true, 3},
    StepKeyword{"PRODUCT_DEFINITION_FORMATION_WITH_SPECIFIED_SOURCE", "PRODUCT_DEFINITION_FORMATION", true, 3},
    StepKeyword{"PRODUCT_DEFINITION", "PRODUCT_DEFINITION", true, 3},
    StepKeyword{"PRODUCT_DEFINITION_WITH_ASSOCIATED_DOCUMENTS", "PRODUCT_DEFINITION", true, 3},
    StepKeyword{"NEXT_ASSEMBLY_USAGE_OCCURRENCE", "NEXT_ASSEMBLY_USAGE_OCCURRENCE", true, 5},
    StepKeyword{"PRODUCT_DEFINITION_SHAPE", "PRODUCT_DEFINITION_SHAPE", true, 3},
    StepKeyword{"SHAPE_DEFINITION_REPRESENTATION", "SHAPE_DEFINITION_REPRESENTATION", true, 2},
    StepKeyword{"CONTEXT_DEPENDENT_SHAPE_REPRESENTATION", "CONTEXT_DEPENDENT_SHAPE_REPRESENTATION", true, 2},
    StepKeyword{"REPRESENTATION_RELATIONSHIP", "REPRESENTATION_RELATIONSHIP"},
    StepKeyword{"REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION", "REPRESENTATION_RELATIONSHIP_WITH_TRANSFORMATION"},
    StepKeyword{"ITEM_DEFINED_TRANSFORMATION", "ITEM_DEFINED_TRANSFORMATION", true, 4},
    StepKeyword{"SHAPE_REPRESENTATION", kShapes},
    StepKeyword{"ADVANCED_BREP_SHAPE_REPRESENTATION", kShapes},
    StepKeyword{"FACETED_BREP_SHAPE_REPRESENTATION", kShapes},
    StepKeyword{"MANIFOLD_SURFACE_SHAPE_REPRESENTATION", kShapes},
    StepKeyword{"GEOMETRICALLY_BOUNDED_SURFACE_SHAPE_REPRESENTATION", kShapes},
    StepKeyword{"GEOMETRICALLY_BOUNDED_WIREFRAME_SHAPE_REPRESENTATION", kShapes},
    StepKeyword{"EDGE_BASED_WIREFRAME_SHAPE_REPRESENTATION", kShapes},
    StepKeyword{"SHELL_BASED_WIREFRAME_SHAPE_REPRESENTATION", kShapes},
    StepKeyword{"TESSELLATED_SHAPE_REPRESENTATION", kShapes},
    StepKeyword{"GLOBAL_UNIT_ASSIGNED_CONTEXT", "GLOBAL_UNIT_ASSIGNED_CONTEXT"},
    StepKeyword{"LENGTH_UNIT", "LENGTH_UNIT"},
    StepKeyword{"SI_UNIT", "SI_UNIT"},
    StepKeyword{"CONVERSION_BASED_UNIT", "CONVERSION_BASED_UNIT"},
    StepKeyword{"LENGTH_MEASURE_WITH_UNIT", "MEASURE_WITH_UNIT"},
    StepKeyword{"MEASURE_WITH_UNIT", "MEASURE_WITH_UNIT"},
    StepKeyword{"AXIS2_PLACEMENT_3D", "AXIS2_PLACEMENT_3D", false, 4},
    StepKeyword{"CARTESIAN_POINT", "CARTESIAN_POINT", false, 2},
    StepKeyword{"DIRECTION", "DIRECTION", false, 2},
};
// clang-format on

// Null: an entity that is never kept.
const StepKeyword* KeywordOf(std::string_view text) {
    static const auto kByText = [] {
        std::unordered_map<std::string_view, const StepKeyword*> table;
        for (const StepKeyword& keyword : kKeywords) table[keyword.text] = &keyword;
        return table;
    }();
    const auto found = kByText.find(text);
    return found == kByText.end() ? nullptr : found->second;
}

}  // namespace

StepInstances::StepInstances(std::filesystem::path file)
    : file_(std::move(file)), label_(Utf8(file_.filename().wstring())) {}

void StepInstances::ReadStructure() {
    StepReader reader(file_);
    while (const auto id = reader.NextInstance()) Keep(reader, *id, false);
}

void StepInstances::ReadById(const StepIds& ids) {
    if (ids.empty()) return;
    StepReader reader(file_);
    while (const auto id = reader.NextInstance()) {
        if (ids.contains(*id) && !instances_.contains(*id))
            Keep(reader, *id, true);
        else
            reader.SkipStatement();
    }
}

void StepInstances::Keep(StepReader& reader, std::uint64_t id, bool isWanted) {
    StepInstance instance{reader.Line(), {}};
    const bool isComplex = reader.Opens('(');
    do {
        if (isComplex && reader.Opens(')')) break;
        const StepKeyword* keyword = KeywordOf(reader.Keyword());
        const bool isKept = keyword != nullptr && (keyword->isStructure || isWanted);
        if (!isKept && !isComplex) return reader.SkipStatement();
        if (!isKept) {
            reader.SkipValues();
            continue;
        }
        instance.entities.push_back({keyword->family, reader.Values()});
        if (!isComplex && instance.entities.back().values.size() < keyword->values)
            reader.Fail(std::string(keyword->text) + " with at least " + std::to_string(keyword->values) +
                        " values");
    } while (isComplex);
    reader.EndStatement();
    if (instance.entities.empty()) return;
    for (const StepEntity& entity : instance.entities) ids_[entity.keyword].push_back(id);
    if (!instances_.try_emplace(id, std::move(instance)).second)
        reader.Fail("a number other than #" + std::to_string(id) + ", which an instance has already");
}

const std::vector<std::uint64_t>& StepInstances::Ids(std::string_view keyword) const {
    static const std::vector<std::uint64_t> kNone;
    const auto found = ids_.find(keyword);
    return found == ids_.end() ? kNone : found->second;
}

const StepEntity* StepInstances::Find(std::uint64_t id, std::string_view keyword) const {
    const auto found = instances_.find(id);
    if (found == instances_.end()) return nullptr;
    const auto entity = std::ranges::find(found->second.entities, keyword, &StepEntity::keyword);
    return entity == found->second.entities.end() ? nullptr : &*entity;
}

const StepEntity& StepInstances::Need(std::uint64_t user, const StepValue& value,
                                      std::string_view keyword) const {
    const std::uint64_t id = Reference(value);
    const StepEntity* entity = Find(id, keyword);
    if (entity == nullptr)
        Fail(user, id == 0 ? "a reference to " + std::string(keyword)
                           : std::string(keyword) + " under #" + std::to_string(id));
    return *entity;
}

const StepEntity& StepInstances::Need(std::uint64_t id, std::string_view keyword, std::size_t values) const {
    const StepEntity* entity = Find(id, keyword);
    if (entity == nullptr || entity->values.size() < values)
        Fail(id, std::string(keyword) + " with at least " + std::to_string(values) + " values");
    return *entity;
}

std::uint64_t StepInstances::Reference(const StepValue& value) {
    const auto* reference = std::get_if<StepReference>(&value.content);
    return reference == nullptr ? 0 : reference->id;
}

std::size_t StepInstances::Line(std::uint64_t id) const {
    const auto found = instances_.find(id);
    return found == instances_.end() ? 0 : found->second.line;
}

void StepInstances::Fail(std::uint64_t id, const std::string& expected) const {
    throw ImportError(label_, Line(id), expected);
}

}  // namespace sim
