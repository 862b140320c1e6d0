// KvMdlNameCopy and KvMdlRename: the name of one model, without a dialog.

#include "rename/quick_rename.h"

#include <string>

#include <ProMdl.h>
#include <ProSelbuffer.h>
#include <ProSelection.h>

#include "base/host_handle.h"
#include "base/status.h"
#include "base/text.h"
#include "model/model_data.h"
#include "model/selection.h"
#include "ui/clipboard.h"
#include "ui/message_box.h"
#include "ui/prompt.h"

namespace kv {

static constexpr char kPickForCopy[] = "Please select a part or an assembly for coping name";
static constexpr char kPickForRename[] = "Please select a part or an assembly for rename";
static constexpr char kCopied[] = "The model name has been copied";
static constexpr char kNamePrompt[] = "USER Enter a new name:|||%0w";
static constexpr char kRenamed[] = "The model has been renamed";
static constexpr char kPickFilter[] = "prt_or_asm";
static constexpr int kLongestAnswer = 32;

static constexpr wchar_t kNotCopied[] = L"\t剪贴板被其他程序占用，名称未复制\t";
static constexpr wchar_t kRefused[] = L"\t无法重命名，新名称无效或已存在，或模型不可修改\t";
static constexpr wchar_t kNotSaved[] = L"\t模型已在会话中重命名，但未能保存\t";

static ProError ModelPick(const char* prompt, ProMdl& model);
static ProError SelectedComponentGet(ProMdl& model);
static ProError RenameAndSave(ProMdl model, const std::wstring& name);
static bool IsNameInUse(const std::wstring& name, ProMdlType type);

ProError KvMdlNameCopy() {
    ProMdl model = nullptr;
    std::wstring name;
    ProError status = ModelPick(kPickForCopy, model);
    if (!Failed(status)) status = ModelNameGet(model, name);
    if (Failed(status)) return status;
    status = ClipboardTextSet(name);
    if (Failed(status)) return ShowFailure(kNotCopied, status);
    DisplayMessage(kCopied);
    return status;
}

ProError KvMdlRename() {
    ProMdl model = nullptr;
    std::wstring name;
    ProError status = ModelPick(kPickForRename, model);
    if (!Failed(status)) status = ModelNameGet(model, name);
    // Without its prompt the message line reads nothing.
    if (!Failed(status)) status = DisplayMessage(kNamePrompt, name.c_str());
    std::wstring answer;
    if (!Failed(status)) status = ReadMessageString(kLongestAnswer, name, answer);
    if (Failed(status)) return status;
    answer = WithoutBlanks(answer);
    const bool unchanged = answer.empty() || UpperCase(answer) == UpperCase(name);
    return unchanged ? PRO_TK_NO_ERROR : RenameAndSave(model, answer);
}

// Errors: those of ProSelect; PRO_TK_USER_ABORT for a pick that ended with nothing.
static ProError ModelPick(const char* prompt, ProMdl& model) {
    if (!Failed(SelectedComponentGet(model))) return PRO_TK_NO_ERROR;
    DisplayMessage(prompt);
    ProSelection* picked = nullptr;  // stays the host's
    int count = 0;
    const ProError status =
        ProSelect(HostName(kPickFilter), 1, nullptr, nullptr, nullptr, nullptr, &picked, &count);
    if (Failed(status)) return status;
    if (count < 1 || picked == nullptr) return PRO_TK_USER_ABORT;
    return SelectedModelGet(*picked, ComponentMeans::Model, model);
}

// Several selected items are none that could be meant.
static ProError SelectedComponentGet(ProMdl& model) {
    SelectionArray selections;
    const ProError status = selections.Received(ProSelbufferSelectionsGet(selections.Receive()));
    if (Failed(status)) return status;
    const auto items = Items(selections);
    return items.size() == 1 ? SelectedModelGet(items.front(), ComponentMeans::Model, model)
                             : PRO_TK_E_NOT_FOUND;
}

static ProError RenameAndSave(ProMdl model, const std::wstring& name) {
    ProMdlType type = PRO_MDL_UNUSED;
    ProMdlName text;
    ProError status = ProMdlTypeGet(model, &type);
    if (!Failed(status) && IsNameInUse(name, type)) status = PRO_TK_E_FOUND;
    if (!Failed(status)) status = CopyText(name, text);
    if (!Failed(status)) status = ProMdlnameRename(model, text);
    if (Failed(status)) return ShowFailure(kRefused, status);
    status = ProMdlSave(model);
    if (Failed(status)) return ShowFailure(kNotSaved, status);
    DisplayMessage(kRenamed);
    return status;
}

// A file of that name counts, too: saving would add a version to it.
static bool IsNameInUse(const std::wstring& name, ProMdlType type) {
    ProMdl found = nullptr;
    const ProError status = ModelRetrieveByType(name, static_cast<ProMdlfileType>(type), found);
    return status != PRO_TK_E_NOT_FOUND && status != PRO_TK_BAD_INPUTS;
}

}  // namespace kv
