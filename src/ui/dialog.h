// Host dialogs: their life, their actions, their components.
#pragma once

#include <functional>
#include <span>
#include <string>
#include <type_traits>
#include <vector>

#include "ui/dialog_row.h"

namespace kv {

// Shows the dialog of resource `name` until one of its actions or its close box ends it.
//
// data    what the actions and `fill` work on: the caller's own, of the type that they name
// fill    sets the components before the dialog is shown; may be null
// Errors  of creating, activating or destroying, each of which also shows its message; attaching an action
//         belongs to creating. The dialog is destroyed on every way out.
template <DialogData Data>
[[nodiscard]] ProError RunDialog(const char* name, const DialogRows<std::type_identity_t<Data>>& rows,
                                 Data& data, std::type_identity_t<void (*)(Data&)> fill = nullptr);
[[nodiscard]] ProError RunDialog(const char* name, const DialogRows<>& rows, void (*fill)() = nullptr);

// What both come to, for any type of data.
[[nodiscard]] ProError RunUntypedDialog(const char* name, std::span<const DialogAction> actions,
                                        ProAppData data, const std::function<void()>& fill);

// Ends the dialog once the action that asks for it has returned.
void DialogClose(const char* name);
// Runs `Function` once on the dialog's data when the action that runs now has returned: by then the host has
// erased what it was told to. Errors: those of ProUIDialogAppActionSet.
template <auto Function, DialogData Data>
[[nodiscard]] ProError RunAfterAction(const char* dialog, Data& data) {
    return RunUntypedAfterAction(dialog, DialogCallback<Function>, &data);
}
[[nodiscard]] ProError RunUntypedAfterAction(const char* dialog, DialogRun run, ProAppData data);

// Text of an input panel. Errors: those of ProUIInputpanelValueGet; `text` is then empty.
[[nodiscard]] ProError InputTextGet(const char* dialog, const char* component, std::wstring& text);
// The same where an unreadable panel may count as empty.
std::wstring InputText(const char* dialog, const char* component);
void InputTextSet(const char* dialog, const char* component, const std::wstring& text);

// Text of a text area, its lines divided by line feeds. Errors: those of ProUITextareaValueGet; `text` is
// then empty.
[[nodiscard]] ProError AreaTextGet(const char* dialog, const char* component, std::wstring& text);
void AreaTextSet(const char* dialog, const char* component, const std::wstring& text);

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
// A name that the group does not have leaves it as it is.
void RadioChoiceSet(const char* dialog, const char* group, const std::string& button);

template <typename Data>
std::vector<DialogAction> ActionsOf(const DialogRows<Data>& rows) {
    std::vector<DialogAction> actions;
    for (const DialogRow<Data>& row : rows) actions.push_back(row.action);
    return actions;
}

template <DialogData Data>
ProError RunDialog(const char* name, const DialogRows<std::type_identity_t<Data>>& rows, Data& data,
                   std::type_identity_t<void (*)(Data&)> fill) {
    return RunUntypedDialog(name, ActionsOf(rows), &data, [&data, fill] {
        if (fill != nullptr) fill(data);
    });
}

}  // namespace kv
