#include "simulator/cad/model_data.h"

#include <algorithm>
#include <array>

namespace sim {

namespace {

constexpr std::array kBasicUnits = {
    BasicUnit{L"mm", UnitQuantity::kLength, 1},     BasicUnit{L"cm", UnitQuantity::kLength, 10},
    BasicUnit{L"m", UnitQuantity::kLength, 1000},   BasicUnit{L"in", UnitQuantity::kLength, 25.4},
    BasicUnit{L"ft", UnitQuantity::kLength, 304.8}, BasicUnit{L"g", UnitQuantity::kMass},
    BasicUnit{L"kg", UnitQuantity::kMass},          BasicUnit{L"tonne", UnitQuantity::kMass},
    BasicUnit{L"lbm", UnitQuantity::kMass},         BasicUnit{L"N", UnitQuantity::kForce},
    BasicUnit{L"lbf", UnitQuantity::kForce},        BasicUnit{L"sec", UnitQuantity::kTime},
    BasicUnit{L"min", UnitQuantity::kTime},         BasicUnit{L"C", UnitQuantity::kTemperature},
    BasicUnit{L"K", UnitQuantity::kTemperature},    BasicUnit{L"F", UnitQuantity::kTemperature},
};

}  // namespace

const BasicUnit* FindBasicUnit(std::wstring_view name) {
    const auto found = std::ranges::find(kBasicUnits, name, &BasicUnit::name);
    return found == kBasicUnits.end() ? nullptr : &*found;
}

const std::vector<UnitSystem>& StandardUnitSystems() {
    static const std::vector<UnitSystem> systems = {
        {L"Meter Kilogram Second (MKS)", L"m", L"kg", L"", L"sec", L"K"},
        {L"Centimeter Gram Second (CGS)", L"cm", L"g", L"", L"sec", L"C"},
        {L"millimeter Newton Second (mmNs)", L"mm", L"", L"N", L"sec", L"C"},
        {L"millimeter Kilogram Sec (mmKs)", L"mm", L"kg", L"", L"sec", L"C"},
        {L"Foot Pound Second (FPS)", L"ft", L"", L"lbf", L"sec", L"F"},
        {L"Inch Pound Second (IPS)", L"in", L"", L"lbf", L"sec", L"F"},
        {L"Inch lbm Second (Default)", L"in", L"lbm", L"", L"sec", L"F"},
    };
    return systems;
}

double LengthFactor(const UnitSystem& from, const UnitSystem& to) {
    const BasicUnit* old = FindBasicUnit(from.length);
    const BasicUnit* next = FindBasicUnit(to.length);
    return old == nullptr || next == nullptr ? 1 : old->inMillimetres / next->inMillimetres;
}

}  // namespace sim
