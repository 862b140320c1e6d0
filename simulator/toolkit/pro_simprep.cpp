#include <ProSimprep.h>

#include <algorithm>
#include <optional>
#include <string>
#include <vector>

#include "simulator/memory/host_memory.h"
#include "simulator/report/call_plugin.h"
#include "simulator/report/utf8.h"
#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

namespace {

std::optional<RepAction> ActionFrom(int type) {
    if (type == PRO_SIMPREP_INCLUDE) return RepAction::kInclude;
    if (type == PRO_SIMPREP_EXCLUDE) return RepAction::kExclude;
    return std::nullopt;
}

// An assembly; null, with a violation, for anything else.
SimModel* FindAssembly(Session& host, const void* handle) {
    return FindModelOf(host, handle, ModelKind::kAssembly);
}

// The assembly that has the representation. Null, with a violation, for an item that is none or that is gone.
SimModel* FindOwner(Session& host, const ProSimprep* item) {
    if (item == nullptr) return nullptr;
    if (item->type != PRO_SIMP_REP) {
        host.report.Violation("is given an item that is no simplified representation");
        return nullptr;
    }
    SimModel* owner = FindAssembly(host, item->owner);
    if (owner == nullptr || item->id == kMasterRepresentation ||
        owner->FindRepresentation(item->id) != nullptr)
        return owner;
    host.report.Violation("is given a representation that " + Utf8(owner->Name()) + " does not have");
    return nullptr;
}

ProSimprep ItemOf(SimModel& owner, int id) {
    return {PRO_SIMP_REP, id, &owner};
}

RepresentationDefinition* FindData(Session& host, const ProSimprepdata* data) {
    return host.definitions.representations.Find(host.report, data);
}

// Whether every item is about a component below the assembly.
bool Fits(Session& host, SimModel& assembly, const Representation& representation) {
    const auto leads = [&assembly](const RepItem& item) {
        return FindPathEnd(assembly, item.path.data(), static_cast<int>(item.path.size())).has_value();
    };
    if (std::ranges::all_of(representation.items, leads)) return true;
    host.report.Violation("is given data with a path that leads to no component of " + Utf8(assembly.Name()));
    return false;
}

}  // namespace

ProError ProSimprepInit(ProName rep_name, int rep_id, ProSolid p_solid, ProSimprep* p_simp_rep) {
    static const CallSite kSite("ProSimprepInit", {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {rep_name, rep_id, p_solid, Out(p_simp_rep)}, [&](Session& host) -> ProError {
        SimModel* assembly = FindAssembly(host, p_solid);
        if (assembly == nullptr || p_simp_rep == nullptr) return PRO_TK_BAD_INPUTS;
        if (rep_name == nullptr) {
            if (rep_id != kMasterRepresentation && assembly->FindRepresentation(rep_id) == nullptr)
                return PRO_TK_E_NOT_FOUND;
            *p_simp_rep = ItemOf(*assembly, rep_id);
            return PRO_TK_NO_ERROR;
        }
        const auto name = TextInput(host, rep_name, PRO_NAME_SIZE);
        if (!name) return PRO_TK_BAD_INPUTS;
        const Representation* found = assembly->FindRepresentation(*name);
        if (found == nullptr) return PRO_TK_E_NOT_FOUND;
        *p_simp_rep = ItemOf(*assembly, found->id);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProSolidSimprepVisit(ProSolid p_solid, ProSimprepFilterAction filter, ProSimprepVisitAction action,
                              ProAppData app_data) {
    static const CallSite kSite("ProSolidSimprepVisit", {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {p_solid, filter, action, app_data}, [&](Session& host) -> ProError {
        SimModel* assembly = FindAssembly(host, p_solid);
        if (assembly == nullptr || action == nullptr) return PRO_TK_BAD_INPUTS;
        const std::vector<Representation> all = assembly->Representations();
        bool anyVisited = false;
        for (const Representation& one : all) {
            ProSimprep item = ItemOf(*assembly, one.id);
            const ProError chosen =
                filter == nullptr ? PRO_TK_NO_ERROR : CallPlugin(host.report, filter, &item, app_data);
            if (chosen == PRO_TK_CONTINUE) continue;
            anyVisited = true;
            const ProError answer = CallPlugin(host.report, action, &item, chosen, app_data);
            if (answer != PRO_TK_NO_ERROR) return answer;
        }
        return anyVisited ? PRO_TK_NO_ERROR : PRO_TK_E_NOT_FOUND;
    });
}

ProError ProSimprepActivate(ProSolid p_solid, ProSimprep* p_simp_rep) {
    static const CallSite kSite("ProSimprepActivate",
                                {PRO_TK_BAD_INPUTS, PRO_TK_CANT_MODIFY, PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {p_solid, p_simp_rep}, [&](Session& host) -> ProError {
        SimModel* assembly = FindAssembly(host, p_solid);
        if (assembly == nullptr || FindOwner(host, p_simp_rep) != assembly) return PRO_TK_BAD_INPUTS;
        assembly->ActivateRepresentation(p_simp_rep->id);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProSimprepActiveGet(ProSolid solid, ProSimprep* p_simp_rep) {
    static const CallSite kSite("ProSimprepActiveGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {solid, Out(p_simp_rep)}, [&](Session& host) -> ProError {
        SimModel* assembly = FindAssembly(host, solid);
        if (assembly == nullptr || p_simp_rep == nullptr) return PRO_TK_BAD_INPUTS;
        *p_simp_rep = ItemOf(*assembly, assembly->ActiveRepresentation());
        return PRO_TK_NO_ERROR;
    });
}

ProError ProSimprepCreate(ProSolid p_solid, ProSimprepdata* p_data, ProSimprep* p_new_rep) {
    static const CallSite kSite("ProSimprepCreate", {PRO_TK_BAD_INPUTS, PRO_TK_CANT_MODIFY});
    return Traced(kSite, {p_solid, p_data, Out(p_new_rep)}, [&](Session& host) -> ProError {
        SimModel* assembly = FindAssembly(host, p_solid);
        const RepresentationDefinition* data = FindData(host, p_data);
        if (assembly == nullptr || data == nullptr || p_new_rep == nullptr) return PRO_TK_BAD_INPUTS;
        if (!Fits(host, *assembly, data->representation)) return PRO_TK_BAD_INPUTS;
        if (assembly->IsReadOnly()) return PRO_TK_CANT_MODIFY;
        if (assembly->FindRepresentation(data->representation.name) != nullptr) return PRO_TK_E_FOUND;
        *p_new_rep = ItemOf(*assembly, assembly->AddRepresentation(data->representation));
        return PRO_TK_NO_ERROR;
    });
}

ProError ProSimprepDelete(ProSimprep* p_simp_rep) {
    static const CallSite kSite("ProSimprepDelete", {PRO_TK_BAD_INPUTS, PRO_TK_CANT_MODIFY, PRO_TK_E_IN_USE});
    return Traced(kSite, {p_simp_rep}, [&](Session& host) -> ProError {
        SimModel* assembly = FindOwner(host, p_simp_rep);
        if (assembly == nullptr || p_simp_rep->id == kMasterRepresentation) return PRO_TK_BAD_INPUTS;
        if (assembly->IsReadOnly()) return PRO_TK_CANT_MODIFY;
        if (assembly->ActiveRepresentation() == p_simp_rep->id) return PRO_TK_E_IN_USE;
        assembly->RemoveRepresentation(p_simp_rep->id);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProSimprepdataAlloc(ProName name, ProBoolean temporary, ProSimprepActionType default_action,
                             ProSimprepdata** p_result) {
    static const CallSite kSite("ProSimprepdataAlloc", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {name, temporary, default_action, Out(p_result)}, [&](Session& host) -> ProError {
        const auto text = TextInput(host, name, PRO_NAME_SIZE);
        const auto usual = ActionFrom(default_action);
        const bool isName = text && !text->empty() && text->find(L' ') == std::wstring_view::npos;
        if (!isName || !usual || p_result == nullptr) return PRO_TK_BAD_INPUTS;
        void* handle = host.definitions.representations.New(host.report);
        FindData(host, static_cast<ProSimprepdata*>(handle))->representation = {
            0, std::wstring(*text), *usual, {}};
        *p_result = static_cast<ProSimprepdata*>(handle);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProSimprepdataFree(ProSimprepdata** p_data) {
    static const CallSite kSite("ProSimprepdataFree", {PRO_TK_BAD_INPUTS}, true);
    return Traced(kSite, {p_data}, [&](Session& host) -> ProError {
        if (p_data == nullptr || !host.definitions.representations.Free(host.report, *p_data))
            return PRO_TK_BAD_INPUTS;
        *p_data = nullptr;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProSimprepdataGet(ProSimprep* p_simp_rep, ProSimprepdata** p_data) {
    static const CallSite kSite("ProSimprepdataGet", {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {p_simp_rep, Out(p_data)}, [&](Session& host) -> ProError {
        SimModel* assembly = FindOwner(host, p_simp_rep);
        if (assembly == nullptr || p_data == nullptr) return PRO_TK_BAD_INPUTS;
        const Representation* representation = assembly->FindRepresentation(p_simp_rep->id);
        if (representation == nullptr) return PRO_TK_E_NOT_FOUND;
        void* handle = host.definitions.representations.New(host.report);
        FindData(host, static_cast<ProSimprepdata*>(handle))->representation = *representation;
        *p_data = static_cast<ProSimprepdata*>(handle);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProSimprepdataSet(ProSimprep* p_simp_rep, ProSimprepdata* p_data) {
    static const CallSite kSite("ProSimprepdataSet", {PRO_TK_BAD_INPUTS, PRO_TK_CANT_MODIFY});
    return Traced(kSite, {p_simp_rep, p_data}, [&](Session& host) -> ProError {
        SimModel* assembly = FindOwner(host, p_simp_rep);
        const RepresentationDefinition* data = FindData(host, p_data);
        Representation* representation =
            assembly == nullptr ? nullptr : assembly->FindRepresentation(p_simp_rep->id);
        if (representation == nullptr || data == nullptr) return PRO_TK_BAD_INPUTS;
        if (!Fits(host, *assembly, data->representation)) return PRO_TK_BAD_INPUTS;
        if (assembly->IsReadOnly()) return PRO_TK_CANT_MODIFY;
        const int id = representation->id;
        *representation = data->representation;
        representation->id = id;
        assembly->SetModified(true);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProSimprepdataNameGet(ProSimprepdata* p_data, ProName name) {
    static const CallSite kSite("ProSimprepdataNameGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {p_data, Out(name, PRO_NAME_SIZE)}, [&](Session& host) -> ProError {
        const RepresentationDefinition* data = FindData(host, p_data);
        if (data == nullptr) return PRO_TK_BAD_INPUTS;
        return FillBuffer<wchar_t>(data->representation.name, name, PRO_NAME_SIZE) ? PRO_TK_NO_ERROR
                                                                                   : PRO_TK_BAD_INPUTS;
    });
}

ProError ProSimprepActionInit(ProSimprepActionType action_type, ProSubstitution* p_subst_data,
                              ProSimprepAction* p_action) {
    static const CallSite kSite("ProSimprepActionInit", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {action_type, p_subst_data, Out(p_action)}, [&](Session&) -> ProError {
        if (!ActionFrom(action_type) || p_subst_data != nullptr || p_action == nullptr)
            return PRO_TK_BAD_INPUTS;
        *p_action = {};
        p_action->type = action_type;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProSimprepdataitemInit(ProIdTable compidtab, int table_num, int feat_id, ProSimprepAction* p_action,
                                ProSimprepitem* p_item) {
    static const CallSite kSite("ProSimprepdataitemInit", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {compidtab, table_num, feat_id, p_action, Out(p_item)}, [&](Session&) -> ProError {
        const bool isPath = compidtab != nullptr && table_num > 0 && table_num <= PRO_MAX_ASSEM_LEVEL;
        if (!isPath || feat_id != PRO_VALUE_UNUSED || p_action == nullptr || p_item == nullptr)
            return PRO_TK_BAD_INPUTS;
        *p_item = {};
        p_item->item_path.path_size = table_num;
        std::copy_n(compidtab, table_num, p_item->item_path.comp_path);
        p_item->item_path.feat_id = feat_id;
        p_item->action = *p_action;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProSimprepdataitemAdd(ProSimprepdata* p_data, ProSimprepitem* p_item) {
    static const CallSite kSite("ProSimprepdataitemAdd", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {p_data, p_item}, [&](Session& host) -> ProError {
        RepresentationDefinition* data = FindData(host, p_data);
        const auto action = p_item == nullptr ? std::nullopt : ActionFrom(p_item->action.type);
        if (data == nullptr || !action) return PRO_TK_BAD_INPUTS;
        const ProSimprepitemPath& path = p_item->item_path;
        data->representation.items.push_back({{path.comp_path, path.comp_path + path.path_size}, *action});
        return PRO_TK_NO_ERROR;
    });
}
