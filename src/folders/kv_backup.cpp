// KvBackup: every model below an assembly, and the drawings of the same names, into one folder.
//
// The top assembly itself is not backed up. From then on the host saves a model into the folder of its last
// backup: that is the host's own rule and stays as it is.

#include "folders/kv_backup.h"

#include <string>
#include <vector>

#include <ProMdl.h>
#include <ProUtil.h>

#include "base/scope_exit.h"
#include "base/status.h"
#include "base/text.h"
#include "model/current_model.h"
#include "model/model_data.h"
#include "model/model_walk.h"
#include "model/run_record.h"
#include "ui/message_box.h"

namespace kv {

static constexpr wchar_t kWrongModel[] = L"当前环境不是组件/制造，无法进行备份操作";
static constexpr wchar_t kChooseFolder[] = L"请选择模型备份目录";
static constexpr wchar_t kNoComponents[] = L"当前模型中没有子零件/组件";
static constexpr wchar_t kDone[] = L"图纸备份操作已完成";
static constexpr wchar_t kNotBackedUp[] = L"，但以下模型或其工程图未能备份：";

struct BackupFolders {
    ProPath working = {};  // where the drawings are looked for
    ProPath target = {};
};

static ProError BackUpComponents(ProMdl assembly, BackupFolders& folders, RunRecord& record);
static void BackUpModel(ProMdl model, BackupFolders& folders, RunRecord& record);
static std::wstring CompletionText(const RunRecord& record);

ProError KvBackup() {
    BackupFolders folders;
    ProError status = ProDirectoryCurrentGet(folders.working);
    if (Failed(status)) return status;
    ProMdl assembly = nullptr;
    status = CurrentAssemblyGet(kWrongModel, assembly);
    if (Failed(status)) return status;
    status = ProDirectoryChoose(HostText(kChooseFolder), nullptr, nullptr, nullptr, folders.target);
    if (Failed(status)) return status;

    RunRecord record;
    status = BackUpComponents(assembly, folders, record);
    if (Failed(status)) return status;
    ShowMessage(CompletionText(record).c_str());
    return PRO_TK_NO_ERROR;
}

static ProError BackUpComponents(ProMdl assembly, BackupFolders& folders, RunRecord& record) {
    const ScopeExit goBack([&folders] { ProDirectoryChange(folders.working); });
    ProError status = ProDirectoryChange(folders.target);
    if (Failed(status)) return status;

    std::vector<ProMdl> models;
    status = DistinctModels(assembly, CollectAllComponents, models);
    if (Failed(status)) return status;
    if (models.empty()) return ShowFailure(kNoComponents, PRO_TK_E_NOT_FOUND);
    // A model that cannot be backed up must not keep the others from it.
    for (ProMdl model : models) BackUpModel(model, folders, record);
    return PRO_TK_NO_ERROR;
}

static void BackUpModel(ProMdl model, BackupFolders& folders, RunRecord& record) {
    std::wstring name;
    const ProError named = ModelNameGet(model, name);
    record.push_back({name, "back up the model", ProMdlnameBackup(model, folders.target)});
    if (Failed(named)) {
        record.push_back({name, "read the name", named});
        return;
    }

    // In any other directory a drawing of the same name could be the wrong one.
    const ProError back = ProDirectoryChange(folders.working);
    if (Failed(back)) {
        record.push_back({name, "go back to the working directory", back});
        return;
    }
    ProMdl drawing = nullptr;
    if (Failed(ModelRetrieveByType(name, PRO_MDLFILE_DRAWING, drawing))) return;
    record.push_back({name, "back up the drawing", ProMdlnameBackup(drawing, folders.target)});
}

// A backup with gaps must not pass for a whole one.
static std::wstring CompletionText(const RunRecord& record) {
    const std::wstring failed = FailureLines(record);
    return failed.empty() ? std::wstring(kDone) + L"！" : kDone + (kNotBackedUp + failed);
}

}  // namespace kv
