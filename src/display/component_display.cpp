// KvIsolate, KvHideReverse, KvShowAllComp: what is to be seen of an assembly.
//
// Each command says for every component how it shall be, and then changes those that are not so. Only parts
// are ever hidden: a hidden sub-assembly would hide what is below it as well. Nothing is shown to the user;
// what the host refuses stands in the report.

#include "display/component_display.h"

#include <algorithm>
#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <utility>
#include <vector>

#include <ProAsmcomppath.h>
#include <ProMdl.h>
#include <ProSelection.h>
#include <ProWindows.h>

#include "base/host_handle.h"
#include "base/status.h"
#include "display/component_visibility.h"
#include "display/refusals_report.h"
#include "model/current_model.h"
#include "model/model_data.h"
#include "model/model_walk.h"
#include "model/selection.h"

namespace kv {

static constexpr wchar_t kStepHide[] = L"隐藏元件";
static constexpr wchar_t kStepShow[] = L"显示元件";

enum class Wanted { Shown, Hidden, Reversed };

struct PlannedComponent {
    ProAsmcomp component;
    ProMdl model;
    bool isPart;
    Wanted wanted;
};
using DisplayPlan = std::vector<PlannedComponent>;

// What stays to be seen.
struct Kept {
    bool everything = false;
    std::vector<std::pair<ProMdl, int>> parts;  // by owner and identifier
    std::vector<ProMdl> assemblies;             // whose parts are shown, with all that lies below them
    bool IsEmpty() const { return !everything && parts.empty() && assemblies.empty(); }
};

static ProError CurrentAssembly(ProMdl& assembly);
static ProError PlanAll(ProMdl assembly, Wanted parts, WalkResult& walk, DisplayPlan& plan);
static void Apply(const char* command, DisplayPlan& plan);
static ProError ApplyTo(ComponentVisibility& visibility, const PlannedComponent& planned, bool& hide);
static Kept KeptOf(std::span<ProSelection> selections);
static void Keep(ProSelection selection, Kept& kept);
static void AddAssembliesBelow(const WalkResult& walk, Kept& kept);
static void ShowKept(const Kept& kept, DisplayPlan& plan);

ProError KvIsolate() {
    int window = PRO_VALUE_UNUSED;
    const bool hasWindow = !Failed(ProWindowCurrentGet(&window));
    ProMdl assembly = nullptr;
    ProError status = CurrentAssembly(assembly);
    if (Failed(status)) return status;
    SelectionArray selections;
    status = SelectionRead(selections);
    if (Failed(status)) return status;
    Kept kept = KeptOf(Items(selections));
    if (kept.IsEmpty()) return PRO_TK_NO_ERROR;

    WalkResult walk;
    DisplayPlan plan;
    status = PlanAll(assembly, Wanted::Hidden, walk, plan);
    if (Failed(status)) return status;
    AddAssembliesBelow(walk, kept);
    ShowKept(kept, plan);
    Apply("KvIsolate", plan);
    ProWindowRefresh(PRO_VALUE_UNUSED);
    ProWindowRepaint(PRO_VALUE_UNUSED);
    return hasWindow ? ProWindowActivate(window) : PRO_TK_NO_ERROR;
}

ProError KvHideReverse() {
    ProMdl assembly = nullptr;
    WalkResult walk;
    DisplayPlan plan;
    ProError status = CurrentAssembly(assembly);
    if (!Failed(status)) status = PlanAll(assembly, Wanted::Reversed, walk, plan);
    if (Failed(status)) return status;
    Apply("KvHideReverse", plan);
    ProWindowRepaint(PRO_VALUE_UNUSED);
    ProTreetoolRefresh(assembly);
    return PRO_TK_NO_ERROR;
}

ProError KvShowAllComp() {
    ProMdl assembly = nullptr;
    WalkResult walk;
    DisplayPlan plan;
    ProError status = CurrentAssembly(assembly);
    if (!Failed(status)) status = PlanAll(assembly, Wanted::Shown, walk, plan);
    if (Failed(status)) return status;
    Apply("KvShowAllComp", plan);
    ProWindowRepaint(PRO_VALUE_UNUSED);
    ProTreetoolRefresh(assembly);
    return PRO_TK_NO_ERROR;
}

// Errors: PRO_TK_INVALID_TYPE for any other model, without a word.
static ProError CurrentAssembly(ProMdl& assembly) {
    ProMdlType type = PRO_MDL_UNUSED;
    const ProError status = CurrentSolidGet(assembly, type);
    if (Failed(status)) return status;
    return type == PRO_MDL_ASSEMBLY ? PRO_TK_NO_ERROR : PRO_TK_INVALID_TYPE;
}

// ---- The plan

// Every component feature once, those of one assembly together. `parts` is for parts; assemblies are shown.
//
// What is below a repeated sub-assembly are the same features again: only its first placement counts.
static ProError PlanAll(ProMdl assembly, Wanted parts, WalkResult& walk, DisplayPlan& plan) {
    const ProError status = ModelWalk(assembly, CollectAllComponents, walk, FeatureList::Made);
    if (Failed(status)) return status;
    const std::span<ProAsmcomp> components = Items(walk.components);
    const std::size_t count = std::min(components.size(), walk.models.size());
    std::vector<bool> entered(walk.distinct.size());
    for (std::size_t i = 0; i < count;) {
        const PlacedModel& placed = walk.models[i];
        const bool isPart = placed.type == PRO_MDL_PART;
        plan.push_back({components[i], placed.model, isPart, isPart ? parts : Wanted::Shown});
        const bool isRepeated = entered[placed.index];
        entered[placed.index] = true;
        ++i;
        while (isRepeated && i < count && walk.models[i].level > placed.level) ++i;
    }
    std::ranges::stable_sort(plan, std::less<>(),
                             [](const PlannedComponent& planned) { return planned.component.owner; });
    return PRO_TK_NO_ERROR;
}

// ---- What is selected

static Kept KeptOf(std::span<ProSelection> selections) {
    Kept kept;
    for (ProSelection selection : selections) Keep(selection, kept);
    std::ranges::sort(kept.parts);
    return kept;
}

// Items that are neither part nor assembly say nothing about components.
static void Keep(ProSelection selection, Kept& kept) {
    const ProModelitem item = SelectedItem(selection);
    ProAsmcomppath path = {};
    if (!IsWholeModel(item) || Failed(ProSelectionAsmcomppathGet(selection, &path))) return;
    if (path.table_num <= 0) {
        kept.everything = kept.everything || item.type == PRO_ASSEMBLY;
        return;
    }
    if (item.type == PRO_ASSEMBLY) {
        ProMdl model = nullptr;
        if (!Failed(ProAsmcomppathMdlGet(&path, &model))) kept.assemblies.push_back(model);
        return;
    }
    ProAsmcomp part = {};
    if (!Failed(SelectedComponentGet(selection, part))) kept.parts.emplace_back(part.owner, part.id);
}

static void AddAssembliesBelow(const WalkResult& walk, Kept& kept) {
    const std::vector<ProMdl> selected = kept.assemblies;
    for (ProMdl assembly : selected) {
        auto below = std::ranges::find(walk.models, assembly, &PlacedModel::model);
        if (below == walk.models.end()) continue;
        const int level = below->level;
        while (++below != walk.models.end() && below->level > level)
            if (below->type == PRO_MDL_ASSEMBLY) kept.assemblies.push_back(below->model);
    }
    std::ranges::sort(kept.assemblies, std::less<>());
    kept.assemblies.erase(std::unique(kept.assemblies.begin(), kept.assemblies.end()), kept.assemblies.end());
}

static void ShowKept(const Kept& kept, DisplayPlan& plan) {
    for (PlannedComponent& planned : plan) {
        const ProAsmcomp& component = planned.component;
        const bool isKept = kept.everything ||
                            std::ranges::binary_search(kept.assemblies, component.owner, std::less<>()) ||
                            std::ranges::binary_search(kept.parts, std::pair(component.owner, component.id));
        if (isKept) planned.wanted = Wanted::Shown;
    }
}

// ---- What is done

// One refused component never ends the others.
static void Apply(const char* command, DisplayPlan& plan) {
    ComponentVisibility visibility;
    RunRecord refusals;
    for (const PlannedComponent& planned : plan) {
        bool hide = false;
        const ProError status = ApplyTo(visibility, planned, hide);
        if (!Failed(status)) continue;
        RunEntry entry = {{}, hide ? kStepHide : kStepShow, status};
        if (Failed(ModelNameGet(planned.model, entry.model))) entry.model.clear();
        refusals.push_back(std::move(entry));
    }
    ReportRefusals(command, refusals);
}

static ProError ApplyTo(ComponentVisibility& visibility, const PlannedComponent& planned, bool& hide) {
    const bool isHidden = visibility.IsHidden(planned.component);
    hide = planned.wanted == Wanted::Reversed ? !isHidden : planned.wanted == Wanted::Hidden;
    return hide == isHidden ? PRO_TK_NO_ERROR : visibility.Set(planned.component, hide);
}

}  // namespace kv
