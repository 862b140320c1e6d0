// KvRelations: one text of relations for many models.
//
// The lines go behind those that a model has, all of them or only new ones, or in their place. Before a model
// is changed its old lines go to a file, from which the last run can be taken back.

#include "params/kv_relations.h"

#include <algorithm>
#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include <ProMdl.h>

#include "base/status.h"
#include "base/text.h"
#include "model/batch_run.h"
#include "model/current_model.h"
#include "model/model_batch.h"
#include "model/model_count.h"
#include "model/model_walk.h"
#include "params/model_choice.h"
#include "params/relation_backup.h"
#include "params/relation_lines.h"
#include "params/relation_set.h"
#include "ui/dialog.h"
#include "ui/message_box.h"
#include "ui/prompt.h"

namespace kv {

static constexpr char kRelationsDialog[] = "Relations";
static constexpr char kRelationsCommand[] = "KvRelations";
static constexpr char kRelationsText[] = "RelTxtarea";
static constexpr char kRelationsTypeChoice[] = "TypeRadio";
static constexpr char kSetChoice[] = "OptionRadio";
static constexpr char kRelationsExcluded[] = "InputKeyWords";
static constexpr char kModelCount[] = "ModelCount";
static constexpr ModelChoice kModels = {kRelationsTypeChoice, kRelationsExcluded, true, ShowMessage};

static constexpr char kRelationsAllModels[] = "AsmAndPart";
static constexpr char kInitialSet[] = "init";
static constexpr char kAfterSet[] = "after";

static constexpr wchar_t kStepNoSet[] = L"未选择关系类型";
static constexpr wchar_t kStepKept[] = L"关系无变化";
static constexpr char kNoBackupMessage[] = "Relations not saved";

static constexpr wchar_t kAppended[] = L"\t批量关系创建操作已完成\t";
static constexpr wchar_t kNewAppended[] = L"\t批量关系追加操作已完成\t";
static constexpr wchar_t kReplaced[] = L"\t批量关系覆盖操作已完成\t";
static constexpr wchar_t kRestored[] = L"\t关系备份恢复操作已完成\t";
static constexpr wchar_t kNoRelations[] = L"\t当前模型中没有所选类型的关系，或无法读取！\t";
static constexpr wchar_t kNoBackup[] = L"\t没有可恢复的关系备份！\t";
static constexpr wchar_t kRestoreStart[] = L"将把下列备份中的关系写回模型，是否继续？\n";
static constexpr wchar_t kRestoreModels[] = L"\n模型数量：";

struct RelationsDialog {
    std::wstring report = {};  // path of the last run's
    std::wstring backup = {};  // path of the old relations of the last run; empty: they cannot be had
};

// What a press asks to be written.
struct RelationRequest {
    RelationRule rule = RelationRule::Append;
    std::optional<RelationKind> kind;  // empty: none is chosen
    RelationLines lines;
};

// The models of a tree by type and name.
using ModelIndex = std::unordered_map<std::wstring, ProMdl>;

static void FillRelationsDialog(RelationsDialog& dialog);
static void OnAddRelations(RelationsDialog& dialog);
static void OnAddNew(RelationsDialog& dialog);
static void OnReplace(RelationsDialog& dialog);
static void OnReadCurrent();
static void OnRestore(RelationsDialog& dialog);
static void OnCount();
static void OnShowRelationsReport(const RelationsDialog& dialog);
static std::optional<RelationKind> ChosenKind();
static void Apply(RelationsDialog& dialog, RelationRule rule, const wchar_t* done);
static ProError ChangeModel(ProMdl model, const RelationRequest& request, RunEntry& entry,
                            RelationBackup& backup);
static ProError SaveAndWrite(RelationSet& set, const RelationLines& lines, RunEntry& entry,
                             RelationBackup& backup);
static void RestoreBlocks(const std::vector<RelationBlock>& blocks, RelationsDialog& dialog);
static ProError RestoreModel(const ModelIndex& models, const RelationBlock& block, RunEntry& entry,
                             RelationBackup& backup);
static ProError ModelIndexGet(ProMdl& current, ModelIndex& models);
static std::wstring IndexKey(ProMdlType type, const std::wstring& name);
static void ShowEnd(const BatchRun& run, const RelationBackup& backup, const wchar_t* done, ProMdl current,
                    RelationsDialog& dialog);

ProError KvRelations() {
    RelationsDialog dialog;
    return RunDialog(kRelationsDialog,
                     {
                         Pressed<OnAddRelations>("AddRels"),
                         Pressed<OnAddNew>("AddRelsAndNoRepeat"),
                         Pressed<OnReplace>("CoverRels"),
                         Pressed<OnReadCurrent>("ReadCurrent"),
                         Pressed<OnRestore>("RestoreRels"),
                         Pressed<OnCount>("CountModels"),
                         Chosen<OnCount>(kRelationsTypeChoice),
                         Pressed<OnShowRelationsReport>("KvShowReport"),
                         Closes("Close"),
                     },
                     dialog, FillRelationsDialog);
}

static void FillRelationsDialog(RelationsDialog& dialog) {
    RadioChoiceSet(kRelationsDialog, kRelationsTypeChoice, kRelationsAllModels);
    RadioChoiceSet(kRelationsDialog, kSetChoice, kInitialSet);
    dialog.backup = NewestRunFile(kRelationFolder, kRelationsCommand);
    OnCount();
}

static void OnAddRelations(RelationsDialog& dialog) {
    Apply(dialog, RelationRule::Append, kAppended);
}

static void OnAddNew(RelationsDialog& dialog) {
    Apply(dialog, RelationRule::AppendNew, kNewAppended);
}

static void OnReplace(RelationsDialog& dialog) {
    Apply(dialog, RelationRule::Replace, kReplaced);
}

// What the user has typed stays when there is nothing to read.
static void OnReadCurrent() {
    ProMdl current = nullptr;
    ProMdlType type = PRO_MDL_UNUSED;
    const std::optional<RelationKind> kind = ChosenKind();
    RelationSet set;
    ProError status = kind ? CurrentSolidGet(current, type) : PRO_TK_BAD_INPUTS;
    if (!Failed(status)) status = RelationSetGet(current, *kind, set);
    if (Failed(status) || !set.found) {
        ShowMessage(kNoRelations);
        return;
    }
    AreaTextSet(kRelationsDialog, kRelationsText, TextOfLines(set.lines));
}

static void OnRestore(RelationsDialog& dialog) {
    std::vector<RelationBlock> blocks;
    const bool read = !dialog.backup.empty() && !Failed(RelationBackupRead(dialog.backup, blocks));
    if (!read || blocks.empty()) {
        ShowMessage(kNoBackup);
        return;
    }
    const std::wstring question =
        kRestoreStart + dialog.backup + kRestoreModels + std::to_wstring(blocks.size());
    if (AskUser(question.c_str())) RestoreBlocks(blocks, dialog);
}

// Tells how many models the choice and the prefixes give, as a press would find them.
static void OnCount() {
    ModelBatch batch;
    if (Failed(ChosenModelsGet(kRelationsDialog, kModels, batch))) {
        InputTextSet(kRelationsDialog, kModelCount, {});
        return;
    }
    const auto isExcluded = [&batch](ProMdl model) {
        std::wstring name;
        return Failed(ModelNameGet(model, name)) || HasPrefix(batch.excluded, name);
    };
    const auto excluded = batch.excluded.empty() ? 0 : std::ranges::count_if(batch.models, isExcluded);
    std::wstring text =
        std::to_wstring(static_cast<std::ptrdiff_t>(batch.models.size()) - excluded) + L" 个模型";
    if (excluded > 0) text += L"，排除 " + std::to_wstring(excluded) + L" 个";
    InputTextSet(kRelationsDialog, kModelCount, text);
}

static void OnShowRelationsReport(const RelationsDialog& dialog) {
    ShowReport(dialog.report);
}

static std::optional<RelationKind> ChosenKind() {
    const std::string choice = RadioChoice(kRelationsDialog, kSetChoice);
    if (choice == kInitialSet) return RelationKind::Initial;
    if (choice == kAfterSet) return RelationKind::AfterRegeneration;
    return std::nullopt;
}

// An unreadable text stops the button: it must not pass for an empty one, which takes all relations away.
static void Apply(RelationsDialog& dialog, RelationRule rule, const wchar_t* done) {
    ModelBatch batch;
    std::wstring text;
    if (Failed(AreaTextGet(kRelationsDialog, kRelationsText, text))) return;
    const RelationRequest request = {rule, ChosenKind(), LinesOfText(text)};
    if (Failed(ChosenModelsNeed(kRelationsDialog, kModels, batch))) return;

    BatchRun run(kRelationsCommand, batch.models.size());
    RelationBackup backup(kRelationsCommand);
    ForEachEntry(batch, run, kStepWriteRelations,
                 [&](ProMdl model, RunEntry& entry) { return ChangeModel(model, request, entry, backup); });
    ShowEnd(run, backup, done, batch.current, dialog);
}

static ProError ChangeModel(ProMdl model, const RelationRequest& request, RunEntry& entry,
                            RelationBackup& backup) {
    entry.skipped = true;
    entry.step = kStepNoSet;
    if (!request.kind) return PRO_TK_NO_ERROR;

    entry.skipped = false;
    entry.step = kStepReadRelations;
    RelationSet set;
    const ProError status = RelationSetGet(model, *request.kind, set);
    if (Failed(status)) return status;
    // A set that was not found is written to all the same: the host says no, and that is recorded.
    if (!set.found && request.rule == RelationRule::Replace) {
        entry.step = kStepWriteRelations;
        return RelationSetWrite(set, request.lines);
    }
    return SaveAndWrite(set, NewRelations(set.lines, request.lines, request.rule), entry, backup);
}

// Makes a missing set, saves the old lines and writes the new ones, unless they are the same.
static ProError SaveAndWrite(RelationSet& set, const RelationLines& lines, RunEntry& entry,
                             RelationBackup& backup) {
    entry.skipped = lines == set.lines;
    entry.step = kStepKept;
    if (entry.skipped) return PRO_TK_NO_ERROR;
    if (!set.found) {
        entry.step = kStepNewRelations;
        const ProError made = RelationSetCreate(set);
        if (Failed(made)) return made;
    }
    backup.Add({entry.model, static_cast<ProMdlType>(set.item.type), set.kind, set.lines});
    entry.step = kStepWriteRelations;
    return RelationSetWrite(set, lines);
}

// Models that are not below the current one any more are recorded as not found.
static void RestoreBlocks(const std::vector<RelationBlock>& blocks, RelationsDialog& dialog) {
    ProMdl current = nullptr;
    ModelIndex models;
    if (Failed(ModelIndexGet(current, models))) return;

    BatchRun run(kRelationsCommand, blocks.size());
    RelationBackup backup(kRelationsCommand);
    for (const RelationBlock& block : blocks) {
        if (!run.Begin(block.model)) continue;
        RunEntry entry = {block.model, kStepFindModel};
        entry.status = RestoreModel(models, block, entry, backup);
        run.Add(std::move(entry));
    }
    ShowEnd(run, backup, kRestored, current, dialog);
}

static ProError RestoreModel(const ModelIndex& models, const RelationBlock& block, RunEntry& entry,
                             RelationBackup& backup) {
    const auto found = models.find(IndexKey(block.type, block.model));
    if (found == models.end()) return PRO_TK_E_NOT_FOUND;
    entry.step = kStepReadRelations;
    RelationSet set;
    const ProError status = RelationSetGet(found->second, block.kind, set);
    if (Failed(status)) return status;
    // A set is not made for them here: it would be an initial one, whatever they were.
    if (!set.found && !block.lines.empty()) return PRO_TK_E_NOT_FOUND;
    return SaveAndWrite(set, block.lines, entry, backup);
}

static ProError ModelIndexGet(ProMdl& current, ModelIndex& models) {
    ProMdlType type = PRO_MDL_UNUSED;
    ProError status = CurrentSolidGet(current, type);
    WalkResult walk;
    if (!Failed(status) && type == PRO_MDL_ASSEMBLY) status = ModelWalk(current, CollectAllComponents, walk);
    if (Failed(status)) return status;
    walk.distinct.push_back({current, type});
    for (const NamedModel& model : NamesOf(walk.distinct))
        if (!model.name.empty()) models.try_emplace(IndexKey(model.type, model.name), model.model);
    return PRO_TK_NO_ERROR;
}

static std::wstring IndexKey(ProMdlType type, const std::wstring& name) {
    return std::to_wstring(type) + L":" + UpperCase(name);
}

// What a run without a single change leaves alone: the backup of the one before can still be taken back.
static void ShowEnd(const BatchRun& run, const RelationBackup& backup, const wchar_t* done, ProMdl current,
                    RelationsDialog& dialog) {
    dialog.report = run.ReportPath();
    if (!backup.Path().empty() || !backup.IsWhole()) dialog.backup = backup.Path();
    ProTreetoolRefresh(current);
    if (!backup.IsWhole()) DisplayMessage(kNoBackupMessage);
    TellCount(run, kModelItems);
    ShowCompletion(run, done, ShowInformation);
}

}  // namespace kv
