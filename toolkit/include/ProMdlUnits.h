// Units of models and their systems.
#pragma once

#include <ProObjects.h>

PRO_BEGIN_C_DECLS

// A unit of a model by its abbreviation; nothing to free.
typedef struct ProUnititems {
    ProMdl owner;
    ProName name;
} ProUnititem;

// A system of units of a model by the name that the user sees; nothing to free.
typedef struct ProUnitsystems {
    ProMdl owner;
    ProName name;
} ProUnitsystem;

// Which basic quantities a system rests on: mass, length and time, or force, length and time.
typedef enum pro_unitsystem_type { PRO_UNITSYSTEM_MLT = 1, PRO_UNITSYSTEM_FLT = 2 } ProUnitsystemType;

// What stays when a model gets another system: the numbers, so that its size changes, or the size.
typedef enum pro_unit_convert_type {
    PRO_UNITCONVERT_SAME_DIMS = 0,
    PRO_UNITCONVERT_SAME_SIZE = 1
} ProUnitConvertType;

// Basic quantities.
typedef enum pro_unit_type {
    PRO_UNITTYPE_LENGTH = 0,
    PRO_UNITTYPE_MASS = 1,
    PRO_UNITTYPE_FORCE = 2,
    PRO_UNITTYPE_TIME = 3,
    PRO_UNITTYPE_TEMPERATURE = 4
} ProUnitType;

// Gives the unit that a system has for a quantity. BAD_INPUTS; a further status for none.
ProError ProUnitsystemUnitGet(ProUnitsystem* system, ProUnitType type, ProUnititem* unit);

// Gives a basic unit of a model by its name. BAD_INPUTS; a further status for a name that it does not have.
ProError ProUnitInit(ProMdl mdl, ProName unit_name, ProUnititem* unit);

// Makes a system of a ProArray of units, at most one a quantity; what is missing is taken from the default
// system. `new_system` may be NULL. BAD_INPUTS; a further status for several units of one quantity.
ProError ProMdlUnitsystemCreate(ProMdl mdl, ProUnitsystemType type, ProName name, ProUnititem* units,
                                ProUnitsystem* new_system);

// Gives all systems of a model as a ProArray; free it with ProArrayFree. BAD_INPUTS.
ProError ProMdlUnitsystemsCollect(ProMdl mdl, ProUnitsystem** systems);

// Gives the principal system of a model. BAD_INPUTS.
ProError ProMdlPrincipalunitsystemGet(ProMdl mdl, ProUnitsystem* principal_system);

// Makes a system the principal one and regenerates the model. With `ignore_param_units` the parameters keep
// values and units; the flags are PRO_VALUE_UNUSED. BAD_INPUTS; a further status for a read-only model.
ProError ProMdlPrincipalunitsystemSet(ProMdl mdl, ProUnitsystem* new_system, ProUnitConvertType type,
                                      ProBoolean ignore_param_units, int regeneration_flags);

PRO_END_C_DECLS

static_assert(sizeof(ProUnititem) == 72, "a pointer and a name, no padding");
static_assert(sizeof(ProUnitsystem) == 72, "a pointer and a name, no padding");
