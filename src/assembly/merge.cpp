// KvMerge, KvMergeTo: several parts in one.
//
// KvMerge makes a new part from the template, ties it to the activated assembly's coordinate system and
// merges every selected part into it. KvMergeTo merges parts that the user picks into the activated part. A
// part that cannot be merged does not stop the others.

#include "assembly/merge.h"

#include <algorithm>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <ProAsmcomppath.h>
#include <ProAssembly.h>
#include <ProMdl.h>
#include <ProModelitem.h>
#include <ProSelection.h>
#include <ProSolid.h>

#include "assembly/assembly_texts.h"
#include "assembly/component_name.h"
#include "assembly/csys_constraint.h"
#include "assembly/merge_feature.h"
#include "assembly/new_model.h"
#include "base/host_callback.h"
#include "base/host_handle.h"
#include "base/status.h"
#include "base/text.h"
#include "model/batch_run.h"
#include "model/component_path.h"
#include "model/current_model.h"
#include "model/model_data.h"
#include "model/selection.h"
#include "ui/message_box.h"
#include "ui/prompt.h"

namespace kv {

static constexpr wchar_t kNothingToMerge[] = L"\t请先选择需要合并的零件(不支持组件)\t";
static constexpr wchar_t kNoPartActive[] = L"\t当前激活的元件不是零件，无法合并\t";
static constexpr char kMergedNamePrompt[] = "USER Enter a new name: ";
static constexpr char kPickPrompt[] = "Please select parts to be merged:";
static constexpr wchar_t kStepMerge[] = L"合并";
static constexpr wchar_t kStepNoPart[] = L"不是零件";
static constexpr wchar_t kStepItself[] = L"合并目标自身";
static constexpr wchar_t kStepRegenerate[] = L"再生";
static constexpr wchar_t kParts[] = L"零件";

// The part that gets the merge features.
struct MergeTarget {
    ProMdl part = nullptr;
    ProAsmcomppath path = {};
    bool isPathKnown = false;
    // KvMerge selects its new part without the path, KvMergeTo the activated one with it.
    bool isSelectedByPath = false;
};

static ProError TemplateLoad(ProMdl& model);
static ProError NewPartPlace(BatchRun& run, ProMdl assembly, NewModel& copy);
static void MergeSelected(BatchRun& run, const SelectionArray& selections, MergeTarget& target);
static ProError ActivePartGet(ProMdl& part);
static ProError PartsPick(std::vector<std::unique_ptr<SelectionHandle>>& picked);
static int HighestNumber(ProMdl part);
static ProError OnFeature(ProFeature* feature, ProError status, ProAppData highest);
static bool MergePart(BatchRun& run, const std::wstring& partName, ProSelection part,
                      const std::wstring& name, MergeTarget& target);
static ProError FeatureMake(MergeTarget& target, ProSelection part, const std::wstring& name);
static ProError FeatureMakeIn(MergeTarget& target, bool byPath, ProSelection part, const std::wstring& name,
                              MergeNesting nesting);
static ProError PathFind(MergeTarget& target);
static std::wstring NameOf(const ProModelitem& item);

ProError KvMerge() {
    ProMdl model = nullptr;
    ProMdl assembly = nullptr;
    SelectionArray selections;
    NewModel copy;
    ProError status = TemplateLoad(model);
    if (Failed(status)) return ShowFailure(kNoPartTemplate, status);
    status = SelectionRead(selections);
    if (Failed(status)) return ShowFailure(kNothingToMerge, status);
    status = ActiveAssemblyGet(kNoAssemblyForNew, assembly);
    if (!Failed(status)) status = CopyAsk(kMergedNamePrompt, {}, model, PRO_MDLFILE_PART, copy);
    if (Failed(status)) return status;

    BatchRun run("KvMerge", 1 + Items(selections).size());
    if (!run.Begin(copy.name)) return PRO_TK_USER_ABORT;
    Recorded(run, copy, kStepCopy, status);
    status = NewPartPlace(run, assembly, copy);
    if (!Failed(status)) {
        MergeTarget target = {copy.model};
        MergeSelected(run, selections, target);
    }
    TellMade(run, copy);
    ShowCancelled(run);
    return status;
}

static ProError TemplateLoad(ProMdl& model) {
    std::wstring path;
    const ProError status = TemplatePathGet(kPartTemplateOption, path);
    return Failed(status) ? status : ModelLoadByType(path, PRO_MDLFILE_PART, model);
}

// A part that is in its place can take in others, whether it is tied to it or not: only a missing coordinate
// system, which the user has been told of, ends the command.
static ProError NewPartPlace(BatchRun& run, ProMdl assembly, NewModel& copy) {
    CopySave(run, copy);
    const ProError status = CopyPlace(run, assembly, copy);
    if (Failed(status)) return status;
    const ProError constrained = ConstrainBySystems(run, assembly, copy, kNoSystemInPart);
    return constrained == PRO_TK_NO_COORD_SYSTEM ? constrained : PRO_TK_NO_ERROR;
}

static void MergeSelected(BatchRun& run, const SelectionArray& selections, MergeTarget& target) {
    for (ProSelection selection : Items(selections)) {
        const ProModelitem item = SelectedItem(selection);
        const std::wstring name = NameOf(item);
        if (!run.Begin(name)) continue;
        if (item.type == PRO_PART) {
            MergePart(run, name, selection, MergeName(1), target);
        } else {
            run.Add({name, kStepNoPart, PRO_TK_NO_ERROR, {}, false, true});
        }
    }
}

ProError KvMergeTo() {
    MergeTarget target;
    target.isSelectedByPath = true;
    ProError status = ActivePartGet(target.part);
    if (Failed(status)) return ShowFailure(kNoPartActive, status);
    status = PathFind(target);
    std::vector<std::unique_ptr<SelectionHandle>> picked;
    if (!Failed(status)) status = PartsPick(picked);
    if (Failed(status) || picked.empty()) return status;

    BatchRun run("KvMergeTo", picked.size());
    int number = HighestNumber(target.part) + 1;
    for (const auto& selection : picked) {
        const ProModelitem item = SelectedItem(selection->Get());
        const std::wstring name = NameOf(item);
        if (!run.Begin(name)) continue;
        if (item.owner == target.part) {
            run.Add({name, kStepItself, PRO_TK_NO_ERROR, {}, false, true});
        } else if (MergePart(run, name, selection->Get(), MergeName(number), target)) {
            ++number;
        }
    }
    TellCount(run, kParts);
    ShowCancelled(run);
    return PRO_TK_NO_ERROR;
}

static ProError ActivePartGet(ProMdl& part) {
    ProMdlType type = PRO_MDL_UNUSED;
    ProError status = ProMdlActiveGet(&part);
    if (!Failed(status)) status = ProMdlTypeGet(part, &type);
    return !Failed(status) && type != PRO_MDL_PART ? PRO_TK_INVALID_TYPE : status;
}

// What was picked is the host's memory until the next call that picks or makes selections: it is copied
// first.
static ProError PartsPick(std::vector<std::unique_ptr<SelectionHandle>>& picked) {
    char filter[] = "part";
    ProSelection* selections = nullptr;
    int count = 0;
    ProError status = DisplayMessage(kPickPrompt);
    if (!Failed(status))
        status = ProSelect(filter, -1, nullptr, nullptr, nullptr, nullptr, &selections, &count);
    if (Failed(status) || selections == nullptr) return status;
    for (int i = 0; i < count; ++i) {
        auto copy = std::make_unique<SelectionHandle>();
        if (Failed(copy->Received(ProSelectionCopy(selections[i], copy->Receive())))) continue;
        picked.push_back(std::move(copy));
    }
    return PRO_TK_NO_ERROR;
}

static int HighestNumber(ProMdl part) {
    int highest = 0;
    ProSolidFeatVisit(static_cast<ProSolid>(part), HostCallback<OnFeature>, nullptr, &highest);
    return highest;
}

static ProError OnFeature(ProFeature* feature, ProError, ProAppData highest) {
    ProName name = {};
    int& number = *static_cast<int*>(highest);
    if (!Failed(ProModelitemNameGet(feature, name))) number = std::max(number, MergeNumber(name));
    return PRO_TK_NO_ERROR;
}

// Whether the feature was made.
static bool MergePart(BatchRun& run, const std::wstring& partName, ProSelection part,
                      const std::wstring& name, MergeTarget& target) {
    const ProError status = FeatureMake(target, part, name);
    run.Add({partName, kStepMerge, status});
    if (Failed(status)) return false;
    const ProError regenerated = ProSolidRegenerate(static_cast<ProSolid>(target.part), PRO_REGEN_NO_FLAGS);
    if (Failed(regenerated)) run.Add({partName, kStepRegenerate, regenerated});
    return true;
}

// There are hosts that want the target's path in any case, and the tree as it is documented.
static ProError FeatureMake(MergeTarget& target, ProSelection part, const std::wstring& name) {
    const ProError status =
        FeatureMakeIn(target, target.isSelectedByPath, part, name, MergeNesting::BelowSelection);
    if (!Failed(status) || Failed(PathFind(target))) return status;
    const ProError again = FeatureMakeIn(target, true, part, name, MergeNesting::BesideSelection);
    return Failed(again) ? status : again;
}

static ProError FeatureMakeIn(MergeTarget& target, bool byPath, ProSelection part, const std::wstring& name,
                              MergeNesting nesting) {
    ProModelitem item = {};
    SelectionHandle selection;
    ProError status = ProMdlToModelitem(target.part, &item);
    if (!Failed(status))
        status = selection.Received(
            ProSelectionAlloc(byPath ? &target.path : nullptr, &item, selection.Receive()));
    return Failed(status) ? status : MergeFeatureCreate(selection.Get(), part, name, nesting);
}

// The target's first placement in the top model, found by one walk.
static ProError PathFind(MergeTarget& target) {
    if (target.isPathKnown) return PRO_TK_NO_ERROR;
    ProMdl top = nullptr;
    ProMdlType type = PRO_MDL_UNUSED;
    ProError status = CurrentSolidGet(top, type);
    if (!Failed(status)) status = FirstPathGet(top, target.part, target.path);
    target.isPathKnown = !Failed(status);
    return status;
}

// Empty when the item cannot be told.
static std::wstring NameOf(const ProModelitem& item) {
    std::wstring name;
    if (item.owner != nullptr && Failed(ModelNameGet(item.owner, name))) name.clear();
    return name;
}

}  // namespace kv
