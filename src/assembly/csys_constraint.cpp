// One coordinate-system constraint, from the first coordinate systems of assembly and component.

#include "assembly/csys_constraint.h"

#include <span>

#include <ProAsmcomppath.h>
#include <ProGeomitem.h>
#include <ProSolid.h>

#include "base/host_callback.h"
#include "base/host_handle.h"
#include "base/status.h"
#include "model/component_path.h"
#include "model/current_model.h"
#include "ui/message_box.h"

namespace kv {

static constexpr wchar_t kNoSystemInAssembly[] = L"\t当前组件无坐标系,无法缺省装配新零件\t";
static constexpr wchar_t kStepConstrain[] = L"坐标系约束";

static void ConstraintFree(ProAsmcompconstraint* constraint) {
    ProAsmcompconstraintFree(*constraint);
}

using ConstraintHandle = HostHandle<ProAsmcompconstraint, ConstraintFree>;

// The first coordinate systems of both.
struct Systems {
    ProCsys ofAssembly = nullptr;
    ProCsys ofCopy = nullptr;
};

static ProError FirstSystemGet(ProMdl solid, const wchar_t* none, ProCsys& system);
static ProError OnSystem(ProCsys system, ProError status, ProAppData first);
static ProError Constrain(ProMdl assembly, NewModel& copy, const Systems& systems);
static ProError ConstrainWithin(ProAsmcomppath& path, ProMdl assembly, NewModel& copy,
                                const Systems& systems);
static ProError SystemSelect(ProAsmcomppath* path, ProMdl solid, ProCsys system, SelectionHandle& selection);
static ProError ComponentSystemSelect(ProMdl model, ProCsys system, SelectionHandle& selection);

ProError ConstrainBySystems(BatchRun& run, ProMdl assembly, NewModel& copy, const wchar_t* noSystem) {
    Systems systems;
    ProError status = FirstSystemGet(assembly, kNoSystemInAssembly, systems.ofAssembly);
    if (!Failed(status)) status = FirstSystemGet(copy.model, noSystem, systems.ofCopy);
    if (!Failed(status)) status = Constrain(assembly, copy, systems);
    copy.isConstrained = !Failed(status);
    if (copy.isConstrained) ProTreetoolRefresh(assembly);
    return Recorded(run, copy, kStepConstrain, status);
}

static ProError FirstSystemGet(ProMdl solid, const wchar_t* none, ProCsys& system) {
    const ProError status =
        ProSolidCsysVisit(static_cast<ProSolid>(solid), HostCallback<OnSystem>, nullptr, &system);
    if (status == PRO_TK_E_NOT_FOUND || (!Failed(status) && system == nullptr))
        return ShowFailure(none, PRO_TK_NO_COORD_SYSTEM);
    return status;
}

static ProError OnSystem(ProCsys system, ProError, ProAppData first) {
    ProCsys& found = *static_cast<ProCsys*>(first);
    if (found == nullptr) found = system;
    return PRO_TK_NO_ERROR;
}

// The reference in the assembly goes by the empty path of the assembly that holds the component. There are
// hosts that want the path from the top assembly, which is another one while a component is activated.
static ProError Constrain(ProMdl assembly, NewModel& copy, const Systems& systems) {
    ProAsmcomppath path = {};
    ProError status = ProAsmcomppathInit(static_cast<ProSolid>(assembly), nullptr, 0, &path);
    if (!Failed(status)) status = ConstrainWithin(path, assembly, copy, systems);
    if (!Failed(status)) return status;

    ProMdl top = nullptr;
    ProMdlType type = PRO_MDL_UNUSED;
    if (Failed(CurrentSolidGet(top, type)) || top == assembly) return status;
    return Failed(FirstPathGet(top, assembly, path)) ? status
                                                     : ConstrainWithin(path, assembly, copy, systems);
}

static ProError ConstrainWithin(ProAsmcomppath& path, ProMdl assembly, NewModel& copy,
                                const Systems& systems) {
    SelectionHandle target;
    SelectionHandle own;
    ConstraintHandle constraint;
    HostArray<ProAsmcompconstraint> constraints;
    ProError status = SystemSelect(&path, assembly, systems.ofAssembly, target);
    if (!Failed(status)) status = ComponentSystemSelect(copy.model, systems.ofCopy, own);
    if (!Failed(status)) status = constraint.Received(ProAsmcompconstraintAlloc(constraint.Receive()));
    if (!Failed(status)) status = ProAsmcompconstraintTypeSet(constraint.Get(), PRO_ASM_CSYS);
    if (!Failed(status))
        status = ProAsmcompconstraintAsmreferenceSet(constraint.Get(), target.Get(), PRO_DATUM_SIDE_YELLOW);
    if (!Failed(status))
        status = ProAsmcompconstraintCompreferenceSet(constraint.Get(), own.Get(), PRO_DATUM_SIDE_YELLOW);
    if (!Failed(status)) status = ArrayAlloc(constraints);
    if (!Failed(status)) status = ArrayAppend(constraints, std::span(constraint.InOut(), 1));
    if (Failed(status)) return status;
    return ProAsmcompConstraintsSet(nullptr, &copy.component, constraints.Get());
}

static ProError SystemSelect(ProAsmcomppath* path, ProMdl solid, ProCsys system, SelectionHandle& selection) {
    ProGeomitem item = {};
    const ProError status = ProCsysToGeomitem(static_cast<ProSolid>(solid), system, &item);
    if (Failed(status)) return status;
    return selection.Received(ProSelectionAlloc(path, &item, selection.Receive()));
}

// Items of an assembly always need a path.
static ProError ComponentSystemSelect(ProMdl model, ProCsys system, SelectionHandle& selection) {
    ProMdlType type = PRO_MDL_UNUSED;
    ProAsmcomppath path = {};
    ProError status = ProMdlTypeGet(model, &type);
    if (Failed(status) || type != PRO_MDL_ASSEMBLY)
        return Failed(status) ? status : SystemSelect(nullptr, model, system, selection);
    status = ProAsmcomppathInit(static_cast<ProSolid>(model), nullptr, 0, &path);
    return Failed(status) ? status : SystemSelect(&path, model, system, selection);
}

}  // namespace kv
