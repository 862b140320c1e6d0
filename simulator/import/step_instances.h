// The instances of a STEP file that say what is made of what, and where it stands.
//
// The many that describe shapes are passed over. Points and directions are among them, so that the few which
// place a component are asked for by their numbers in a further reading.

#pragma once

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

#include "simulator/import/step_reader.h"

namespace sim {

using StepIds = std::unordered_set<std::uint64_t>;

// `keyword` is that of the family: a formation with a source is a formation.
struct StepEntity {
    std::string_view keyword;
    std::vector<StepValue> values;
};

// Usually of one entity; several are the parts of a complex one.
struct StepInstance {
    std::size_t line = 0;
    std::vector<StepEntity> entities;
};

class StepInstances {
public:
    explicit StepInstances(std::filesystem::path file);

    // Reads the structure. Throws ImportError.
    void ReadStructure();
    // Reads those of these numbers, whatever they are. Throws ImportError.
    void ReadById(const StepIds& ids);

    // Numbers of all instances of a family, as they follow in the file.
    const std::vector<std::uint64_t>& Ids(std::string_view keyword) const;
    // Null: no such instance, or of another kind.
    const StepEntity* Find(std::uint64_t id, std::string_view keyword) const;
    // The entity that a value of an instance refers to. Throws ImportError with the line of the instance.
    const StepEntity& Need(std::uint64_t user, const StepValue& value, std::string_view keyword) const;
    // The entity of an instance with at least so many values. Throws ImportError.
    const StepEntity& Need(std::uint64_t id, std::string_view keyword, std::size_t values) const;
    // 0: the value refers to nothing.
    static std::uint64_t Reference(const StepValue& value);

    std::size_t Line(std::uint64_t id) const;
    const std::string& Label() const { return label_; }
    [[noreturn]] void Fail(std::uint64_t id, const std::string& expected) const;

private:
    void Keep(StepReader& reader, std::uint64_t id, bool isWanted);

    std::filesystem::path file_;
    std::string label_;
    std::unordered_map<std::uint64_t, StepInstance> instances_;
    std::unordered_map<std::string_view, std::vector<std::uint64_t>> ids_;
};

}  // namespace sim
