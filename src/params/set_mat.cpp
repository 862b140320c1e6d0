// SetMat: a material file for one part or many.
//
// The host finds a material by its name in the working directory, so the command works in the file's folder
// meanwhile.

#include "params/set_mat.h"

#include <optional>
#include <string>

#include <ProMaterial.h>
#include <ProMdl.h>
#include <ProWindows.h>

#include "base/config_option.h"
#include "base/file.h"
#include "base/status.h"
#include "base/text.h"
#include "base/working_directory.h"
#include "model/batch_run.h"
#include "model/current_model.h"
#include "model/model_batch.h"
#include "params/part_file.h"
#include "ui/message_box.h"
#include "ui/prompt.h"

namespace kv {

static constexpr char kMaterialCommand[] = "SetMat";
static constexpr wchar_t kPartItems[] = L"零件";
static constexpr wchar_t kStepCurrent[] = L"设为当前材料";
static constexpr wchar_t kMaterialFolder[] = L"pro_material_dir";
static constexpr wchar_t kMaterialTitle[] = L"请选择材料";
static constexpr wchar_t kMaterialFilter[] = L"*.mtl,*.mat";
// Of two files of one name the host takes the one with the first extension.
static constexpr wchar_t kFirstExtension[] = L".mtl";
static constexpr wchar_t kSecondExtension[] = L"MAT";

static constexpr wchar_t kShadowed[] =
    L"\t同一目录中有同名的.mtl文件，主程序会读取它而不是所选的.mat文件，未做任何改动！\t";
static constexpr wchar_t kNoFolder[] = L"\t无法进入材料文件所在目录，未做任何改动！\t";
static constexpr wchar_t kPartWalkFailed[] = L"未找到子零件";
static constexpr wchar_t kNoParts[] = L"当前模型中没有零件";
static constexpr wchar_t kMaterialsSet[] = L"材料设置完成";

static ProError FileChoose(PartFile& file);
static ProError AssignIn(const PartFile& file, const DistinctModel& current, const SelectedModels& selection);
static ProError Assign(ProMdl part, const std::wstring& name, RunEntry& entry);
static void ActivateWindow();

ProError SetMat() {
    DisplayMessage(kBendTableReminder);
    DistinctModel current = {nullptr, PRO_MDL_UNUSED};
    ProError status = CurrentModelGet(current.model, current.type);
    if (Failed(status)) return status;
    // Before any dialog, which might end the selection.
    SelectedModels selection;
    status = PartSelectionGet(current, selection);
    if (Failed(status)) return status;
    PartFile file;
    status = FileChoose(file);
    return Failed(status) ? status : AssignIn(file, current, selection);
}

static ProError FileChoose(PartFile& file) {
    std::wstring start;
    // Without the option the choice begins in the working directory.
    (void)ConfigOptionGet(kMaterialFolder, start);
    const ProError status = PartFileChoose(kMaterialTitle, kMaterialFilter, start, file);
    if (Failed(status)) return status;
    const bool isShadowed = UpperCase(file.extension) == kSecondExtension &&
                            FileExists(file.folder + file.name + kFirstExtension);
    return isShadowed ? ShowFailure(kShadowed, PRO_TK_E_FOUND) : PRO_TK_NO_ERROR;
}

static ProError AssignIn(const PartFile& file, const DistinctModel& current,
                         const SelectedModels& selection) {
    ModelBatch batch;
    PartTargets targets;
    ProError status = PRO_TK_NO_ERROR;
    // Lives on behind the folder: its end is told there.
    std::optional<BatchRun> run;
    {
        const auto goBack = UseWorkingDirectory(file.folder, status);
        if (Failed(status)) return ShowFailure(kNoFolder, status);
        status = PartTargetsGet(current, selection, CollectPartComponents, targets);
        if (Failed(status)) return status;
        if (targets.walkFailed) ShowMessage(kPartWalkFailed);
        if (targets.walkEmpty) ShowMessage(kNoParts);
        batch.models = targets.All();
        run.emplace(kMaterialCommand, batch.models.size());
        ForEachEntry(batch, *run, kStepReadMaterial,
                     [&file](ProMdl part, RunEntry& entry) { return Assign(part, file.name, entry); });
    }
    ActivateWindow();
    TellCount(*run, kPartItems);
    ShowCompletion(*run, kMaterialsSet, ShowInformation);
    return PRO_TK_NO_ERROR;
}

static ProError Assign(ProMdl part, const std::wstring& name, RunEntry& entry) {
    ProMaterial material = {};
    material.part = static_cast<ProSolid>(part);
    ProError status = CopyText(name, material.matl_name);
    if (!Failed(status)) status = ProMaterialfileRead(material.part, material.matl_name);
    if (Failed(status)) return status;
    entry.step = kStepCurrent;
    return ProMaterialCurrentSet(&material);
}

// For show alone.
static void ActivateWindow() {
    int window = PRO_VALUE_UNUSED;
    if (!Failed(ProWindowCurrentGet(&window))) ProWindowActivate(window);
}

}  // namespace kv
