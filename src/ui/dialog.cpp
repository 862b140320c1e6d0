// Host dialogs on the toolkit's dialog calls.
//
// The setters say nothing about a component that refuses its value: it then shows what its layout gives.

#include "ui/dialog.h"

#include <algorithm>

#include <ProUICheckbutton.h>
#include <ProUIDialog.h>
#include <ProUIDrawingarea.h>
#include <ProUIInputpanel.h>
#include <ProUIOptionmenu.h>
#include <ProUIPushbutton.h>
#include <ProUIRadiogroup.h>
#include <ProUITable.h>
#include <ProUITextarea.h>

#include "base/host_handle.h"
#include "base/scope_exit.h"
#include "base/text.h"
#include "ui/message_box.h"

namespace kv {

static constexpr wchar_t kCreateError[] = L"UIDialog Create error!";
static constexpr wchar_t kActivateError[] = L"UIDialog Activate error!";
static constexpr wchar_t kDestroyError[] = L"UIDialog Destroy error!";
static constexpr wchar_t kOutOfMemory[] = L"\t内存不足，操作未完成！\t";
static constexpr wchar_t kBrokenOff[] = L"\t操作意外中断！\t";

static void CloseDialog(char* dialog, char* component, ProAppData data) noexcept;
static ProError AttachActions(const char* name, std::span<const DialogAction> actions, ProAppData data);
static ProError AttachAction(char* dialog, const DialogAction& action, ProAppData data);

void ReportBrokenAction(ProError status) noexcept {
    if (!Failed(status)) return;
    ShowMessage(status == PRO_TK_OUT_OF_MEMORY ? kOutOfMemory : kBrokenOff);
}

DialogRow<void> Closes(const char* button) {
    return {{button, DialogEvent::ButtonPressed, CloseDialog}};
}

ProError RunDialog(const char* name, const DialogRows<>& rows, void (*fill)()) {
    return RunUntypedDialog(name, ActionsOf(rows), nullptr, [fill] {
        if (fill != nullptr) fill();
    });
}

ProError RunUntypedDialog(const char* name, std::span<const DialogAction> actions, ProAppData data,
                          const std::function<void()>& fill) {
    ProError status = ProUIDialogCreate(HostName(name), HostName(name));
    if (Failed(status)) return ShowFailure(kCreateError, status);

    ProError destroyed = PRO_TK_NO_ERROR;
    {
        const ScopeExit destroy([name, &destroyed] {
            destroyed = ProUIDialogDestroy(HostName(name));
            if (Failed(destroyed)) ShowMessage(kDestroyError);
        });
        // A layout without one of the components is none.
        status = AttachActions(name, actions, data);
        if (Failed(status)) return ShowFailure(kCreateError, status);
        fill();

        int exitCode = 0;
        status = ProUIDialogActivate(HostName(name), &exitCode);
        if (Failed(status)) return ShowFailure(kActivateError, status);
    }
    return destroyed;
}

void DialogClose(const char* name) {
    ProUIDialogExit(HostName(name), 0);
}

ProError RunUntypedAfterAction(const char* dialog, DialogRun run, ProAppData data) {
    return ProUIDialogAppActionSet(HostName(dialog), run, data);
}

ProError InputTextGet(const char* dialog, const char* component, std::wstring& text) {
    HostString value;
    const ProError status =
        value.Received(ProUIInputpanelValueGet(HostName(dialog), HostName(component), value.Receive()));
    text = Failed(status) ? std::wstring() : TextOf(value);
    return status;
}

std::wstring InputText(const char* dialog, const char* component) {
    std::wstring text;
    return Failed(InputTextGet(dialog, component, text)) ? std::wstring() : text;
}

void InputTextSet(const char* dialog, const char* component, const std::wstring& text) {
    ProUIInputpanelValueSet(HostName(dialog), HostName(component), HostText(text.c_str()));
}

ProError AreaTextGet(const char* dialog, const char* component, std::wstring& text) {
    HostString value;
    const ProError status =
        value.Received(ProUITextareaValueGet(HostName(dialog), HostName(component), value.Receive()));
    text = Failed(status) ? std::wstring() : TextOf(value);
    return status;
}

void AreaTextSet(const char* dialog, const char* component, const std::wstring& text) {
    ProUITextareaValueSet(HostName(dialog), HostName(component), HostText(text.c_str()));
}

ProError OptionLabelGet(const char* dialog, const char* component, std::wstring& label) {
    HostString value;
    const ProError status =
        value.Received(ProUIOptionmenuValueGet(HostName(dialog), HostName(component), value.Receive()));
    label = Failed(status) ? std::wstring() : TextOf(value);
    return status;
}

void OptionLabelSet(const char* dialog, const char* component, const std::wstring& label) {
    ProUIOptionmenuValueSet(HostName(dialog), HostName(component), HostText(label.c_str()));
}

void OptionEnabledSet(const char* dialog, const char* component, bool enabled) {
    if (enabled) {
        ProUIOptionmenuEnable(HostName(dialog), HostName(component));
    } else {
        ProUIOptionmenuDisable(HostName(dialog), HostName(component));
    }
}

ProError CheckTickedGet(const char* dialog, const char* component, bool& ticked) {
    ProBoolean state = PRO_B_FALSE;
    const ProError status = ProUICheckbuttonGetState(HostName(dialog), HostName(component), &state);
    if (Failed(status)) return status;
    ticked = state == PRO_B_TRUE;
    return ticked || state == PRO_B_FALSE ? PRO_TK_NO_ERROR : PRO_TK_NOT_VALID;
}

void CheckTickedSet(const char* dialog, const char* component, bool ticked) {
    if (ticked) {
        ProUICheckbuttonSet(HostName(dialog), HostName(component));
    } else {
        ProUICheckbuttonUnset(HostName(dialog), HostName(component));
    }
}

std::string RadioChoice(const char* dialog, const char* group) {
    HostNames names;
    const ProError status = names.Received(ProUIRadiogroupSelectednamesGet(
        HostName(dialog), HostName(group), names.ReceiveCount(), names.ReceiveNames()));
    return Failed(status) ? std::string() : names.First();
}

// Names come from settings files, and what a host makes of an unknown one nobody says.
void RadioChoiceSet(const char* dialog, const char* group, const std::string& button) {
    HostNames known;
    const ProError status = known.Received(ProUIRadiogroupNamesGet(
        HostName(dialog), HostName(group), known.ReceiveCount(), known.ReceiveNames()));
    if (Failed(status) || std::ranges::find(known.All(), button) == known.All().end()) return;
    char* name = HostName(button.c_str());
    ProUIRadiogroupSelectednamesSet(HostName(dialog), HostName(group), 1, &name);
}

static void CloseDialog(char* dialog, char*, ProAppData) noexcept {
    DialogClose(dialog);
}

// The close box does nothing of its own: without an action the dialog could not be left by it.
static ProError AttachActions(const char* name, std::span<const DialogAction> actions, ProAppData data) {
    for (const DialogAction& action : actions) {
        const ProError status = AttachAction(HostName(name), action, data);
        if (Failed(status)) return status;
    }
    return ProUIDialogCloseActionSet(HostName(name), CloseDialog, nullptr);
}

static ProError AttachAction(char* dialog, const DialogAction& action, ProAppData data) {
    char* component = HostName(action.component);
    switch (action.event) {
        case DialogEvent::RadioChosen:
            return ProUIRadiogroupSelectActionSet(dialog, component, action.run, data);
        case DialogEvent::RowActivated:
            return ProUITableActivateActionSet(dialog, component, action.run, data);
        case DialogEvent::RowArmed:
            return ProUITableArmActionSet(dialog, component, action.run, data);
        case DialogEvent::TitleClicked:
            return ProUITableColumnselectActionSet(dialog, component, action.run, data);
        case DialogEvent::AreaShown:
            return ProUIDrawingareaPostmanagenotifyActionSet(dialog, component, action.run, data);
        case DialogEvent::ButtonPressed:
            break;
    }
    return ProUIPushbuttonActivateActionSet(dialog, component, action.run, data);
}

}  // namespace kv
