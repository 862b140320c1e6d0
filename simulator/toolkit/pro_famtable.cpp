#include <ProFamtable.h>

#include <algorithm>

#include "simulator/memory/host_memory.h"
#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

ProError ProFamtableInit(ProMdl model, ProFamtable* p_famtab) {
    static const CallSite kSite("ProFamtableInit", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {model, Out(p_famtab)}, [&](Session& host) -> ProError {
        SimModel* generic = FindModel(host, model);
        if (generic == nullptr || p_famtab == nullptr) return PRO_TK_BAD_INPUTS;
        const bool isSolid = generic->Kind() == ModelKind::kPart || generic->Kind() == ModelKind::kAssembly;
        if (!isSolid) return PRO_TK_GENERAL_ERROR;
        *p_famtab = {static_cast<ProType>(generic->Kind()), PRO_VALUE_UNUSED, generic};
        return PRO_TK_NO_ERROR;
    });
}

ProError ProParameterToFamtableItem(ProParameter* p_param, ProFamtableItem* r_fam_item) {
    static const CallSite kSite("ProParameterToFamtableItem", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {p_param, Out(r_fam_item)}, [&](Session& host) -> ProError {
        if (p_param == nullptr || r_fam_item == nullptr) return PRO_TK_BAD_INPUTS;
        if (p_param->type != PRO_PARAMETER || p_param->owner.type != PRM_MODEL) {
            host.report.Violation("is given a parameter handle that no host function has filled");
            return PRO_TK_BAD_INPUTS;
        }
        SimModel* owner = FindModel(host, p_param->owner.who.model);
        const auto name = TextInput(host, p_param->id, PRO_NAME_SIZE);
        if (owner == nullptr || !name) return PRO_TK_BAD_INPUTS;
        if (!owner->HasParameter(*name)) return PRO_TK_GENERAL_ERROR;
        *r_fam_item = {};
        r_fam_item->type = PRO_FAM_USER_PARAM;
        r_fam_item->owner = owner;
        return FillBuffer<wchar_t>(*name, r_fam_item->string, PRO_FAMTAB_FIELDNAME_SIZE)
                   ? PRO_TK_NO_ERROR
                   : PRO_TK_GENERAL_ERROR;
    });
}

ProError ProFamtableItemAdd(ProFamtable* p_famtab, ProFamtableItem* p_item) {
    static const CallSite kSite("ProFamtableItemAdd", {PRO_TK_E_FOUND, PRO_TK_BAD_INPUTS});
    return Traced(kSite, {p_famtab, p_item}, [&](Session& host) -> ProError {
        if (p_famtab == nullptr || p_item == nullptr) return PRO_TK_BAD_INPUTS;
        SimModel* generic = FindModel(host, p_famtab->owner);
        const SimModel* owner = FindModel(host, p_item->owner);
        const auto name = TextInput(host, p_item->string, PRO_FAMTAB_FIELDNAME_SIZE);
        if (generic == nullptr || owner == nullptr || !name) return PRO_TK_BAD_INPUTS;
        if (owner != generic || p_item->type != PRO_FAM_USER_PARAM) {
            host.report.Violation("is given a column that does not belong to the table's own model");
            return PRO_TK_GENERAL_ERROR;
        }
        if (generic->IsReadOnly()) return PRO_TK_GENERAL_ERROR;
        if (generic->HasFamilyColumn(*name)) return PRO_TK_E_FOUND;
        if (!generic->AddFamilyColumn(*name)) return PRO_TK_GENERAL_ERROR;
        for (SimModel* model : host.models.All())
            if (model->Generic() == generic) model->InheritFrom(*generic, *name);
        return PRO_TK_NO_ERROR;
    });
}
