// Copies of models, on the toolkit's model and assembly calls.

#include "assembly/new_model.h"

#include <ProUtil.h>

#include "assembly/assembly_texts.h"
#include "base/host_handle.h"
#include "base/status.h"
#include "base/text.h"
#include "model/model_data.h"
#include "ui/message_box.h"
#include "ui/prompt.h"

namespace kv {

static constexpr wchar_t kStepSave[] = L"保存";
static constexpr wchar_t kStepPlace[] = L"装配";

// Characters that a prompt for a name takes.
static constexpr int kTypedName = 32;
static constexpr int kMostOffersTaken = 10;

// One damaged file takes a name; a host that cannot look anything up would take them all.
static constexpr int kMostUnclear = 100;

ProError TemplatePathGet(const wchar_t* option, std::wstring& path) {
    ProName name;
    HostArray<ProPath> values;
    ProError status = CopyText(option, name);
    if (!Failed(status)) status = values.Received(ProConfigoptArrayGet(name, values.Receive()));
    if (Failed(status)) return status;
    if (Items(values).empty()) return PRO_TK_E_NOT_FOUND;
    path = *values.Get();
    return PRO_TK_NO_ERROR;
}

ProError NameFreeCheck(const std::wstring& name, ProMdlfileType type) {
    ProMdl model = nullptr;
    const ProError status = ModelRetrieveByType(name, type, model);
    if (status == PRO_TK_E_NOT_FOUND) return PRO_TK_NO_ERROR;
    return Failed(status) ? status : PRO_TK_E_FOUND;
}

ProError FreeNameGet(const NameSeries& series, std::wstring& name) {
    int unclear = 0;
    for (int number = 1;; ++number) {
        name = series.rule(series.base, number);
        if (name.size() > series.longest) return PRO_TK_LINE_TOO_LONG;
        const ProError status = NameFreeCheck(name, series.type);
        if (!Failed(status)) return status;
        unclear = status == PRO_TK_E_FOUND ? 0 : unclear + 1;
        if (unclear == kMostUnclear) return status;
    }
}

ProError CopyMake(ProMdl source, NewModel& copy) {
    ProMdlName name;
    ProError status = CopyText(copy.name, name);
    if (!Failed(status)) status = ProMdlnameCopy(source, name, &copy.model);
    if (Failed(status)) copy.model = nullptr;
    return status;
}

ProError Recorded(BatchRun& run, const NewModel& copy, const wchar_t* step, ProError status) {
    run.Add({copy.name, step, status});
    return status;
}

ProError CopyAsk(const char* key, const std::wstring& fallback, ProMdl source, ProMdlfileType type,
                 NewModel& copy) {
    for (int offersTaken = 0; offersTaken < kMostOffersTaken;) {
        ProError status = DisplayMessage(key, fallback.c_str());
        if (!Failed(status)) status = ReadMessageString(kTypedName, fallback, copy.name);
        if (Failed(status)) return PRO_TK_MSG_USER_QUIT;
        offersTaken = copy.name == fallback ? offersTaken + 1 : 0;
        status = copy.name.empty() ? PRO_TK_INVALID_NAME : NameFreeCheck(copy.name, type);
        if (!Failed(status)) status = CopyMake(source, copy);
        if (!Failed(status)) return status;
        ShowMessage(kNameRefused);
    }
    return PRO_TK_MSG_USER_QUIT;
}

void CopySave(BatchRun& run, const NewModel& copy) {
    Recorded(run, copy, kStepSave, ProMdlSave(copy.model));
}

ProError CopyPlace(BatchRun& run, ProMdl assembly, NewModel& copy) {
    ProMatrix origin = {{1, 0, 0, 0}, {0, 1, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    const ProError status = ProAsmcompAssemble(static_cast<ProAssembly>(assembly),
                                               static_cast<ProSolid>(copy.model), origin, &copy.component);
    copy.isPlaced = !Failed(status);
    return Recorded(run, copy, kStepPlace, status);
}

void TellMade(const BatchRun& run, const NewModel& copy, const wchar_t* what) {
    std::wstring text = copy.name;
    if (what != nullptr) {
        text += what;
    } else if (copy.model == nullptr) {
        text += L"：未能创建";
    } else if (!copy.isPlaced) {
        text += L"：已创建，未装配";
    } else {
        text += copy.isConstrained ? L"：已创建并约束装配" : L"：已创建并装配，未约束";
    }
    if (run.Count().failed > 0) text += L"（有步骤失败，见报告）";
    DisplayMessage(kNewModelMessage, text.c_str());
}

}  // namespace kv
