// What ties a component, and what happens when it is freed.

#include <ProAsmcomp.h>

#include <vector>

#include "simulator/memory/host_memory.h"
#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/component_call.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

namespace {

ProError FlagGet(const CallSite& site, ProAsmcomp* item, ProBoolean* flag, bool Feature::*value) {
    return Traced(site, {item, Out(flag)}, [&](Session& host) -> ProError {
        const Placed placed = FindComponent(host, item);
        if (placed.component == nullptr || flag == nullptr) return PRO_TK_BAD_INPUTS;
        *flag = placed.component->*value ? PRO_B_TRUE : PRO_B_FALSE;
        return PRO_TK_NO_ERROR;
    });
}

}  // namespace

ProError ProAsmcompConstraintsWithComppathGet(ProAsmcomp* component, ProAsmcomppath* component_path,
                                              ProAsmcompconstraint** pp_constraints) {
    static const CallSite kSite("ProAsmcompConstraintsWithComppathGet",
                                {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {component, component_path, Out(pp_constraints)}, [&](Session& host) -> ProError {
        const Placed placed = FindComponent(host, component);
        if (placed.component == nullptr || component_path == nullptr || pp_constraints == nullptr)
            return PRO_TK_BAD_INPUTS;
        const auto end = FindPathEnd(host, component_path);
        if (!end || end->model != placed.owner) return PRO_TK_BAD_INPUTS;
        if (placed.component->constraints.empty()) return PRO_TK_E_NOT_FOUND;
        std::vector<ProAsmcompconstraint> handles;
        for (const ComponentConstraint& constraint : placed.component->constraints) {
            void* handle = host.definitions.constraints.New(host.report);
            host.definitions.constraints.Find(host.report, handle)->type = constraint.type;
            handles.push_back(static_cast<ProAsmcompconstraint>(handle));
        }
        *pp_constraints = NewHostArray(host.memory, handles);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProAsmcompconstraintTypeGet(ProAsmcompconstraint constraint, ProAsmcompConstrType* type) {
    static const CallSite kSite("ProAsmcompconstraintTypeGet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {constraint, Out(type)}, [&](Session& host) -> ProError {
        const ConstraintDefinition* definition = host.definitions.constraints.Find(host.report, constraint);
        if (definition == nullptr || type == nullptr) return PRO_TK_BAD_INPUTS;
        *type = static_cast<ProAsmcompConstrType>(definition->type);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProAsmcompConstrRemove(ProAsmcomp* p_feat_handle, int index) {
    static const CallSite kSite("ProAsmcompConstrRemove",
                                {PRO_TK_BAD_INPUTS, PRO_TK_CANT_MODIFY, PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {p_feat_handle, index}, [&](Session& host) -> ProError {
        const Placed placed = FindComponent(host, p_feat_handle);
        if (placed.component == nullptr || index < -1) return PRO_TK_BAD_INPUTS;
        std::vector<ComponentConstraint>& all = placed.component->constraints;
        if (index >= static_cast<int>(all.size())) return PRO_TK_E_NOT_FOUND;
        if (placed.owner->IsReadOnly()) return PRO_TK_CANT_MODIFY;
        const auto goes = [](const ComponentConstraint& one) { return !one.isOfInterface; };
        if (index < 0)
            std::erase_if(all, goes);
        else if (goes(all[static_cast<std::size_t>(index)]))
            all.erase(all.begin() + index);
        placed.owner->SetModified(true);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProAsmcompPositionSet(ProAsmcomppath* component_path, ProAsmcomp* component, ProMatrix position) {
    static const CallSite kSite("ProAsmcompPositionSet", {PRO_TK_BAD_INPUTS, PRO_TK_CANT_MODIFY});
    return Traced(kSite, {component_path, component, position}, [&](Session& host) -> ProError {
        const Placed placed = FindComponent(host, component);
        if (placed.component == nullptr || position == nullptr) return PRO_TK_BAD_INPUTS;
        if (component_path != nullptr && !FindPathEnd(host, component_path)) return PRO_TK_BAD_INPUTS;
        const Matrix placement = MatrixFrom(position);
        if (!IsPlacement(placement)) {
            host.report.Violation("is given a matrix that does more than turn and shift");
            return PRO_TK_BAD_INPUTS;
        }
        if (placed.owner->IsReadOnly()) return PRO_TK_CANT_MODIFY;
        // What is tied has no other position than its constraints give it.
        if (placed.component->constraints.empty() || placed.component->isMovable)
            placed.component->initial = placement;
        placed.owner->SetModified(true);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProAsmcompRegenerate(ProAsmcomp* p_feat_handle, ProBoolean update_soft) {
    static const CallSite kSite("ProAsmcompRegenerate", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {p_feat_handle, update_soft}, [&](Session& host) -> ProError {
        const Placed placed = FindComponent(host, p_feat_handle);
        if (placed.component == nullptr) return PRO_TK_BAD_INPUTS;
        Feature& component = *placed.component;
        if (component.constraints.empty() && component.initial) component.placement = *component.initial;
        placed.owner->CountRegeneration();
        return PRO_TK_NO_ERROR;
    });
}

ProError ProAsmcompIsUnderconstrained(ProAsmcomp* comp_handle, ProBoolean* p_comp_is_underconstrained) {
    static const CallSite kSite("ProAsmcompIsUnderconstrained", {PRO_TK_BAD_INPUTS});
    return FlagGet(kSite, comp_handle, p_comp_is_underconstrained, &Feature::isMovable);
}

ProError ProAsmcompIsFrozen(ProAsmcomp* comp_handle, ProBoolean* p_comp_is_frozen) {
    static const CallSite kSite("ProAsmcompIsFrozen", {PRO_TK_BAD_INPUTS});
    return FlagGet(kSite, comp_handle, p_comp_is_frozen, &Feature::isFrozen);
}

ProError ProAsmcompIsUnplaced(ProAsmcomp* comp_handle, ProBoolean* p_comp_is_unplaced) {
    static const CallSite kSite("ProAsmcompIsUnplaced", {PRO_TK_BAD_INPUTS, PRO_TK_NO_LICENSE});
    return FlagGet(kSite, comp_handle, p_comp_is_unplaced, &Feature::isUnplaced);
}
