// Host dialogs: their life, their actions, their components.
#pragma once

#include <initializer_list>
#include <span>
#include <string>

#include <ProUI.h>

#include "base/host_callback.h"

namespace kv {

// The host's form of a button action. Being noexcept is part of the type, so that only a callback that
// cannot throw into the host fits into a list of actions.
using DialogRun = void (*)(char* dialog, char* component, ProAppData data) noexcept;

// Tells the user about an action that broke off; says nothing for PRO_TK_NO_ERROR.
void ReportBrokenAction(ProError status) noexcept;

// What to hand to the host in place of `Run`: what `Run` throws ends it and is told in a message box.
template <void (*Run)(char*, char*, ProAppData)>
void DialogCallback(char* dialog, char* component, ProAppData data) noexcept {
    const ProError status = Guarded([&] {
        Run(dialog, component, data);
        return PRO_TK_NO_ERROR;
    });
    ReportBrokenAction(status);
}

// What has to happen at a component to run an action.
enum class DialogEvent { ButtonPressed, RadioChosen, RowActivated, AreaShown };

struct DialogAction {
    const char* component;
    DialogRun run;
    DialogEvent event = DialogEvent::ButtonPressed;
};

// Sets a dialog's components before it is shown.
using DialogFill = void (*)(ProAppData data);

// Shows the dialog of resource `name` until one of its actions or its close box ends it.
//
// data    handed to every action and to `fill`; it has to live as long as the call
// fill    may be null
// Errors  of creating, activating or destroying, each of which also shows its message, and of attaching
//         an action. The dialog is destroyed on every way out.
[[nodiscard]] ProError RunDialog(const char* name, std::span<const DialogAction> actions,
                                 ProAppData data = nullptr, DialogFill fill = nullptr);
[[nodiscard]] ProError RunDialog(const char* name, std::initializer_list<DialogAction> actions,
                                 ProAppData data = nullptr, DialogFill fill = nullptr);

// The action that just closes its dialog.
void CloseDialog(char* dialog, char* component, ProAppData data) noexcept;

// Text of an input panel. Errors: those of ProUIInputpanelValueGet; `text` is then empty.
[[nodiscard]] ProError InputTextGet(const char* dialog, const char* component, std::wstring& text);
// The same where an unreadable panel may count as empty.
std::wstring InputText(const char* dialog, const char* component);
void InputTextSet(const char* dialog, const char* component, const std::wstring& text);

// Label of the chosen option. Errors: those of ProUIOptionmenuValueGet; `label` is then empty.
[[nodiscard]] ProError OptionLabelGet(const char* dialog, const char* component, std::wstring& label);
void OptionLabelSet(const char* dialog, const char* component, const std::wstring& label);
void OptionEnabledSet(const char* dialog, const char* component, bool enabled);

// Whether a check button is ticked. PRO_TK_NOT_VALID for a third state, else the errors of
// ProUICheckbuttonGetState.
[[nodiscard]] ProError CheckTickedGet(const char* dialog, const char* component, bool& ticked);
void CheckTickedSet(const char* dialog, const char* component, bool ticked);

// Name of the chosen radio button; empty when none is chosen or the group cannot be read.
std::string RadioChoice(const char* dialog, const char* group);
void RadioChoiceSet(const char* dialog, const char* group, const std::string& button);

}  // namespace kv
