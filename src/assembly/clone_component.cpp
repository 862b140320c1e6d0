// CloneComp, CloneAndReplace: a copy of the selected component's model.
//
// CloneComp places the copy in the activated assembly and lets the user define its constraints.
// CloneAndReplace has the host put the copy in the selected component's place. The settings say how the copy
// is named.

#include "assembly/clone_component.h"

#include <algorithm>
#include <iterator>
#include <string>
#include <utility>

#include <ProAsmcomp.h>
#include <ProAsmcomppath.h>
#include <ProMdl.h>
#include <ProMenu.h>
#include <ProModelitem.h>
#include <ProSelection.h>

#include "assembly/assembly_texts.h"
#include "assembly/new_model.h"
#include "assembly/replace_macro.h"
#include "base/host_handle.h"
#include "base/host_version.h"
#include "base/status.h"
#include "base/text.h"
#include "model/batch_run.h"
#include "model/current_model.h"
#include "model/model_data.h"
#include "model/selection.h"
#include "settings/settings_store.h"
#include "ui/message_box.h"
#include "ui/prompt.h"

namespace kv {

static constexpr wchar_t kNothingSelected[] = L"\t请先选择需要克隆的元件\t";
static constexpr wchar_t kOneOnly[] = L"\t当前模式只能选择1个元件\t";
static constexpr wchar_t kNoModelForClone[] = L"\t当前模式只能选择零件或组件\t";
static constexpr wchar_t kNoModelForReplace[] = L"\t当前模式仅可选择零件或者组件\t";
static constexpr wchar_t kNoAssembly[] = L"\t当前被激活的模型不是组件/制造,无法克隆装配\t";
static constexpr char kNamePrompt[] = "USER Enter a new name:|||%0w";
static constexpr wchar_t kRuleSetting[] = L"CompCopyAutoNum";
static constexpr wchar_t kNoRule[] = L"未设置克隆元件的命名方式，未克隆";
static constexpr wchar_t kStepDefine[] = L"定义约束";
static constexpr wchar_t kStepDefineCancelled[] = L"约束定义已取消";
static constexpr wchar_t kStepReplace[] = L"替换元件";
static constexpr wchar_t kReplacing[] = L"：已创建，正在替换所选元件";
static constexpr wchar_t kNotReplacing[] = L"：已创建，未能替换所选元件";

// What the user has selected, and where the copy goes; all of it read before anything is asked or made.
struct Source {
    ProMdl model = nullptr;
    ProMdlType type = PRO_MDL_UNUSED;
    std::wstring name;
    ProMdl assembly = nullptr;
    // Whether the selected component can be told in its assembly: without it there is nothing to replace.
    ProError placeStatus = PRO_TK_NO_ERROR;
};

// Names or makes the copy. PRO_TK_MSG_USER_QUIT ends the command quietly.
using CopyRule = ProError (*)(const Source& source, NewModel& copy);

static ProError Clone(const char* command, const wchar_t* noModel,
                      void (*finish)(BatchRun& run, const Source& source, NewModel& copy));
static ProError SourceGet(const wchar_t* noModel, Source& source);
static ProError PlaceCheck(ProSelection selection);
static CopyRule ChosenRule();
static ProError CopyByUser(const Source& source, NewModel& copy);
static ProError CopyByComponent(const Source& source, NewModel& copy);
static ProError CopyByAssembly(const Source& source, NewModel& copy);
static void PlaceAndDefine(BatchRun& run, const Source& source, NewModel& copy);
static void SaveAndReplace(BatchRun& run, const Source& source, NewModel& copy);

ProError CloneComp() {
    return Clone("CloneComp", kNoModelForClone, PlaceAndDefine);
}

ProError CloneAndReplace() {
    return Clone("CloneAndReplace", kNoModelForReplace, SaveAndReplace);
}

static ProError Clone(const char* command, const wchar_t* noModel,
                      void (*finish)(BatchRun& run, const Source& source, NewModel& copy)) {
    Source source;
    ProError status = SourceGet(noModel, source);
    if (Failed(status)) return status;
    const CopyRule makeCopy = ChosenRule();
    if (makeCopy == nullptr) return DisplayMessage(kNewModelMessage, kNoRule);
    NewModel copy;
    status = makeCopy(source, copy);
    if (status == PRO_TK_MSG_USER_QUIT) return status;

    BatchRun run(command, 1);
    if (!run.Begin(copy.name)) return PRO_TK_USER_ABORT;
    Recorded(run, copy, kStepCopy, status);
    if (Failed(status)) {
        TellMade(run, copy);
    } else {
        finish(run, source, copy);
    }
    return status;
}

static ProError SourceGet(const wchar_t* noModel, Source& source) {
    SelectionArray selections;
    ProError status = SelectionRead(selections);
    if (Failed(status)) return ShowFailure(kNothingSelected, status);
    if (Items(selections).size() != 1) return ShowFailure(kOneOnly, PRO_TK_BAD_CONTEXT);
    ProModelitem item = SelectedItem(*selections.Get());
    if (!IsWholeModel(item)) return ShowFailure(noModel, PRO_TK_INVALID_TYPE);
    source.type = static_cast<ProMdlType>(item.type);
    status = ActiveAssemblyGet(kNoAssembly, source.assembly);
    if (!Failed(status)) status = ProModelitemMdlGet(&item, &source.model);
    if (!Failed(status)) status = ModelNameGet(source.model, source.name);
    if (!Failed(status)) source.placeStatus = PlaceCheck(*selections.Get());
    return status;
}

static ProError PlaceCheck(ProSelection selection) {
    ProAsmcomppath path = {};
    ProMdl model = nullptr;
    const ProError status = ProSelectionAsmcomppathGet(selection, &path);
    return Failed(status) ? status : ProAsmcomppathMdlGet(&path, &model);
}

// Null for a setting that names none.
static CopyRule ChosenRule() {
    constexpr std::pair<const wchar_t*, CopyRule> kRules[] = {
        {L"byUser", CopyByUser}, {L"byComp", CopyByComponent}, {L"byAsm", CopyByAssembly}};
    const std::wstring chosen =
        WithoutBlanks(SettingRead(SettingsPath(kCommonSettings), kRuleSetting, kValueKey));
    const auto* rule = std::ranges::find_if(kRules, [&](const auto& row) { return chosen == row.first; });
    return rule == std::end(kRules) ? nullptr : rule->second;
}

static ProMdlfileType FileType(const Source& source) {
    return static_cast<ProMdlfileType>(source.type);
}

static ProError CopyByUser(const Source& source, NewModel& copy) {
    return CopyAsk(kNamePrompt, source.name, source.model, FileType(source), copy);
}

// Only parts take names of this series, whatever is copied: an assembly may find its name taken.
static ProError CopyByComponent(const Source& source, NewModel& copy) {
    ProError status = FreeNameGet({source.name, NumberedName, PRO_MDLFILE_PART, kLongestHostName}, copy.name);
    if (!Failed(status) && source.type != PRO_MDL_PART) status = NameFreeCheck(copy.name, FileType(source));
    return Failed(status) ? status : CopyMake(source.model, copy);
}

static ProError CopyByAssembly(const Source& source, NewModel& copy) {
    std::wstring assembly;
    ProError status = ModelNameGet(source.assembly, assembly);
    if (Failed(status)) return status;
    const CopyNameRule rule = source.type == PRO_MDL_PART ? NumberedName : NumberedAssemblyName;
    status = FreeNameGet({SeriesBase(assembly), rule, FileType(source), kLongestHostName}, copy.name);
    return Failed(status) ? status : CopyMake(source.model, copy);
}

static void PlaceAndDefine(BatchRun& run, const Source& source, NewModel& copy) {
    CopySave(run, copy);
    if (!Failed(CopyPlace(run, source.assembly, copy))) {
        const ProError status = ProAsmcompConstrRedefUI(&copy.component);
        const bool isCancelled = status == PRO_TK_USER_ABORT;
        Recorded(run, copy, isCancelled ? kStepDefineCancelled : kStepDefine,
                 isCancelled ? PRO_TK_NO_ERROR : status);
        copy.isConstrained = !Failed(status);
    }
    TellMade(run, copy);
}

// The host plays the macro when the command has returned; it finds the copy in the working directory, where
// it was saved, and acts on what is still selected.
static void SaveAndReplace(BatchRun& run, const Source& source, NewModel& copy) {
    CopySave(run, copy);
    ProError status = source.placeStatus;
    if (!Failed(status)) {
        const wchar_t* extension = source.type == PRO_MDL_PART ? L".prt" : L".asm";
        status = ProMacroLoad(HostText(ReplaceMacro(HostVersion(), copy.name + extension).c_str()));
    }
    Recorded(run, copy, kStepReplace, status);
    TellMade(run, copy, Failed(status) ? kNotReplacing : kReplacing);
}

}  // namespace kv
