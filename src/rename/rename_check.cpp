// The check of all new names.

#include "rename/rename_check.h"

#include <vector>

#include <ProFaminstance.h>
#include <ProSolid.h>

#include "base/file.h"
#include "base/scope_exit.h"
#include "base/status.h"
#include "base/text.h"
#include "model/model_data.h"
#include "ui/message_box.h"

namespace kv {

static constexpr wchar_t kRefusalStart[] = L"无法执行重命名操作！\n新名称“";
static constexpr wchar_t kTooLong[] = L"”长度大于32位，名称无效，请修改后再操作";
static constexpr wchar_t kExists[] = L"”在当前会话或工作目录中已存在，请修改后再试！";
static constexpr wchar_t kIllegal[] = L"”非法，请修改后再试！";
static constexpr wchar_t kStepCheck[] = L"检查新名称";
static constexpr wchar_t kFirstVersion[] = L".1";
static constexpr std::size_t kListedFaults = 20;

static const wchar_t* NameRefusal(const RenameRow& row, const NameSet& taken, ProError& status);
static ProError TryName(const RenameRow& row, const WorkFolder& folder, ReverseTable& table);
static void RemoveTrial(ProSolid trial, const std::wstring& file);
static const wchar_t* ModelFault(const RenameRow& row, const RenameTree& tree, const WorkFolder& folder);

ProError NamesCheck(std::span<const RenameRow> rows, const WorkFolder& folder, ReverseTable& table,
                    BatchRun& run) {
    NameSet taken = folder.names;
    for (const RenameRow& row : rows) {
        if (!run.Begin(row.oldName)) continue;
        RunEntry entry = {row.oldName, kStepCheck};
        entry.file = row.newName;
        const wchar_t* refusal = NameRefusal(row, taken, entry.status);
        if (refusal == nullptr) entry.status = TryName(row, folder, table);
        const ProError status = entry.status;
        run.Add(std::move(entry));
        if (status == PRO_TK_CANT_WRITE && refusal == nullptr) return ShowFailure(kNoReverseTable, status);
        if (Failed(status) && refusal == nullptr) refusal = kIllegal;
        if (refusal != nullptr) return ShowFailure((kRefusalStart + row.newName + refusal).c_str(), status);
        taken.Add(row.newName, TypeOf(row));
    }
    if (!run.Cancelled()) return PRO_TK_NO_ERROR;
    ShowCancelled(run);
    return PRO_TK_USER_ABORT;
}

// What is wrong with a name before it is tried; null for nothing. A file counts whether or not it can be
// retrieved: the trial has to be the first version of a new one.
static const wchar_t* NameRefusal(const RenameRow& row, const NameSet& taken, ProError& status) {
    status = PRO_TK_LINE_TOO_LONG;
    if (row.newName.size() > kLongestNewName) return kTooLong;
    status = PRO_TK_E_FOUND;
    if (taken.Has(row.newName, TypeOf(row))) return kExists;
    ProMdl found = nullptr;
    if (!Failed(ModelRetrieveByType(row.newName, FileTypeOf(TypeOf(row)), found))) return kExists;
    status = PRO_TK_NO_ERROR;
    return nullptr;
}

// A model that can be made but not saved proves nothing. PRO_TK_CANT_WRITE: the reverse table takes no row.
static ProError TryName(const RenameRow& row, const WorkFolder& folder, ReverseTable& table) {
    ProMdlName name;
    ProError status = CopyText(row.newName, name);
    if (Failed(status)) return status;
    if (Failed(table.Add(row.newName, TypeOf(row), {}))) return PRO_TK_CANT_WRITE;
    ProSolid trial = nullptr;
    const ProType type = TypeOf(row) == kPartType ? PRO_PART : PRO_ASSEMBLY;
    status = ProSolidMdlnameCreate(name, type, &trial);
    if (Failed(status)) {
        table.Mark(kStateFailed);
        return status;
    }
    const std::wstring file = folder.path + row.newName + L"." + TypeOf(row) + kFirstVersion;
    status = ProMdlSave(trial);
    RemoveTrial(trial, file);
    table.Mark(FileExists(file) ? kStateFailed : kStateRemoved);
    return Failed(status) ? PRO_TK_GENERAL_ERROR : status;
}

// One refusal is not taken for an answer: neither the model nor its file may stay.
static void RemoveTrial(ProSolid trial, const std::wstring& file) {
    if (Failed(ProMdlErase(trial))) (void)ProMdlErase(trial);
    FileDelete(file);
    if (FileExists(file)) FileDelete(file);
}

// ---- All faults at once

std::wstring FaultList(std::span<const RenameRow> rows, const RenameTree& tree, const WorkFolder& folder) {
    const std::vector<RowFault> faults = RowFaults(rows, folder.names);
    std::wstring list;
    std::size_t count = 0;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        const RenameRow& row = rows[i];
        const wchar_t* words =
            faults[i] == RowFault::None ? ModelFault(row, tree, folder) : FaultText(faults[i]);
        if (words == nullptr || ++count > kListedFaults) continue;
        list += L"\n" + std::to_wstring(i + 1) + L"  " + row.oldName + L" → " + row.newName + L"：" + words;
    }
    if (count == 0) return {};
    if (count > kListedFaults) list += L"\n另有 " + std::to_wstring(count - kListedFaults) + L" 行";
    return L"共有 " + std::to_wstring(count) + L" 行需要修改：" + list;
}

// What only the host knows about a row; null for nothing.
static const wchar_t* ModelFault(const RenameRow& row, const RenameTree& tree, const WorkFolder& folder) {
    if (IsInSession(row.newName, TypeOf(row))) return FaultText(RowFault::Exists);
    const TreeModel* model = FindRow(tree, row);
    if (model == nullptr) return L"模型不在此组件中";
    ProPath path = {};
    if (!Failed(ProMdlDirectoryPathGet(model->model, path)) && !IsSamePath(path, folder.path))
        return L"模型不在工作目录中";
    ProBoolean modifiable = PRO_B_TRUE;
    if (!Failed(ProMdlIsModifiable(model->model, PRO_B_FALSE, &modifiable)) && modifiable == PRO_B_FALSE)
        return L"模型只读";
    ProMdl generic = nullptr;
    if (!Failed(ProFaminstanceGenericGet(model->model, PRO_B_TRUE, &generic))) return L"模型是族表实例";
    return nullptr;
}

}  // namespace kv
