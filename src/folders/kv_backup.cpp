// KvBackup: every model below an assembly, and the drawings of the same names, into one folder.
//
// The top assembly itself is not backed up. From then on the host saves a model into the folder of its last
// backup: that is the host's own rule and stays as it is.

#include "folders/kv_backup.h"

#include <algorithm>
#include <string>
#include <vector>

#include <ProMdl.h>
#include <ProUtil.h>

#include "base/file.h"
#include "base/scope_exit.h"
#include "base/status.h"
#include "base/text.h"
#include "model/batch_run.h"
#include "model/current_model.h"
#include "model/model_data.h"
#include "model/model_walk.h"
#include "ui/message_box.h"

namespace kv {

static constexpr wchar_t kWrongModel[] = L"当前环境不是组件/制造，无法进行备份操作";
static constexpr wchar_t kChooseFolder[] = L"请选择模型备份目录";
static constexpr wchar_t kNoComponents[] = L"当前模型中没有子零件/组件";
static constexpr wchar_t kDone[] = L"图纸备份操作已完成";
static constexpr wchar_t kNotBackedUp[] = L"\n以下模型或其工程图未能备份：";
static constexpr wchar_t kSameFolder[] = L"所选目录就是模型所在的目录，请选择其他目录";
static constexpr char kCommand[] = "KvBackup";
static constexpr wchar_t kStepModel[] = L"备份模型";
static constexpr wchar_t kStepBackUpDrawing[] = L"备份工程图";
static constexpr wchar_t kStepReturn[] = L"回到工作目录";

struct BackupFolders {
    ProPath working = {};  // where the drawings are looked for
    ProPath target = {};
};

static ProError ModelsGet(ProMdl assembly, const BackupFolders& folders, std::vector<ProMdl>& models);
static ProError BackUpComponents(const std::vector<ProMdl>& models, BackupFolders& folders, BatchRun& run);
static void BackUpModel(ProMdl model, const std::wstring& name, BackupFolders& folders, BatchRun& run);
static std::wstring CompletionText(const RunRecord& record, const wchar_t* folder);

ProError KvBackup() {
    BackupFolders folders;
    ProError status = ProDirectoryCurrentGet(folders.working);
    if (Failed(status)) return status;
    ProMdl assembly = nullptr;
    status = CurrentAssemblyGet(kWrongModel, assembly);
    if (Failed(status)) return status;
    status = ProDirectoryChoose(HostText(kChooseFolder), nullptr, nullptr, nullptr, folders.target);
    if (Failed(status)) return status;
    std::vector<ProMdl> models;
    status = ModelsGet(assembly, folders, models);
    if (Failed(status)) return status;

    BatchRun run(kCommand, models.size());
    status = BackUpComponents(models, folders, run);
    if (Failed(status)) return status;
    ShowCompletion(run, CompletionText(run.Record(), folders.target).c_str());
    return PRO_TK_NO_ERROR;
}

static ProError ModelsGet(ProMdl assembly, const BackupFolders& folders, std::vector<ProMdl>& models) {
    const ProError status = DistinctModels(assembly, CollectAllComponents, models);
    if (Failed(status)) return status;
    if (models.empty()) return ShowFailure(kNoComponents, PRO_TK_E_NOT_FOUND);

    const auto isInTarget = [&folders](ProMdl model) {
        ModelData data;
        return !Failed(ModelDataGet(model, data)) && IsSamePath(data.folder, folders.target);
    };
    // A backup beside the originals is none.
    return std::ranges::all_of(models, isInTarget) ? ShowFailure(kSameFolder, PRO_TK_INVALID_DIR)
                                                   : PRO_TK_NO_ERROR;
}

static ProError BackUpComponents(const std::vector<ProMdl>& models, BackupFolders& folders, BatchRun& run) {
    const ScopeExit goBack([&folders] { ProDirectoryChange(folders.working); });
    const ProError status = ProDirectoryChange(folders.target);
    if (Failed(status)) return status;
    for (ProMdl model : models) {
        std::wstring name;
        const ProError named = ModelNameGet(model, name);
        if (!run.Begin(name)) continue;
        // Without a name there is no drawing to look for; the model itself can be backed up all the same.
        if (Failed(named)) run.Add({name, kStepReadName, named});
        BackUpModel(model, name, folders, run);
    }
    return PRO_TK_NO_ERROR;
}

static void BackUpModel(ProMdl model, const std::wstring& name, BackupFolders& folders, BatchRun& run) {
    run.Add({name, kStepModel, ProMdlnameBackup(model, folders.target)});
    if (name.empty()) return;

    // In any other directory a drawing of the same name could be the wrong one.
    const ProError back = ProDirectoryChange(folders.working);
    if (Failed(back)) {
        run.Add({name, kStepReturn, back});
        return;
    }
    ProMdl drawing = nullptr;
    const ProError found = ModelRetrieveByType(name, PRO_MDLFILE_DRAWING, drawing);
    if (found == PRO_TK_E_NOT_FOUND) return;
    if (Failed(found)) {
        run.Add({name, kStepDrawing, found});
        return;
    }
    run.Add({name, kStepBackUpDrawing, ProMdlnameBackup(drawing, folders.target)});
}

// A backup with gaps must not pass for a whole one.
static std::wstring CompletionText(const RunRecord& record, const wchar_t* folder) {
    const auto count = [&record](const wchar_t* step) {
        return std::to_wstring(std::ranges::count_if(
            record, [step](const RunEntry& entry) { return entry.step == step && !Failed(entry.status); }));
    };
    const std::wstring text = kDone + (L"！\n模型 " + count(kStepModel)) + L" 个，工程图 " +
                              count(kStepBackUpDrawing) + L" 个，备份到：\n" + folder;
    const std::wstring failed = FailureLines(record);
    return failed.empty() ? text : text + kNotBackedUp + failed;
}

}  // namespace kv
