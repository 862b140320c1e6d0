// SetBendTable: a bend table for one sheet-metal part or many.
//
// The host finds a table by its name in the folder of an option, which the command sets meanwhile.

#include "params/set_bend_table.h"

#include <algorithm>
#include <functional>
#include <optional>
#include <string>

#include <ProMdl.h>
#include <ProSheetmetal.h>
#include <ProSolid.h>
#include <ProWindows.h>

#include "base/config_option.h"
#include "base/status.h"
#include "base/text.h"
#include "model/batch_run.h"
#include "model/current_model.h"
#include "model/model_batch.h"
#include "params/part_file.h"
#include "ui/message_box.h"
#include "ui/prompt.h"

namespace kv {

static constexpr char kBendTableCommand[] = "SetBendTable";
static constexpr wchar_t kSheetmetalItems[] = L"钣金件";
static constexpr wchar_t kStepRegenerate[] = L"再生";
static constexpr wchar_t kBendTableFolder[] = L"pro_sheet_met_dir";
static constexpr wchar_t kBendTableTitle[] = L"请选择折弯表";
static constexpr wchar_t kBendTableFilter[] = L"*.bnd";

static constexpr wchar_t kNoOption[] = L"\t无法读取或设置配置选项 pro_sheet_met_dir，未做任何改动！\t";
static constexpr wchar_t kSheetmetalWalkFailed[] = L"未找到子钣金件";
static constexpr wchar_t kNoSheetmetalParts[] = L"当前模型中没有子钣金件";
static constexpr wchar_t kSelectedWalkFailed[] = L"未找到钣金件";
static constexpr wchar_t kNoSelectedParts[] = L"当前模型中没有钣金件";
static constexpr wchar_t kBendTablesSet[] = L"钣金件批量折弯表设置完成";

static ProError ApplyWithOption(const PartFile& file, const DistinctModel& current,
                                const SelectedModels& selection, ChangedOption& option,
                                std::optional<BatchRun>& run);
static bool TellTargets(const PartTargets& targets, bool isSelection);
static ProError Apply(ProMdl part, const std::wstring& name, const PartTargets& targets, RunEntry& entry);
static void ShowChange(const DistinctModel& current);

ProError SetBendTable() {
    DisplayMessage(kBendTableReminder);
    DistinctModel current = {nullptr, PRO_MDL_UNUSED};
    ProError status = CurrentModelGet(current.model, current.type);
    if (Failed(status)) return status;
    // Before any dialog, which might end the selection.
    SelectedModels selection;
    status = PartSelectionGet(current, selection);
    if (Failed(status)) return status;
    std::wstring before;
    // What cannot be read cannot be put back.
    status = ConfigOptionGet(kBendTableFolder, before);
    if (Failed(status)) return ShowFailure(kNoOption, status);
    PartFile file;
    status = PartFileChoose(kBendTableTitle, kBendTableFilter, before, file);
    if (Failed(status)) return status;

    std::optional<BatchRun> run;
    {
        ChangedOption option(kBendTableFolder, before, file.folder);
        if (Failed(option.Status())) return ShowFailure(kNoOption, option.Status());
        status = ApplyWithOption(file, current, selection, option, run);
    }
    if (Failed(status)) return status;
    TellCount(*run, kSheetmetalItems);
    ShowCompletion(*run, kBendTablesSet, ShowInformation);
    return PRO_TK_NO_ERROR;
}

// PRO_TK_E_NOT_FOUND for a selection without a sheet-metal part: the command ends there, and the option
// stays.
static ProError ApplyWithOption(const PartFile& file, const DistinctModel& current,
                                const SelectedModels& selection, ChangedOption& option,
                                std::optional<BatchRun>& run) {
    PartTargets targets;
    const ProError status = PartTargetsGet(current, selection, CollectSheetmetalComponents, targets);
    if (Failed(status)) return status;
    if (!TellTargets(targets, selection.any)) {
        option.Keep();
        return PRO_TK_E_NOT_FOUND;
    }
    ModelBatch batch;
    batch.models = targets.All();
    run.emplace(kBendTableCommand, batch.models.size());
    ForEachEntry(batch, *run, kStepBendTable,
                 [&](ProMdl part, RunEntry& entry) { return Apply(part, file.name, targets, entry); });
    ShowChange(current);
    return PRO_TK_NO_ERROR;
}

// Tells what was not found. False when the command is to end.
static bool TellTargets(const PartTargets& targets, bool isSelection) {
    if (targets.walkFailed) ShowMessage(isSelection ? kSelectedWalkFailed : kSheetmetalWalkFailed);
    if (!isSelection && targets.walkEmpty) ShowMessage(kNoSheetmetalParts);
    if (!isSelection || targets.walkFailed || !targets.All().empty()) return true;
    ShowMessage(kNoSelectedParts);
    return false;
}

// The host regenerates a part by itself; those below assemblies are regenerated once more.
static ProError Apply(ProMdl part, const std::wstring& name, const PartTargets& targets, RunEntry& entry) {
    ProName table;
    ProError status = CopyText(name, table);
    if (!Failed(status)) status = ProSmtPartBendtableApply(static_cast<ProPart>(part), table, PRO_B_TRUE);
    const bool isBelow = std::binary_search(targets.below.begin(), targets.below.end(), part, std::less<>());
    if (Failed(status) || !isBelow) return status;
    entry.step = kStepRegenerate;
    return ProSolidRegenerate(static_cast<ProSolid>(part), PRO_REGEN_NO_FLAGS);
}

// No other model is a solid that could be regenerated.
static void ShowChange(const DistinctModel& current) {
    if (current.type == PRO_MDL_PART || current.type == PRO_MDL_ASSEMBLY)
        ProSolidRegenerate(static_cast<ProSolid>(current.model), PRO_REGEN_NO_FLAGS);
    ProTreetoolRefresh(current.model);
    ProWindowRepaint(PRO_VALUE_UNUSED);
}

}  // namespace kv
