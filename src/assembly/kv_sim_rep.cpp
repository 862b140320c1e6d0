// KvSimRep: the simplified representations of an assembly: activate one, delete one, make one by a rule.
//
// Rules look at the master representation: another one would hide from them what it leaves out. It is active
// only for that long.

#include "assembly/kv_sim_rep.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include <ProMdl.h>
#include <ProSolid.h>
#include <ProWindows.h>

#include "assembly/rep_rule.h"
#include "assembly/representation.h"
#include "base/number.h"
#include "base/status.h"
#include "base/text.h"
#include "model/batch_run.h"
#include "model/current_model.h"
#include "model/model_box.h"
#include "model/model_data.h"
#include "model/model_walk.h"
#include "model/prefix_list.h"
#include "model/run_reasons.h"
#include "model/selection.h"
#include "ui/dialog.h"
#include "ui/message_box.h"
#include "ui/prompt.h"
#include "ui/table.h"

namespace kv {

static constexpr char kRepDialog[] = "KvSimRep";
static constexpr TableName kRepTable = {kRepDialog, "rep_list"};
static constexpr char kRuleGroup[] = "RuleRadio";
static constexpr std::string_view kRuleLeaveOut = "LeaveOut";
static constexpr std::string_view kRuleKeepOnly = "KeepOnly";
static constexpr std::string_view kRulePrefix = "Prefix";

static constexpr wchar_t kNoAssemblyForRep[] = L"此功能仅组件可用！";
static constexpr wchar_t kRepsUnreadable[] = L"\t无法读取简化表示：";
static constexpr wchar_t kNoRepRow[] = L"\t请先在列表中选择一个简化表示！\t";
static constexpr wchar_t kMasterStays[] = L"\t主表示不能删除！\t";
static constexpr wchar_t kNotActivated[] = L"\t无法激活此简化表示：";
static constexpr wchar_t kNotDeleted[] = L"\t无法删除此简化表示：";
static constexpr wchar_t kBadRepName[] = L"\t名称须为1到31个字符，不能有空格！\t";
static constexpr wchar_t kRepNameTaken[] = L"\t已有同名简化表示；要替换它请勾选“替换”！\t";
static constexpr wchar_t kNoneSelected[] = L"\t没有选中的元件，请先选取元件！\t";
static constexpr wchar_t kNoPrefixes[] = L"\t请输入名称前缀！\t";
static constexpr wchar_t kBadPercent[] = L"\t百分比须为大于0、小于100的数字！\t";
static constexpr wchar_t kNoAssemblyBox[] = L"\t无法得到组件的外形尺寸，不能按大小排除！\t";
static constexpr wchar_t kNoMaster[] = L"\t无法激活主表示：";
static constexpr wchar_t kNoneFits[] = L"\t没有元件符合此规则，未创建简化表示！\t";
static constexpr wchar_t kAllFit[] = L"\t此规则会排除全部元件，未创建简化表示！\t";
static constexpr wchar_t kNotMade[] = L"\t无法创建简化表示：";
static constexpr wchar_t kRuleBroken[] = L"\t无法读取组件的元件：";
static constexpr wchar_t kPickComponents[] = L"请选取元件";
static constexpr char kRepMessage[] = "Batch result:%0w";
static constexpr wchar_t kStepSize[] = L"计算外形大小";

// The fields of the dialog, for the time of a pick.
struct RepFields {
    std::string rule;
    std::wstring prefixes, percent, name;
    bool replaces = false;
};

struct RepDialog {
    ProMdl assembly = nullptr;
    std::vector<NamedRep> reps;  // by row
    std::vector<SelectedComponent> selected;
    std::optional<RepFields> fields;
    bool picks = false;  // it ended for that
    std::wstring report;
    std::map<ProMdl, double> diagonals;  // in millimetres, of models that were measured
};

static void FillRepDialog(RepDialog& dialog);
static bool FillReps(RepDialog& dialog);
static void OnActivateRep(RepDialog& dialog);
static void OnDeleteRep(RepDialog& dialog);
static void OnPickComponents(RepDialog& dialog);
static void OnCountRule(RepDialog& dialog);
static void OnCreateRep(RepDialog& dialog);
static void OnRepReport(RepDialog& dialog);
static const NamedRep* ChosenRep(const RepDialog& dialog);
static std::wstring RepLabel(const NamedRep& rep);
static bool NameFree(const RepDialog& dialog, const std::wstring& name, std::optional<ProSimprep>& replaced);
static bool PlanByRule(RepDialog& dialog, RepRule& rule, RepPlan& plan);
static bool NeedsSize(std::string_view choice);
static bool RuleIsFilled(const RepDialog& dialog, std::string_view choice, double& percent);
static std::vector<bool> ByPrefix(const WalkResult& walk);
static bool BySize(RepDialog& dialog, const WalkResult& walk, double percent, std::vector<bool>& small);
static ProError DiagonalGet(RepDialog& dialog, ProMdl model, double& millimetres);
static void ShowRefused(const wchar_t* headline, ProError status);
static void ShowWindowAnew(ProMdl assembly);
static std::wstring PlanText(const RepPlan& plan);

ProError KvSimRep() {
    RepDialog dialog;
    ProMdlType type = PRO_MDL_UNUSED;
    ProError status = CurrentModelGet(dialog.assembly, type);
    if (Failed(status)) return status;
    if (type != PRO_MDL_ASSEMBLY) return ShowFailure(kNoAssemblyForRep, PRO_TK_INVALID_TYPE);
    status = SelectedComponentsGet(dialog.assembly, dialog.selected);
    if (Failed(status)) return status;
    do {
        dialog.picks = false;
        status = RunDialog(kRepDialog,
                           {
                               Pressed<OnActivateRep>("ActivateRep"),
                               Activated<OnActivateRep>(kRepTable.component),
                               Pressed<OnDeleteRep>("DeleteRep"),
                               Pressed<OnPickComponents>("PickComponents"),
                               Pressed<OnCountRule>("CountRule"),
                               Pressed<OnCreateRep>("CreateRep"),
                               Pressed<OnRepReport>("KvShowReport"),
                               Closes("Close"),
                           },
                           dialog, FillRepDialog);
        if (Failed(status) || !dialog.picks) return status;
        DisplayMessage(kRepMessage, kPickComponents);
        std::vector<SelectedComponent> picked;
        // A pick that ends with nothing leaves what was selected.
        if (!Failed(PickedComponentsGet(dialog.assembly, picked)) && !picked.empty())
            dialog.selected = picked;
    } while (true);
}

// ---- The dialog

static void FillRepDialog(RepDialog& dialog) {
    (void)TableSingleSelection(kRepTable);
    InputTextSet(kRepDialog, "SelectedCount",
                 L"已选 " + std::to_wstring(dialog.selected.size()) + L" 个元件");
    if (dialog.fields) {
        RadioChoiceSet(kRepDialog, kRuleGroup, dialog.fields->rule);
        InputTextSet(kRepDialog, "RepPrefixes", dialog.fields->prefixes);
        InputTextSet(kRepDialog, "SmallPercent", dialog.fields->percent);
        InputTextSet(kRepDialog, "RepName", dialog.fields->name);
        CheckTickedSet(kRepDialog, "ReplaceRep", dialog.fields->replaces);
    } else {
        const std::string_view rule = dialog.selected.empty() ? kRulePrefix : kRuleLeaveOut;
        RadioChoiceSet(kRepDialog, kRuleGroup, std::string(rule));
    }
    (void)FillReps(dialog);
}

// False, with a box, when the host does not list them; the table is then empty.
static bool FillReps(RepDialog& dialog) {
    dialog.reps.clear();
    std::vector<NamedRep> reps;
    ProSimprep active = {};
    ProError status = RepresentationsGet(dialog.assembly, reps);
    if (!Failed(status)) status = ProSimprepActiveGet(static_cast<ProSolid>(dialog.assembly), &active);
    if (!Failed(status)) status = TableRowsClear(kRepTable);
    if (!Failed(status)) status = TableRowsNumber(kRepTable, reps.size());
    if (Failed(status)) {
        ShowRefused(kRepsUnreadable, status);
        return false;
    }
    for (std::size_t i = 0; i < reps.size(); ++i) {
        const std::string row = std::to_string(i + 1);
        CellTextSet(kRepTable, row, "name", RepLabel(reps[i]));
        CellTextSet(kRepTable, row, "state", reps[i].rep.id == active.id ? L"当前" : L"");
    }
    dialog.reps = std::move(reps);
    return true;
}

static void OnActivateRep(RepDialog& dialog) {
    const NamedRep* chosen = ChosenRep(dialog);
    if (chosen == nullptr) return;
    const ProError status = RepresentationShow(dialog.assembly, chosen->rep);
    if (Failed(status)) return ShowRefused(kNotActivated, status);
    ShowWindowAnew(dialog.assembly);
    (void)FillReps(dialog);
}

// The active one cannot be deleted: the master takes its place first.
static void OnDeleteRep(RepDialog& dialog) {
    const NamedRep* chosen = ChosenRep(dialog);
    if (chosen == nullptr) return;
    if (chosen->isMaster) return ShowMessage(kMasterStays);
    if (!AskUser((L"确定删除简化表示“" + RepLabel(*chosen) + L"”吗？").c_str())) return;
    MasterRepresentation master(dialog.assembly);
    ProSimprep rep = chosen->rep;
    const ProError status = Failed(master.Status()) ? master.Status() : ProSimprepDelete(&rep);
    if (Failed(status)) return ShowRefused(kNotDeleted, status);
    if (master.Former().id == rep.id) {
        master.Keep();
        ProSolidDisplay(static_cast<ProSolid>(dialog.assembly));
        ShowWindowAnew(dialog.assembly);
    }
    (void)FillReps(dialog);
}

static void OnPickComponents(RepDialog& dialog) {
    bool replaces = false;
    if (Failed(CheckTickedGet(kRepDialog, "ReplaceRep", replaces))) replaces = false;
    dialog.fields = {RadioChoice(kRepDialog, kRuleGroup), InputText(kRepDialog, "RepPrefixes"),
                     InputText(kRepDialog, "SmallPercent"), InputText(kRepDialog, "RepName"), replaces};
    dialog.picks = true;
    DialogClose(kRepDialog);
}

static void OnCountRule(RepDialog& dialog) {
    MasterRepresentation master(dialog.assembly);
    if (Failed(master.Status())) return ShowRefused(kNoMaster, master.Status());
    RepRule rule;
    RepPlan plan;
    if (PlanByRule(dialog, rule, plan)) InputTextSet(kRepDialog, "RuleCount", PlanText(plan));
}

static void OnCreateRep(RepDialog& dialog) {
    const std::wstring name = InputText(kRepDialog, "RepName");
    if (!IsRepName(name)) return ShowMessage(kBadRepName);
    std::optional<ProSimprep> replaced;
    if (!NameFree(dialog, name, replaced)) return;
    MasterRepresentation master(dialog.assembly);
    if (Failed(master.Status())) return ShowRefused(kNoMaster, master.Status());
    RepRule rule;
    RepPlan plan;
    if (!PlanByRule(dialog, rule, plan)) return;
    InputTextSet(kRepDialog, "RuleCount", PlanText(plan));
    if (plan.items.empty() || plan.leftOut == 0) return ShowMessage(kNoneFits);
    if (plan.kept == 0) return ShowMessage(kAllFit);

    ProSimprep rep = {};
    ProError status =
        RepresentationMake(dialog.assembly, name, plan, rule.keepsOnly, replaced ? &*replaced : nullptr, rep);
    if (Failed(status)) return ShowRefused(kNotMade, status);
    status = RepresentationShow(dialog.assembly, rep);
    if (Failed(status)) {
        ShowRefused(kNotActivated, status);
    } else {
        master.Keep();
        DisplayMessage(kRepMessage, (L"简化表示 " + name + L"：" + PlanText(plan)).c_str());
        ShowWindowAnew(dialog.assembly);
    }
    (void)FillReps(dialog);
}

static void OnRepReport(RepDialog& dialog) {
    ShowReport(dialog.report);
}

// The representation in the selected row; null, with a box, for none.
static const NamedRep* ChosenRep(const RepDialog& dialog) {
    int row = 0;
    const bool isRow = !Failed(IntegerFromText(WideName(SelectedRow(kRepTable)), row)) && row >= 1 &&
                       static_cast<std::size_t>(row) <= dialog.reps.size();
    if (isRow) return &dialog.reps[static_cast<std::size_t>(row) - 1];
    ShowMessage(kNoRepRow);
    return nullptr;
}

static std::wstring RepLabel(const NamedRep& rep) {
    if (rep.isMaster) return L"主表示";
    return rep.name.empty() ? L"（名称无法读取）" : rep.name;
}

// Whether the name may be used; says so when it may not.
//
// replaced  the representation of that name, where the user wants it replaced
static bool NameFree(const RepDialog& dialog, const std::wstring& name, std::optional<ProSimprep>& replaced) {
    ProSimprep found = {};
    const ProError status = RepresentationFind(dialog.assembly, name, found);
    if (status == PRO_TK_E_NOT_FOUND) return true;
    if (Failed(status)) {
        ShowRefused(kNotMade, status);
        return false;
    }
    bool replaces = false;
    if (Failed(CheckTickedGet(kRepDialog, "ReplaceRep", replaces)) || !replaces) {
        ShowMessage(kRepNameTaken);
        return false;
    }
    replaced = found;
    return true;
}

// ---- The rule

// False, with a box, when the rule lacks something or the assembly cannot be read.
static bool PlanByRule(RepDialog& dialog, RepRule& rule, RepPlan& plan) {
    const std::string choice = RadioChoice(kRepDialog, kRuleGroup);
    double percent = 0;
    if (!RuleIsFilled(dialog, choice, percent)) return false;
    WalkResult walk;
    const ProError status = ModelWalk(dialog.assembly, CollectAllComponents, walk, FeatureList::Made);
    const std::span<const ProAsmcomp> components = Items(walk.components);
    if (Failed(status) || components.size() != walk.models.size()) {
        ShowRefused(kRuleBroken, Failed(status) ? status : PRO_TK_GENERAL_ERROR);
        return false;
    }
    rule.keepsOnly = choice == kRuleKeepOnly;
    if (choice == kRulePrefix) rule.models = ByPrefix(walk);
    if (NeedsSize(choice) && !BySize(dialog, walk, percent, rule.models)) return false;
    if (choice == kRuleLeaveOut || rule.keepsOnly)
        for (const SelectedComponent& component : dialog.selected) rule.selected.push_back(component.ids);

    std::vector<RepPlacement> placements;
    placements.reserve(components.size());
    for (std::size_t i = 0; i < components.size(); ++i)
        placements.push_back({walk.models[i].level, components[i].id, walk.models[i].index});
    plan = PlanRepresentation(placements, rule);
    return true;
}

static bool NeedsSize(std::string_view choice) {
    return choice != kRuleLeaveOut && choice != kRuleKeepOnly && choice != kRulePrefix;
}

static bool RuleIsFilled(const RepDialog& dialog, std::string_view choice, double& percent) {
    const wchar_t* refusal = nullptr;
    if (choice == kRuleLeaveOut || choice == kRuleKeepOnly) {
        if (dialog.selected.empty()) refusal = kNoneSelected;
    } else if (choice == kRulePrefix) {
        if (PrefixListFromText(WithoutBlanks(InputText(kRepDialog, "RepPrefixes"))).empty())
            refusal = kNoPrefixes;
    } else {
        const ProError status = RealFromText(InputText(kRepDialog, "SmallPercent"), percent);
        if (Failed(status) || !(percent > 0 && percent < 100)) refusal = kBadPercent;
    }
    if (refusal != nullptr) ShowMessage(refusal);
    return refusal == nullptr;
}

// A model whose name cannot be read stays.
static std::vector<bool> ByPrefix(const WalkResult& walk) {
    const PrefixList prefixes = PrefixListFromText(WithoutBlanks(InputText(kRepDialog, "RepPrefixes")));
    std::vector<bool> models;
    for (const DistinctModel& distinct : walk.distinct) {
        std::wstring name;
        models.push_back(!Failed(ModelNameGet(distinct.model, name)) && HasPrefix(prefixes, name));
    }
    return models;
}

// Parts smaller than a share of the assembly. One whose size cannot be had stays; the report says why. False
// when the user has stopped the run or there is nothing to compare with.
static bool BySize(RepDialog& dialog, const WalkResult& walk, double percent, std::vector<bool>& small) {
    double whole = 0;
    if (Failed(DiagonalGet(dialog, dialog.assembly, whole)) || !(whole > 0)) {
        ShowMessage(kNoAssemblyBox);
        return false;
    }
    BatchRun run(kRepDialog, walk.distinct.size());
    dialog.report = run.ReportPath();
    for (const DistinctModel& distinct : walk.distinct) {
        RunEntry entry = {{}, kStepSize};
        if (Failed(ModelNameGet(distinct.model, entry.model))) entry.model.clear();
        small.push_back(false);
        if (!run.Begin(entry.model)) continue;
        if (distinct.type != PRO_MDL_PART) continue;
        double diagonal = 0;
        entry.status = DiagonalGet(dialog, distinct.model, diagonal);
        small.back() = !Failed(entry.status) && diagonal < whole * percent / 100;
        run.Add(std::move(entry));
    }
    ShowCancelled(run);
    if (run.Count().failed > 0) TellCount(run, kModelItems);
    return !run.Cancelled();
}

// Each model is measured once as long as the dialog is up.
static ProError DiagonalGet(RepDialog& dialog, ProMdl model, double& millimetres) {
    const auto known = dialog.diagonals.find(model);
    if (known != dialog.diagonals.end()) millimetres = known->second;
    if (known != dialog.diagonals.end()) return PRO_TK_NO_ERROR;
    Extents extents = {};
    LengthUnit unit;
    ProError status = ModelExtentsGet(model, extents);
    if (!Failed(status)) status = LengthUnitGet(model, unit);
    if (Failed(status)) return status;
    millimetres = DiagonalOf(extents) * unit.millimetres;
    dialog.diagonals[model] = millimetres;
    return status;
}

// ---- What the user sees

static void ShowRefused(const wchar_t* headline, ProError status) {
    ShowMessage((headline + ReasonText({{}, L"", status}) + L"\t").c_str());
}

static void ShowWindowAnew(ProMdl assembly) {
    ProWindowRepaint(PRO_VALUE_UNUSED);
    ProTreetoolRefresh(assembly);
}

static std::wstring PlanText(const RepPlan& plan) {
    return L"排除 " + std::to_wstring(plan.leftOut) + L" 个元件，保留 " + std::to_wstring(plan.kept) + L" 个";
}

}  // namespace kv
