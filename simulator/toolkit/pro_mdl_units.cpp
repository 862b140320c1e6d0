#include <ProMdlUnits.h>

#include <algorithm>
#include <iterator>
#include <string>
#include <string_view>
#include <vector>

#include "simulator/memory/host_memory.h"
#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

namespace {

// A model that has units; null, with a violation, for one that has none.
SimModel* FindModelWithUnits(Session& host, const void* handle) {
    SimModel* model = FindModel(host, handle);
    if (model == nullptr) return nullptr;
    if (model->Kind() != ModelKind::kDrawing && model->Kind() != ModelKind::kFormat) return model;
    host.report.Violation("is given a drawing or format, which has no units");
    return nullptr;
}

// A plain handle of units and systems alike: the owner and a name.
template <typename Handle>
bool Fill(Handle& handle, SimModel& model, std::wstring_view name) {
    handle.owner = &model;
    return FillBuffer<wchar_t>(name, handle.name, PRO_NAME_SIZE);
}

std::wstring* PlaceOf(UnitSystem& system, UnitQuantity quantity) {
    switch (quantity) {
        case UnitQuantity::kLength:
            return &system.length;
        case UnitQuantity::kMass:
            return &system.mass;
        case UnitQuantity::kForce:
            return &system.force;
        case UnitQuantity::kTime:
            return &system.time;
        case UnitQuantity::kTemperature:
            break;
    }
    return &system.temperature;
}

// A system of these units; what is missing is that of the system which new models begin with.
ProError MakeSystem(Session& host, const SimModel& model, const ProUnititem* units, std::size_t count,
                    UnitSystem& system) {
    for (std::size_t i = 0; i < count; ++i) {
        const auto name = TextInput(host, units[i].name, PRO_NAME_SIZE);
        const BasicUnit* unit = name ? FindBasicUnit(*name) : nullptr;
        if (unit == nullptr || units[i].owner != &model) {
            host.report.Violation("is given a unit that no host function has filled for this model");
            return PRO_TK_BAD_INPUTS;
        }
        std::wstring* place = PlaceOf(system, unit->quantity);
        if (!place->empty()) return PRO_TK_E_AMBIGUOUS;
        *place = *name;
    }
    const UnitSystem& usual = StandardUnitSystems()[kFirstUnitSystem];
    if (system.length.empty()) system.length = usual.length;
    if (system.time.empty()) system.time = usual.time;
    if (system.temperature.empty()) system.temperature = usual.temperature;
    return PRO_TK_NO_ERROR;
}

}  // namespace

ProError ProUnitInit(ProMdl mdl, ProName unit_name, ProUnititem* unit) {
    static const CallSite kSite("ProUnitInit", {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {mdl, unit_name, Out(unit)}, [&](Session& host) -> ProError {
        SimModel* model = FindModelWithUnits(host, mdl);
        const auto name = TextInput(host, unit_name, PRO_NAME_SIZE);
        if (model == nullptr || !name || unit == nullptr) return PRO_TK_BAD_INPUTS;
        if (FindBasicUnit(*name) == nullptr) return PRO_TK_E_NOT_FOUND;
        return Fill(*unit, *model, *name) ? PRO_TK_NO_ERROR : PRO_TK_GENERAL_ERROR;
    });
}

ProError ProMdlUnitsystemCreate(ProMdl mdl, ProUnitsystemType type, ProName name, ProUnititem* units,
                                ProUnitsystem* new_system) {
    static const CallSite kSite("ProMdlUnitsystemCreate",
                                {PRO_TK_BAD_INPUTS, PRO_TK_E_AMBIGUOUS, PRO_TK_E_FOUND, PRO_TK_CANT_MODIFY});
    return Traced(kSite, {mdl, type, name, units, Out(new_system)}, [&](Session& host) -> ProError {
        SimModel* model = FindModelWithUnits(host, mdl);
        const auto text = TextInput(host, name, PRO_NAME_SIZE);
        const HostBlock* block = host.memory.Find({BlockKind::kArray}, units);
        if (model == nullptr || !text || text->empty() || block == nullptr ||
            block->elementSize != sizeof(ProUnititem))
            return PRO_TK_BAD_INPUTS;
        if (model->IsReadOnly()) return PRO_TK_CANT_MODIFY;
        if (model->FindUnitSystem(*text) != nullptr) return PRO_TK_E_FOUND;
        UnitSystem system;
        system.name = *text;
        if (const ProError status = MakeSystem(host, *model, units, block->count, system);
            status != PRO_TK_NO_ERROR)
            return status;
        const bool fits = type == PRO_UNITSYSTEM_MLT ? system.force.empty() && !system.mass.empty()
                                                     : system.mass.empty() && !system.force.empty();
        if (!fits) return PRO_TK_BAD_INPUTS;
        model->AddUnitSystem(std::move(system));
        if (new_system == nullptr) return PRO_TK_NO_ERROR;
        return Fill(*new_system, *model, *text) ? PRO_TK_NO_ERROR : PRO_TK_GENERAL_ERROR;
    });
}

ProError ProMdlUnitsystemsCollect(ProMdl mdl, ProUnitsystem** systems) {
    static const CallSite kSite("ProMdlUnitsystemsCollect", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {mdl, Out(systems)}, [&](Session& host) -> ProError {
        SimModel* model = FindModelWithUnits(host, mdl);
        if (model == nullptr || systems == nullptr) return PRO_TK_BAD_INPUTS;
        std::vector<ProUnitsystem> list(model->UnitSystems().size());
        for (std::size_t i = 0; i < list.size(); ++i)
            if (!Fill(list[i], *model, model->UnitSystems()[i].name)) return PRO_TK_GENERAL_ERROR;
        *systems = NewHostArray(host.memory, list);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProMdlPrincipalunitsystemGet(ProMdl mdl, ProUnitsystem* principal_system) {
    static const CallSite kSite("ProMdlPrincipalunitsystemGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {mdl, Out(principal_system)}, [&](Session& host) -> ProError {
        SimModel* model = FindModelWithUnits(host, mdl);
        if (model == nullptr || principal_system == nullptr) return PRO_TK_BAD_INPUTS;
        return Fill(*principal_system, *model, model->PrincipalUnits().name) ? PRO_TK_NO_ERROR
                                                                             : PRO_TK_GENERAL_ERROR;
    });
}

ProError ProUnitsystemUnitGet(ProUnitsystem* system, ProUnitType type, ProUnititem* unit) {
    static const CallSite kSite("ProUnitsystemUnitGet", {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {system, type, Out(unit)}, [&](Session& host) -> ProError {
        SimModel* model = system == nullptr ? nullptr : FindModelWithUnits(host, system->owner);
        const auto name = model == nullptr ? std::nullopt : TextInput(host, system->name, PRO_NAME_SIZE);
        const UnitSystem* found = name ? model->FindUnitSystem(*name) : nullptr;
        const auto quantity = static_cast<UnitQuantity>(type);
        if (found == nullptr || unit == nullptr || type < PRO_UNITTYPE_LENGTH ||
            type > PRO_UNITTYPE_TEMPERATURE)
            return PRO_TK_BAD_INPUTS;
        UnitSystem copy = *found;
        const std::wstring& abbreviation = *PlaceOf(copy, quantity);
        if (abbreviation.empty()) return PRO_TK_E_NOT_FOUND;
        return Fill(*unit, *model, abbreviation) ? PRO_TK_NO_ERROR : PRO_TK_GENERAL_ERROR;
    });
}

ProError ProMdlPrincipalunitsystemSet(ProMdl mdl, ProUnitsystem* new_system, ProUnitConvertType type,
                                      ProBoolean ignore_param_units, int regeneration_flags) {
    static const CallSite kSite("ProMdlPrincipalunitsystemSet", {PRO_TK_BAD_INPUTS, PRO_TK_CANT_MODIFY});
    return Traced(kSite, {mdl, new_system, type, ignore_param_units, regeneration_flags},
                  [&](Session& host) -> ProError {
                      SimModel* model = FindModelWithUnits(host, mdl);
                      if (model == nullptr || new_system == nullptr || regeneration_flags != PRO_VALUE_UNUSED)
                          return PRO_TK_BAD_INPUTS;
                      const bool sameSize = type == PRO_UNITCONVERT_SAME_SIZE;
                      const auto name = TextInput(host, new_system->name, PRO_NAME_SIZE);
                      if (!name || (!sameSize && type != PRO_UNITCONVERT_SAME_DIMS)) return PRO_TK_BAD_INPUTS;
                      if (new_system->owner != model) {
                          host.report.Violation("is given the unit system of another model");
                          return PRO_TK_BAD_INPUTS;
                      }
                      if (model->IsReadOnly()) return PRO_TK_CANT_MODIFY;
                      if (!model->SetPrincipalUnits(*name, sameSize)) return PRO_TK_BAD_INPUTS;
                      model->CountRegeneration();
                      return PRO_TK_NO_ERROR;
                  });
}
