// Model-wide data beside the parameters: relations, dimensions, units, materials.

#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace sim {

// ---- Relations

// kOrdinary: solved at the start of a regeneration; kPost: after it.
enum class RelationKind { kOrdinary, kPost };

// A set may exist without a line.
struct RelationSet {
    bool exists = false;
    std::vector<std::wstring> lines;
};

struct Dimension {
    std::wstring symbol;  // "d1"
    double value = 0;
    bool isAngle = false;  // in degrees, whatever the units of the model
    bool isReference = false;
    std::vector<std::wstring> text = {L"@D"};  // its lines; @D stands for the value
    int valueDisplay = 0;                      // the host's number for how the value shows
};

// ---- Units

enum class UnitQuantity { kLength, kMass, kForce, kTime, kTemperature };

// A basic unit: every model has all of them.
struct BasicUnit {
    std::wstring_view name;
    UnitQuantity quantity;
    double inMillimetres = 0;  // of a unit of length
};

// Null: the host has no such unit. Letter case counts, as "g" and "G" differ.
const BasicUnit* FindBasicUnit(std::wstring_view name);

// Basic units by their names. Of mass and force a system rests on one, and the other one is empty.
struct UnitSystem {
    std::wstring name;
    std::wstring length, mass, force, time, temperature;

    bool operator==(const UnitSystem&) const = default;
};

// The systems that every new model has, and the place of the one that it begins with.
const std::vector<UnitSystem>& StandardUnitSystems();
inline constexpr std::size_t kFirstUnitSystem = 2;

// How many units of length of `to` make one of `from`.
double LengthFactor(const UnitSystem& from, const UnitSystem& to);

// ---- Materials of parts

struct Material {
    std::wstring name;
    std::wstring bendTable;  // for sheet metal; empty: it says nothing about that
};

}  // namespace sim
