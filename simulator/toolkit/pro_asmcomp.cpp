#include <ProAsmcomp.h>

#include <optional>
#include <vector>

#include "simulator/memory/host_memory.h"
#include "simulator/report/utf8.h"
#include "simulator/toolkit/support/arguments.h"
#include "simulator/toolkit/support/component_call.h"
#include "simulator/toolkit/support/traced.h"

using namespace sim;

namespace {

ProError SetReference(ProAsmcompconstraint constraint, ProSelection selection, ProDatumside side,
                      std::optional<Pick> ConstraintDefinition::*reference) {
    Session& host = Host();
    ConstraintDefinition* definition = host.definitions.constraints.Find(host.report, constraint);
    const Pick* pick = FindPick(host, selection);
    const bool isSide = side >= PRO_DATUM_SIDE_RED && side <= PRO_DATUM_SIDE_YELLOW;
    if (definition == nullptr || pick == nullptr || !isSide) return PRO_TK_BAD_INPUTS;
    definition->*reference = *pick;
    return PRO_TK_NO_ERROR;
}

// Whether the definition is a whole constraint of the component: to a coordinate system, or fixed where it
// is; the simulator solves no other kinds.
bool IsWhole(Session& host, const Placed& placed, const ConstraintDefinition& definition) {
    const auto& [type, assembly, component] = definition;
    if (type == PRO_ASM_FIX) return true;
    const bool isCsys = type == PRO_ASM_CSYS && assembly && component && assembly->type == PRO_CSYS &&
                        component->type == PRO_CSYS;
    if (!isCsys || component->model != placed.component->component || assembly->model != placed.owner) {
        host.report.Violation(
            "is given a constraint that does not tie a coordinate system of the component " +
            Utf8(placed.component->component->Name()) + " to one of its assembly");
        return false;
    }
    if (assembly->isWithoutPath) {
        host.report.Violation("is given a reference in the assembly without a component path");
        return false;
    }
    if (host.strict.referenceNeedsTopPath && assembly->root != host.desk.Top()) return false;
    return placed.owner->FindCoordinateSystem(assembly->id) != nullptr &&
           component->model->FindCoordinateSystem(component->id) != nullptr;
}

const HostBlock* ConstraintArray(Session& host, ProAsmcompconstraint* constraints) {
    const HostBlock* block = host.memory.Find({BlockKind::kArray}, constraints);
    if (block == nullptr || block->elementSize == sizeof(ProAsmcompconstraint)) return block;
    host.report.Violation("is given an array of something else than constraints");
    return nullptr;
}

}  // namespace

ProError ProAsmcompMdlGet(ProAsmcomp* p_feat_handle, ProMdl* p_mdl_handle) {
    static const CallSite kSite("ProAsmcompMdlGet", {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {p_feat_handle, Out(p_mdl_handle)}, [&](Session& host) -> ProError {
        const Feature* feature = FindFeature(host, p_feat_handle);
        if (feature == nullptr || p_mdl_handle == nullptr || feature->type != kComponentType)
            return PRO_TK_BAD_INPUTS;
        if (feature->component == nullptr) return PRO_TK_E_NOT_FOUND;
        *p_mdl_handle = feature->component;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProAsmcompAssemble(ProAssembly owner_assembly, ProSolid component_model, ProMatrix init_pos,
                            ProAsmcomp* feature) {
    static const CallSite kSite("ProAsmcompAssemble",
                                {PRO_TK_BAD_INPUTS, PRO_TK_CANT_MODIFY, PRO_TK_UNSUPPORTED});
    return Traced(
        kSite, {owner_assembly, component_model, init_pos, Out(feature)}, [&](Session& host) -> ProError {
            SimModel* owner = owner_assembly == nullptr
                                  ? host.desk.Top()
                                  : FindModelOf(host, owner_assembly, ModelKind::kAssembly);
            SimModel* component = FindSolid(host, component_model);
            if (owner == nullptr || component == nullptr || init_pos == nullptr || feature == nullptr)
                return PRO_TK_BAD_INPUTS;
            const Matrix placement = MatrixFrom(init_pos);
            if (!IsPlacement(placement)) {
                host.report.Violation("is given a matrix that does more than turn and shift");
                return PRO_TK_BAD_INPUTS;
            }
            if (owner->IsReadOnly()) return PRO_TK_CANT_MODIFY;
            // No assembly holds itself.
            if (component == owner || component->HasBelow(*owner)) return PRO_TK_GENERAL_ERROR;
            Placing placing;
            placing.placement = placement;
            owner->Place(*component, placing);
            *feature = {PRO_FEATURE, owner->Features().back().id, owner};
            return PRO_TK_NO_ERROR;
        });
}

ProError ProAsmcompConstrRedefUI(ProAsmcomp* p_feat_handle) {
    static const CallSite kSite("ProAsmcompConstrRedefUI", {PRO_TK_BAD_INPUTS, PRO_TK_USER_ABORT});
    return Traced(kSite, {p_feat_handle}, [&](Session& host) -> ProError {
        const Placed placed = FindComponent(host, p_feat_handle);
        if (placed.component == nullptr) return PRO_TK_BAD_INPUTS;
        if (host.user.placements.empty()) {
            host.user.Problem("is asked to place " + Utf8(placed.component->component->Name()) +
                              ", and nobody said how");
            return PRO_TK_USER_ABORT;
        }
        const bool isDefined = host.user.placements.front();
        host.user.placements.pop_front();
        if (!isDefined) return PRO_TK_USER_ABORT;
        placed.owner->Constrain(*placed.component, {{PRO_ASM_DEF_PLACEMENT, 0, 0}});
        return PRO_TK_NO_ERROR;
    });
}

// ---- Constraints

ProError ProAsmcompconstraintAlloc(ProAsmcompconstraint* p_constraint) {
    static const CallSite kSite("ProAsmcompconstraintAlloc", {PRO_TK_BAD_INPUTS, PRO_TK_OUT_OF_MEMORY});
    return Traced(kSite, {Out(p_constraint)}, [&](Session& host) -> ProError {
        if (p_constraint == nullptr) return PRO_TK_BAD_INPUTS;
        *p_constraint = static_cast<ProAsmcompconstraint>(host.definitions.constraints.New(host.report));
        return PRO_TK_NO_ERROR;
    });
}

ProError ProAsmcompconstraintFree(ProAsmcompconstraint constraint) {
    static const CallSite kSite("ProAsmcompconstraintFree", {PRO_TK_BAD_INPUTS}, true);
    return Traced(kSite, {constraint}, [&](Session& host) -> ProError {
        return host.definitions.constraints.Free(host.report, constraint) ? PRO_TK_NO_ERROR
                                                                          : PRO_TK_BAD_INPUTS;
    });
}

ProError ProAsmcompconstraintArrayFree(ProAsmcompconstraint* constraints) {
    static const CallSite kSite("ProAsmcompconstraintArrayFree", {PRO_TK_BAD_INPUTS}, true);
    return Traced(kSite, {constraints}, [&](Session& host) -> ProError {
        const HostBlock* block = ConstraintArray(host, constraints);
        if (block == nullptr) return PRO_TK_BAD_INPUTS;
        for (std::size_t i = 0; i < block->count; ++i)
            host.definitions.constraints.Free(host.report, constraints[i]);
        host.memory.Release(BlockKind::kArray, constraints);
        return PRO_TK_NO_ERROR;
    });
}

ProError ProAsmcompconstraintTypeSet(ProAsmcompconstraint constraint, ProAsmcompConstrType type) {
    static const CallSite kSite("ProAsmcompconstraintTypeSet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {constraint, type}, [&](Session& host) -> ProError {
        ConstraintDefinition* definition = host.definitions.constraints.Find(host.report, constraint);
        if (definition == nullptr) return PRO_TK_BAD_INPUTS;
        definition->type = type;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProAsmcompconstraintAsmreferenceSet(ProAsmcompconstraint constraint, ProSelection asm_ref,
                                             ProDatumside asm_orient) {
    static const CallSite kSite("ProAsmcompconstraintAsmreferenceSet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {constraint, asm_ref, asm_orient}, [&](Session&) -> ProError {
        return SetReference(constraint, asm_ref, asm_orient, &ConstraintDefinition::assemblyReference);
    });
}

ProError ProAsmcompconstraintCompreferenceSet(ProAsmcompconstraint constraint, ProSelection comp_ref,
                                              ProDatumside comp_orient) {
    static const CallSite kSite("ProAsmcompconstraintCompreferenceSet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {constraint, comp_ref, comp_orient}, [&](Session&) -> ProError {
        return SetReference(constraint, comp_ref, comp_orient, &ConstraintDefinition::componentReference);
    });
}

ProError ProAsmcompConstraintsSet(ProAsmcomppath* component_path, ProAsmcomp* component,
                                  ProAsmcompconstraint* p_constraints) {
    static const CallSite kSite("ProAsmcompConstraintsSet", {PRO_TK_BAD_INPUTS, PRO_TK_CANT_MODIFY});
    return Traced(kSite, {component_path, component, p_constraints}, [&](Session& host) -> ProError {
        if (component_path != nullptr && !FindPathEnd(host, component_path)) return PRO_TK_BAD_INPUTS;
        const Placed placed = FindComponent(host, component);
        const HostBlock* block = ConstraintArray(host, p_constraints);
        if (placed.component == nullptr || block == nullptr) return PRO_TK_BAD_INPUTS;
        if (placed.owner->IsReadOnly()) return PRO_TK_CANT_MODIFY;
        std::vector<ComponentConstraint> constraints;
        for (std::size_t i = 0; i < block->count; ++i) {
            const auto* definition = host.definitions.constraints.Find(host.report, p_constraints[i]);
            if (definition == nullptr || !IsWhole(host, placed, *definition)) return PRO_TK_BAD_INPUTS;
            const bool isFixed = definition->type == PRO_ASM_FIX;
            constraints.push_back({definition->type, isFixed ? 0 : definition->assemblyReference->id,
                                   isFixed ? 0 : definition->componentReference->id});
        }
        placed.component->isMovable = false;
        placed.owner->Constrain(*placed.component, std::move(constraints));
        return PRO_TK_NO_ERROR;
    });
}
