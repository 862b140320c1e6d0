// KvParams: one parameter in many models at once.
//
// Add, Update and Delete work on a parameter that the user names, the two other buttons write parameters with
// outline dimensions and sheet sizes. Each press first stores the dialog's settings, so that the dialog opens
// the next time as it was left.

#include "params/kv_params.h"

#include <string>

#include <ProMdl.h>
#include <ProSolid.h>

#include "base/status.h"
#include "base/text.h"
#include "model/current_model.h"
#include "model/model_batch.h"
#include "model/parameter.h"
#include "model/refusals.h"
#include "params/outline.h"
#include "params/parameter_value.h"
#include "params/sheet_size.h"
#include "settings/dialog_settings.h"
#include "settings/settings_store.h"
#include "ui/dialog.h"
#include "ui/message_box.h"

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

using ValueWork = ProError (*)(ProMdl model, const std::wstring& name, const ProParamvalue& value);

static void FillDialog();
static void RestoreSettings();
static void OnAdd();
static void OnUpdate();
static void OnDelete();
static void OnOutline();
static void OnSheetSize();
static void SaveSettings();
static void ApplyValue(const char* step, ValueWork work);
static ProError RequestGet(ParameterRequest& request);
static ProError NamedModelsCollect(ModelBatch& batch);
static ProError DerivedModelsCollect(ProMdl assembly, ModelBatch& batch);
static ProError OutlineTaskGet(OutlineTask& task);
static void ShowChange(ProMdl model);

ProError KvParams() {
    return RunDialog(kDialog,
                     {
                         Pressed<OnAdd>("Add"),
                         Pressed<OnUpdate>("Update"),
                         Pressed<OnDelete>("Delete"),
                         Pressed<OnOutline>("KvOutline"),
                         Pressed<OnSheetSize>("KvSheetSize"),
                         Closes("Close"),
                     },
                     FillDialog);
}

static void FillDialog() {
    RadioChoiceSet(kDialog, kTypeChoice, kAllModels);
    RadioChoiceSet(kDialog, kDerivedTypeChoice, kAllModels);
    OptionLabelSet(kDialog, kParameterType, kUsualType);
    OptionLabelSet(kDialog, kOutlineDecimals, kUsualDecimals);
    RestoreSettings();
}

static void RestoreSettings() {
    const std::wstring file = TextDirSettingsPath(kSettingsFile);
    DialogSettingsRestore(kDialog, file, kSettings);
    DialogSettingsRestore(kDialog, file, kStartOnly);
}

static void OnAdd() {
    ApplyValue("create the parameter", ParameterCreate);
}

static void OnUpdate() {
    ApplyValue("set the value", ParameterUpdate);
}

static void OnDelete() {
    SaveSettings();
    ModelBatch batch;
    std::wstring name;
    if (Failed(NamedModelsCollect(batch)) || Failed(InputTextGet(kDialog, kParameterName, name))) return;
    if (name.empty()) return;

    ForEachModel(batch, "delete the parameter",
                 [&name](ProMdl model, const std::wstring&) { return ParameterDelete(model, name); });
    ShowChange(batch.current);
}

static void OnOutline() {
    SaveSettings();
    ProMdl assembly = nullptr;
    if (Failed(CurrentAssemblyGet(kNoAssembly, assembly, ShowInformation))) return;
    ModelBatch batch;
    OutlineTask task;
    if (Failed(DerivedModelsCollect(assembly, batch)) || Failed(OutlineTaskGet(task))) return;
    if (task.parameter.empty()) return;

    ForEachModel(batch, "write the outline",
                 [&task](ProMdl model, const std::wstring&) { return OutlineWrite(model, task); });
    ShowInformation(kOutlineDone);
    ProTreetoolRefresh(batch.current);
}

static void OnSheetSize() {
    SaveSettings();
    ProMdl assembly = nullptr;
    ProMdlType type = PRO_MDL_UNUSED;
    if (Failed(CurrentModelGet(assembly, type)) || type != PRO_MDL_ASSEMBLY) return;
    ModelBatch batch;
    std::wstring parameter;
    if (Failed(DerivedModelsCollect(assembly, batch))) return;
    if (Failed(InputTextGet(kDialog, kSheetSizeName, parameter)) || parameter.empty()) return;

    ForEachModel(batch, "write the sheet sizes", [&parameter](ProMdl model, const std::wstring& name) {
        return SheetSizeWrite(model, name, parameter);
    });
    ShowInformation(kSheetSizeDone);
    ProTreetoolRefresh(batch.current);
}

static void SaveSettings() {
    DialogSettingsSave(kDialog, TextDirSettingsPath(kSettingsFile), kSettings);
}

// Add and Update differ in nothing but what they do to one model.
static void ApplyValue(const char* step, ValueWork work) {
    SaveSettings();
    ModelBatch batch;
    ParameterRequest request;
    if (Failed(NamedModelsCollect(batch)) || Failed(RequestGet(request))) return;
    if (request.type == PRO_PARAM_BOOLEAN && !IsBooleanText(request.value)) {
        ShowMessage(kBadBoolean);
        return;
    }
    if (request.name.empty()) return;

    ProParamvalue value = {};
    // A text that is no value of its type is refused model by model, so that the record tells.
    const ProError valid = ParameterValueFromText(request.type, request.value, value);
    ForEachModel(batch, step, [&](ProMdl model, const std::wstring&) {
        return Failed(valid) ? valid : work(model, request.name, value);
    });
    ShowChange(batch.current);
}

static ProError RequestGet(ParameterRequest& request) {
    std::wstring label;
    ProError status = InputTextGet(kDialog, kParameterName, request.name);
    if (!Failed(status)) status = InputTextGet(kDialog, kParameterValue, request.value);
    if (!Failed(status)) status = OptionLabelGet(kDialog, kParameterType, label);
    request.type = ParameterTypeFromLabel(label);
    return status;
}

// The models of Add, Update and Delete. An unreadable prefix field stops the button: models that are to be
// kept out must not get in.
static ProError NamedModelsCollect(ModelBatch& batch) {
    ProMdl current = nullptr;
    ProMdlType type = PRO_MDL_UNUSED;
    std::wstring excluded;
    ProError status = CurrentSolidGet(current, type);
    if (!Failed(status)) status = InputTextGet(kDialog, kExcluded, excluded);
    if (!Failed(status)) status = BatchModelsCollect(current, type, RadioChoice(kDialog, kTypeChoice), batch);
    if (Failed(status)) return status;
    if (batch.models.empty()) return ShowFailure(kNoSuitableComponents, PRO_TK_E_NOT_FOUND);
    // In this half a prefix may contain a blank.
    batch.excluded = PrefixListFromText(excluded);
    return PRO_TK_NO_ERROR;
}

// The models of the two derived parameters.
static ProError DerivedModelsCollect(ProMdl assembly, ModelBatch& batch) {
    std::wstring excluded;
    ProError status = InputTextGet(kDialog, kDerivedExcluded, excluded);
    if (Failed(status)) return status;
    status = BatchModelsCollect(assembly, PRO_MDL_ASSEMBLY, RadioChoice(kDialog, kDerivedTypeChoice), batch);
    if (Failed(status)) return status;
    if (batch.models.empty()) {
        ShowInformation(kNoSuitableComponents);
        return PRO_TK_E_NOT_FOUND;
    }
    batch.excluded = PrefixListFromText(WithoutBlanks(excluded));
    return PRO_TK_NO_ERROR;
}

static ProError OutlineTaskGet(OutlineTask& task) {
    std::wstring decimals;
    ProError status = InputTextGet(kDialog, kOutlineName, task.parameter);
    if (!Failed(status)) status = CheckTickedGet(kDialog, kOutlineOrder, task.largestFirst);
    if (!Failed(status)) status = OptionLabelGet(kDialog, kOutlineDecimals, decimals);
    task.decimals = IntegerFromText(decimals);
    return status;
}

static void ShowChange(ProMdl model) {
    ProTreetoolRefresh(model);
    ProSolidRegenerate(static_cast<ProSolid>(model), PRO_REGEN_NO_FLAGS);
}

}  // namespace kv
