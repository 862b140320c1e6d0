// KvMdlCount: the number of placements as a parameter of each model.
//
// Family-table instances get it only when the settings say so: the parameter then becomes a column of the
// generic's table first. Models that refuse the parameter are named at the end. The top assembly itself gets
// none.

#include "params/kv_mdl_count.h"

#include <string>

#include <ProFaminstance.h>
#include <ProFamtable.h>
#include <ProMdl.h>

#include "base/status.h"
#include "base/text.h"
#include "model/batch_run.h"
#include "model/current_model.h"
#include "model/model_count.h"
#include "model/parameter.h"
#include "model/refusals.h"
#include "settings/settings_store.h"
#include "ui/message_box.h"

namespace kv {

static constexpr char kCountCommand[] = "KvMdlCount";
static constexpr wchar_t kStepQuantity[] = L"写入数量";
static constexpr wchar_t kStepInstance[] = L"族表实例";
static constexpr wchar_t kStepGeneric[] = L"准备类属模型";
static constexpr wchar_t kQuantity[] = L"数量";
static constexpr wchar_t kInstanceSetting[] = L"KvCountForInstance";
static constexpr wchar_t kInstancesWanted[] = L"TRUE";

static constexpr wchar_t kCountWritten[] = L"\t批量数量参数创建/更新完毕。\t";
static constexpr wchar_t kFailures[] =
    L"以下模型“数量”参数创建/更新失败，请检查参数是否存在关系锁定等原因，需手动处理：";
static constexpr wchar_t kListEnd[] = L"\n";

static bool CountsInstances();
static RunEntry WriteCount(const NamedModel& model, unsigned int count, bool instances);
static ProError WriteQuantity(ProMdl model, int quantity);
static ProError PrepareGeneric(ProMdl generic);
static ProError AddColumn(ProMdl generic);
static void ShowResult(const BatchRun& run);

ProError KvMdlCount() {
    ProMdl assembly = nullptr;
    ProError status = CurrentAssemblyGet(kAssembliesOnly, assembly);
    if (Failed(status)) return status;
    const bool instances = CountsInstances();
    WalkResult walk;
    status = ModelWalk(assembly, CollectAllComponents, walk);
    if (Failed(status)) return status;

    const std::vector<NamedModel> models = NamesOf(walk.distinct);
    const std::vector<ModelCount> counts = CountModels(models, walk.models, NameMatch::AnyCase);
    BatchRun run(kCountCommand, counts.size());
    for (const ModelCount& entry : counts)
        if (run.Begin(models[entry.model].name))
            run.Add(WriteCount(models[entry.model], entry.count, instances));
    ProMdl current = nullptr;
    if (!Failed(ProMdlCurrentGet(&current))) ProTreetoolRefresh(current);
    ShowResult(run);
    return PRO_TK_NO_ERROR;
}

static bool CountsInstances() {
    const std::wstring value = SettingRead(SettingsPath(kCommonSettings), kInstanceSetting, kValueKey);
    return UpperCase(WithoutBlanks(value)) == kInstancesWanted;
}

static RunEntry WriteCount(const NamedModel& model, unsigned int count, bool instances) {
    RunEntry entry = {model.name, kStepQuantity};
    ProMdl generic = nullptr;
    const bool isInstance = !Failed(ProFaminstanceGenericGet(model.model, PRO_B_TRUE, &generic));
    if (isInstance && !instances) {
        entry.step = kStepInstance;
        entry.skipped = true;
        return entry;
    }
    if (isInstance) {
        entry.step = kStepGeneric;
        entry.status = PrepareGeneric(generic);
        if (Failed(entry.status)) return entry;
        entry.step = kStepQuantity;
    }
    entry.status = WriteQuantity(model.model, static_cast<int>(count));
    return entry;
}

static ProError WriteQuantity(ProMdl model, int quantity) {
    ProParamvalue value = {};
    value.type = PRO_PARAM_INTEGER;
    value.value.i_val = quantity;
    return ParameterWrite(model, kQuantity, value);
}

// Makes the quantity a column of the generic's table. A quantity that the generic has already is its own and
// stays. Without a column the instance could not keep a number of its own, so a generic that may not be
// changed is a failure.
static ProError PrepareGeneric(ProMdl generic) {
    ProBoolean modifiable = PRO_B_FALSE;
    ProError status = ProMdlIsModifiable(generic, PRO_B_FALSE, &modifiable);
    if (Failed(status)) return status;
    if (modifiable != PRO_B_TRUE) return PRO_TK_CANT_MODIFY;

    ProParamvalue none = {};
    none.type = PRO_PARAM_INTEGER;
    status = ParameterCreate(generic, kQuantity, none);
    if (Failed(status) && status != PRO_TK_E_FOUND) return status;
    status = AddColumn(generic);
    return status == PRO_TK_E_FOUND ? PRO_TK_NO_ERROR : status;
}

static ProError AddColumn(ProMdl generic) {
    ProParameter parameter = {};
    ProFamtable table = {};
    ProFamtableItem column = {};
    ProError status = ParameterFind(generic, kQuantity, parameter);
    if (!Failed(status)) status = ProFamtableInit(generic, &table);
    if (!Failed(status)) status = ProParameterToFamtableItem(&parameter, &column);
    return Failed(status) ? status : ProFamtableItemAdd(&table, &column);
}

static void ShowResult(const BatchRun& run) {
    TellCount(run, kModelItems);
    const std::wstring failures = FailureLines(run.Record(), FailureList::Complete);
    if (run.Cancelled() || failures.empty()) {
        ShowCompletion(run, kCountWritten);
    } else {
        ShowInformation((kFailures + failures + kListEnd).c_str());
    }
}

}  // namespace kv
