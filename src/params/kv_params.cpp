// KvParams: one parameter in many models at once.
//
// Add, Update and Delete work on a parameter that the user names, the two other buttons write parameters with
// outline dimensions and sheet sizes. Each press first stores the dialog's settings, so that the dialog opens
// the next time as it was left.

#include "params/kv_params.h"

#include <string>

#include <ProMdl.h>
#include <ProSolid.h>

#include "base/number.h"
#include "base/status.h"
#include "base/text.h"
#include "model/batch_run.h"
#include "model/current_model.h"
#include "model/model_batch.h"
#include "model/parameter.h"
#include "params/model_choice.h"
#include "params/outline.h"
#include "params/parameter_value.h"
#include "params/sheet_size.h"
#include "settings/dialog_settings.h"
#include "settings/settings_store.h"
#include "ui/dialog.h"
#include "ui/message_box.h"
#include "ui/prompt.h"

namespace kv {

static constexpr char kDialog[] = "KvParams";
static constexpr char kTypeChoice[] = "TypeRadio";
static constexpr char kParameterName[] = "ParaName";
static constexpr char kParameterValue[] = "ParaValue";
static constexpr char kParameterType[] = "PtypeOption";
static constexpr char kExcluded[] = "InputKeyWords";
static constexpr char kDerivedTypeChoice[] = "TypeRadio2";
static constexpr char kDerivedExcluded[] = "InputKeyWords2";
static constexpr char kOutlineOrder[] = "KvOutlineOrder";
static constexpr char kOutlineDecimals[] = "KvOutlineNum";
static constexpr char kOutlineName[] = "outlinePname";
static constexpr char kSheetSizeName[] = "shSizePname";

// What the dialog starts with where the settings say nothing.
static constexpr char kAllModels[] = "AsmAndPart";
static constexpr wchar_t kUsualType[] = L"字符串";
static constexpr wchar_t kUsualDecimals[] = L"2";

static constexpr wchar_t kSettingsFile[] = L"\\KVconfig\\KvParams.ini";
static constexpr DialogSetting kSettings[] = {
    {kExcluded, SettingKind::Text, kContentKey},
    {kOutlineOrder, SettingKind::Tick, kContentKey},
    {kOutlineDecimals, SettingKind::OptionLabel, kContentKey},
    {kOutlineName, SettingKind::TextWithoutBlanks, kContentKey},
    {kSheetSizeName, SettingKind::TextWithoutBlanks, kContentKey},
};
// Both halves start with the first half's prefixes; the second half's are not stored.
static constexpr DialogSetting kStartOnly[] = {{kDerivedExcluded, SettingKind::Text, kContentKey, kExcluded}};

static constexpr char kValueMessage[] = "Parameter value:%0w";
static constexpr wchar_t kNameMissing[] = L"\t请输入参数名称！\t";
static constexpr wchar_t kNameTooLong[] = L"\t参数名称超过31个字符，未做任何改动！\t";
static constexpr wchar_t kValueTooLong[] = L"\t参数值超过80个字符，未做任何改动！\t";
static constexpr wchar_t kValueOutOfRange[] = L"\t参数值不是所选类型可用的值，未做任何改动！\t";
static constexpr wchar_t kBadBoolean[] = L"布尔类型参数值只可为'YES'或'NO',请重新输入!";
static constexpr wchar_t kNoAssembly[] = L"当前环境不是组件/制造，无法执行此操作";
static constexpr wchar_t kOutlineDone[] = L"外形尺寸参数批量创建/更新完成";
static constexpr wchar_t kSheetSizeDone[] = L"图幅大小参数批量创建/更新完成";

// What the upper half of the dialog asks for.
struct ParameterRequest {
    std::wstring name;
    ProParamvalueType type = PRO_PARAM_NOT_SET;
    std::wstring value;
};

static constexpr ModelChoice kNamedModels = {kTypeChoice, kExcluded, true, ShowMessage};
static constexpr ModelChoice kDerivedModels = {kDerivedTypeChoice, kDerivedExcluded, false, ShowInformation};

using ValueWork = ProError (*)(ProMdl model, const std::wstring& name, const ProParamvalue& value);

struct ParamsDialog {
    std::wstring report = {};  // path of the last run's
    ShownSettings shown = {};  // of the settings when they were restored or saved
};

static void FillDialog(ParamsDialog& dialog);
static void RestoreSettings();
static void OnAdd(ParamsDialog& dialog);
static void OnUpdate(ParamsDialog& dialog);
static void OnDelete(ParamsDialog& dialog);
static void OnOutline(ParamsDialog& dialog);
static void OnSheetSize(ParamsDialog& dialog);
static void OnShowReport(const ParamsDialog& dialog);
static void SaveSettings(ParamsDialog& dialog);
static void ApplyValue(ParamsDialog& dialog, const wchar_t* step, ValueWork work);
static ProError RequestGet(ParameterRequest& request);
static ProError NameGet(const char* component, std::wstring& name);
static ProError RequestValueGet(const ParameterRequest& request, ProParamvalue& value);
static ProError OutlineTaskGet(OutlineTask& task);
static void ShowChange(const BatchRun& run, ProMdl model, ParamsDialog& dialog);
static void ShowDerived(const BatchRun& run, const wchar_t* done, ProMdl model, ParamsDialog& dialog);

ProError KvParams() {
    ParamsDialog dialog;
    return RunDialog(kDialog,
                     {
                         Pressed<OnAdd>("Add"),
                         Pressed<OnUpdate>("Update"),
                         Pressed<OnDelete>("Delete"),
                         Pressed<OnOutline>("KvOutline"),
                         Pressed<OnSheetSize>("KvSheetSize"),
                         Pressed<OnShowReport>("KvShowReport"),
                         Closes("Close"),
                     },
                     dialog, FillDialog);
}

static void FillDialog(ParamsDialog& dialog) {
    RadioChoiceSet(kDialog, kTypeChoice, kAllModels);
    RadioChoiceSet(kDialog, kDerivedTypeChoice, kAllModels);
    OptionLabelSet(kDialog, kParameterType, kUsualType);
    OptionLabelSet(kDialog, kOutlineDecimals, kUsualDecimals);
    RestoreSettings();
    dialog.shown = DialogSettingsShown(kDialog, kSettings);
}

static void RestoreSettings() {
    const std::wstring file = TextDirSettingsPath(kSettingsFile);
    DialogSettingsRestore(kDialog, file, kSettings);
    DialogSettingsRestore(kDialog, file, kStartOnly);
}

static void OnAdd(ParamsDialog& dialog) {
    ApplyValue(dialog, kStepAddParameter, ParameterCreate);
}

static void OnUpdate(ParamsDialog& dialog) {
    ApplyValue(dialog, kStepSetParameter, ParameterUpdate);
}

static void OnDelete(ParamsDialog& dialog) {
    SaveSettings(dialog);
    ModelBatch batch;
    std::wstring name;
    if (Failed(ChosenModelsNeed(kDialog, kNamedModels, batch)) || Failed(NameGet(kParameterName, name)))
        return;

    BatchRun run(kDialog, batch.models.size());
    ForEachModel(batch, run, kStepDropParameter,
                 [&name](ProMdl model, const std::wstring&) { return ParameterDelete(model, name); });
    ShowChange(run, batch.current, dialog);
}

static void OnOutline(ParamsDialog& dialog) {
    SaveSettings(dialog);
    ModelBatch batch;
    OutlineTask task;
    if (Failed(CurrentAssemblyGet(kNoAssembly, batch.current, ShowInformation))) return;
    if (Failed(ChosenModelsNeed(kDialog, kDerivedModels, batch)) || Failed(OutlineTaskGet(task))) return;

    BatchRun run(kDialog, batch.models.size());
    ForEachModel(batch, run, kStepOutline,
                 [&task](ProMdl model, const std::wstring&) { return OutlineWrite(model, task); });
    ShowDerived(run, kOutlineDone, batch.current, dialog);
}

static void OnSheetSize(ParamsDialog& dialog) {
    SaveSettings(dialog);
    ModelBatch batch;
    ProMdlType type = PRO_MDL_UNUSED;
    if (Failed(CurrentModelGet(batch.current, type)) || type != PRO_MDL_ASSEMBLY) return;
    std::wstring parameter;
    if (Failed(ChosenModelsNeed(kDialog, kDerivedModels, batch)) ||
        Failed(NameGet(kSheetSizeName, parameter)))
        return;

    BatchRun run(kDialog, batch.models.size());
    ForEachModel(batch, run, kStepSheetSize, [&parameter](ProMdl model, const std::wstring& name) {
        return SheetSizeWrite(model, name, parameter);
    });
    ShowDerived(run, kSheetSizeDone, batch.current, dialog);
}

static void OnShowReport(const ParamsDialog& dialog) {
    ShowReport(dialog.report);
}

static void SaveSettings(ParamsDialog& dialog) {
    DialogSettingsSave(kDialog, TextDirSettingsPath(kSettingsFile), kSettings, dialog.shown);
}

// Add and Update differ in nothing but what they do to one model.
static void ApplyValue(ParamsDialog& dialog, const wchar_t* step, ValueWork work) {
    SaveSettings(dialog);
    ModelBatch batch;
    ParameterRequest request;
    ProParamvalue value = {};
    if (Failed(ChosenModelsNeed(kDialog, kNamedModels, batch)) || Failed(RequestGet(request))) return;
    if (Failed(RequestValueGet(request, value))) return;

    BatchRun run(kDialog, batch.models.size());
    ForEachModel(batch, run, step,
                 [&](ProMdl model, const std::wstring&) { return work(model, request.name, value); });
    // A number is read from the beginning of the text: what became of it has to be seen.
    DisplayMessage(kValueMessage, ParameterValueText(value).c_str());
    ShowChange(run, batch.current, dialog);
}

static ProError RequestGet(ParameterRequest& request) {
    std::wstring label;
    ProError status = InputTextGet(kDialog, kParameterValue, request.value);
    if (!Failed(status)) status = OptionLabelGet(kDialog, kParameterType, label);
    request.type = ParameterTypeFromLabel(label);
    return Failed(status) ? status : NameGet(kParameterName, request.name);
}

// A parameter's name; the user is told about one that no parameter can have.
static ProError NameGet(const char* component, std::wstring& name) {
    const ProError status = InputTextGet(kDialog, component, name);
    if (Failed(status)) return status;
    if (name.empty()) return ShowFailure(kNameMissing, PRO_TK_BAD_INPUTS);
    ProName fits;
    return Failed(CopyText(name, fits)) ? ShowFailure(kNameTooLong, PRO_TK_LINE_TOO_LONG) : PRO_TK_NO_ERROR;
}

// The value for all models; the user is told about a text that is none, before any model is touched.
static ProError RequestValueGet(const ParameterRequest& request, ProParamvalue& value) {
    if (request.type == PRO_PARAM_BOOLEAN && !IsBooleanText(request.value))
        return ShowFailure(kBadBoolean, PRO_TK_BAD_INPUTS);
    const ProError status = ParameterValueFromText(request.type, request.value, value);
    if (status == PRO_TK_LINE_TOO_LONG) return ShowFailure(kValueTooLong, status);
    return Failed(status) ? ShowFailure(kValueOutOfRange, status) : status;
}

static ProError OutlineTaskGet(OutlineTask& task) {
    std::wstring decimals;
    ProError status = NameGet(kOutlineName, task.parameter);
    if (!Failed(status)) status = CheckTickedGet(kDialog, kOutlineOrder, task.largestFirst);
    if (!Failed(status)) status = OptionLabelGet(kDialog, kOutlineDecimals, decimals);
    return Failed(status) ? status : IntegerFromText(decimals, task.decimals);
}

static void ShowChange(const BatchRun& run, ProMdl model, ParamsDialog& dialog) {
    dialog.report = run.ReportPath();
    ProTreetoolRefresh(model);
    ProSolidRegenerate(static_cast<ProSolid>(model), PRO_REGEN_NO_FLAGS);
    TellCount(run, kModelItems);
    ShowCancelled(run);
}

static void ShowDerived(const BatchRun& run, const wchar_t* done, ProMdl model, ParamsDialog& dialog) {
    dialog.report = run.ReportPath();
    TellCount(run, kModelItems);
    ShowCompletion(run, done, ShowInformation);
    ProTreetoolRefresh(model);
}

}  // namespace kv
