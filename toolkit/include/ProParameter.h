// Parameters of models and their items.
#pragma once

#include <ProMdlUnits.h>
#include <ProObjects.h>
#include <ProParamval.h>

PRO_BEGIN_C_DECLS

typedef enum proparamfrom { PRM_MODEL = 0, PRM_ITEM = 1 } ProParamfrom;

typedef struct proparamowner {
    ProParamfrom type;
    union {
        ProModelitem item;
        ProMdl model;
    } who;
} ProParamowner;

// A plain handle, nothing to free: type PRO_PARAMETER, the name, the owner.
typedef struct proparameter {
    ProType type;
    ProName id;
    ProParamowner owner;
} ProParameter;

// Looks a parameter up by name, letter case ignored. E_NOT_FOUND when the owner has no such
// parameter; BAD_CONTEXT when there is no such owner; BAD_INPUTS.
ProError ProParameterInit(ProModelitem* owner, ProName name, ProParameter* param);

// Creates a parameter; `units` is NULL for one without units. E_FOUND when the name is taken;
// CANT_MODIFY for a read-only model; BAD_CONTEXT; BAD_INPUTS; GENERAL_ERROR.
ProError ProParameterWithUnitsCreate(ProModelitem* owner, ProName name, ProParamvalue* proval,
                                     ProUnititem* units, ProParameter* p_param);

// Sets the value; with `units` NULL it is in the owning model's units. GENERAL_ERROR when the
// parameter is gone or driven; CANT_MODIFY; E_NOT_FOUND for a lost owner; INVALID_TYPE.
ProError ProParameterValueWithUnitsSet(ProParameter* param, ProParamvalue* proval, ProUnititem* units);

// Gives the value, in the owning model's units when `units` is NULL; the unit's name is empty
// for a parameter without units. E_NOT_FOUND; BAD_INPUTS; GENERAL_ERROR.
ProError ProParameterValueWithUnitsGet(ProParameter* param, ProParamvalue* proval, ProUnititem* units);

// Visits the parameters of an owner; the filter comes first, and a parameter for which it answers CONTINUE is
// passed over. E_NOT_FOUND for an owner without any; BAD_CONTEXT; BAD_INPUTS; else what the action answered.
typedef ProError (*ProParameterAction)(ProParameter* handle, ProError status, ProAppData data);
typedef ProError (*ProParameterFilter)(ProParameter* handle, ProAppData data);
ProError ProParameterVisit(ProModelitem* owner, ProParameterFilter filter, ProParameterAction action,
                           ProAppData data);

// Deletes the parameter. CANT_MODIFY; E_NOT_FOUND for a lost owner; GENERAL_ERROR.
ProError ProParameterDelete(ProParameter* param);

PRO_END_C_DECLS

static_assert(sizeof(ProParamowner) == 24, "a type, padding and an item");
static_assert(sizeof(ProParameter) == 96, "a type and a name, padding, the owner");
