// Rows of a dialog: which action runs when something happens at a component.
//
// An action is a plain function. It takes the dialog's own data by reference, or nothing, and after that the
// name of the component if one action serves several of them:
//
//     void OnApply(StampDialog& dialog);
//     void OnPick(StampDialog& dialog, const char* component);
//     void OnHelp();
//
// A name is the host's and good for the call only, until another dialog is touched.
#pragma once

#include <type_traits>
#include <vector>

#include <ProUI.h>

#include "base/host_callback.h"

namespace kv {

// What has to happen at a component to run its action.
enum class DialogEvent { ButtonPressed, RadioChosen, RowActivated, RowArmed, TitleClicked, AreaShown };

// The host's form of an action. Being noexcept is part of the type, so that only a callback that cannot throw
// into the host fits into a row.
using DialogRun = void (*)(char* dialog, char* component, ProAppData data) noexcept;

struct DialogAction {
    const char* component;
    DialogEvent event;
    DialogRun run;
};

// What a dialog can bring to its actions.
template <typename Type>
concept DialogData = std::is_object_v<Type>;

// An action with the type of data that it works on: void for one without, whose row fits every dialog. A row
// for other data than the dialog's does not compile.
template <typename Data>
struct DialogRow {
    DialogAction action;

    template <typename Other>
    requires std::is_void_v<Data>
    operator DialogRow<Other>() const { return {action}; }
};

// All rows of a dialog, in any order.
template <typename Data = void>
using DialogRows = std::vector<DialogRow<Data>>;

// The forms of an action.
template <auto Function>
struct ActionForm;

template <void (*Function)()>
struct ActionForm<Function> {
    using Data = void;
    static void Run(ProAppData, const char*) { Function(); }
};

template <void (*Function)(const char*)>
struct ActionForm<Function> {
    using Data = void;
    static void Run(ProAppData, const char* component) { Function(component); }
};

template <typename Type, void (*Function)(Type&)>
struct ActionForm<Function> {
    using Data = std::remove_const_t<Type>;
    static void Run(ProAppData data, const char*) { Function(*static_cast<Type*>(data)); }
};

template <typename Type, void (*Function)(Type&, const char*)>
struct ActionForm<Function> {
    using Data = std::remove_const_t<Type>;
    static void Run(ProAppData data, const char* component) {
        Function(*static_cast<Type*>(data), component);
    }
};

// Tells the user about an action that broke off; says nothing for PRO_TK_NO_ERROR.
void ReportBrokenAction(ProError status) noexcept;

// What the host runs for `Function`: whatever that throws ends it and is told in a message box.
template <auto Function>
void DialogCallback(char*, char* component, ProAppData data) noexcept {
    const ProError status = Guarded([&] {
        ActionForm<Function>::Run(data, component);
        return PRO_TK_NO_ERROR;
    });
    ReportBrokenAction(status);
}

template <auto Function>
using RowFor = DialogRow<typename ActionForm<Function>::Data>;

// `Function` runs when the push button is pressed,
template <auto Function>
RowFor<Function> Pressed(const char* button) {
    return {{button, DialogEvent::ButtonPressed, DialogCallback<Function>}};
}

// when a button of the radio group is chosen,
template <auto Function>
RowFor<Function> Chosen(const char* group) {
    return {{group, DialogEvent::RadioChosen, DialogCallback<Function>}};
}

// when a row of the table is double-clicked,
template <auto Function>
RowFor<Function> Activated(const char* table) {
    return {{table, DialogEvent::RowActivated, DialogCallback<Function>}};
}

// when the user moves to another row of the table,
template <auto Function>
RowFor<Function> Armed(const char* table) {
    return {{table, DialogEvent::RowArmed, DialogCallback<Function>}};
}

// when the title of one of the table's columns is clicked,
template <auto Function>
RowFor<Function> TitleClicks(const char* table) {
    return {{table, DialogEvent::TitleClicked, DialogCallback<Function>}};
}

// when the drawing area is on the screen.
template <auto Function>
RowFor<Function> Shown(const char* area) {
    return {{area, DialogEvent::AreaShown, DialogCallback<Function>}};
}

// The button just closes the dialog.
DialogRow<void> Closes(const char* button);

}  // namespace kv
