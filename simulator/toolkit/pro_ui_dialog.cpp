#include <ProUIDialog.h>

#include "simulator/toolkit/support/ui_call.h"

using namespace sim;

extern "C" {

ProError ProUIDialogCreate(char* session_dialog_name, char* resource) {
    static const CallSite kSite("ProUIDialogCreate");
    return Traced(kSite, {session_dialog_name, resource}, [&](Session& host) -> ProError {
        if (session_dialog_name == nullptr || *session_dialog_name == '\0')
            return Refuse(host, PRO_TK_GENERAL_ERROR, "the dialog has no session name");
        std::string fault;
        const Dialog* dialog =
            host.screen.LoadDialog(session_dialog_name, resource == nullptr ? "" : resource, fault);
        if (dialog == nullptr) return Refuse(host, PRO_TK_GENERAL_ERROR, fault);
        host.report.Opened(Account::kDialog, dialog, dialog->Name());
        return PRO_TK_NO_ERROR;
    });
}

ProError ProUIDialogActivate(char* dialog_name, int* status) {
    static const CallSite kSite("ProUIDialogActivate", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog_name, Out(status)}, [&](Session& host) -> ProError {
        Dialog* dialog = NamedDialog(host, dialog_name);
        if (dialog == nullptr) return PRO_TK_BAD_INPUTS;
        if (dialog->active)
            return Refuse(host, PRO_TK_BAD_INPUTS,
                          "the dialog " + Named(dialog_name) + " is on the screen already");
        const int exitStatus = host.screen.Activate(*dialog);
        if (status != nullptr) *status = exitStatus;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProUIDialogExit(char* dialog_name, int status) {
    static const CallSite kSite("ProUIDialogExit");
    return Traced(kSite, {dialog_name, status}, [&](Session& host) -> ProError {
        Dialog* dialog = NamedDialog(host, dialog_name);
        if (dialog == nullptr) return PRO_TK_GENERAL_ERROR;
        if (!dialog->active)
            return Refuse(host, PRO_TK_GENERAL_ERROR,
                          "the dialog " + Named(dialog_name) + " is not on the screen");
        if (dialog->exitAsked) return PRO_TK_NO_ERROR;  // the first status stays
        dialog->exitAsked = true;
        dialog->exitStatus = status;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProUIDialogDestroy(char* dialog_name) {
    static const CallSite kSite("ProUIDialogDestroy", {}, true);
    return Traced(kSite, {dialog_name}, [&](Session& host) -> ProError {
        const Dialog* dialog = NamedDialog(host, dialog_name);
        if (dialog == nullptr) return PRO_TK_GENERAL_ERROR;
        if (dialog->active)
            return Refuse(host, PRO_TK_GENERAL_ERROR,
                          "the dialog " + Named(dialog_name) + " is still on the screen");
        host.report.Closed(Account::kDialog, dialog);
        // The name may be the dialog's own memory.
        host.screen.DestroyDialog(std::string(dialog_name));
        return PRO_TK_NO_ERROR;
    });
}

ProError ProUIDialogCloseActionSet(char* dialog, ProUIAction action, ProAppData appdata) {
    static const CallSite kSite("ProUIDialogCloseActionSet");
    return Traced(kSite, {dialog, action, appdata}, [&](Session& host) -> ProError {
        Dialog* found = NamedDialog(host, dialog);
        if (found == nullptr) return PRO_TK_GENERAL_ERROR;
        if (action == nullptr)
            return Refuse(host, PRO_TK_GENERAL_ERROR, "the close action of " + Named(dialog) + " is null");
        found->actions[DialogEvent::kClose] = {action, appdata};
        return PRO_TK_NO_ERROR;
    });
}

ProError ProUIDialogAboveactivewindowSet(char* dialog, ProBoolean above_active_window) {
    static const CallSite kSite("ProUIDialogAboveactivewindowSet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, above_active_window}, [&](Session& host) -> ProError {
        Dialog* found = NamedDialog(host, dialog);
        if (found == nullptr) return PRO_TK_BAD_INPUTS;
        found->aboveActiveWindow = above_active_window == PRO_B_TRUE;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProUIDialogAppActionSet(char* dialog, ProUIAction action, ProAppData appdata) {
    static const CallSite kSite("ProUIDialogAppActionSet", {PRO_TK_BAD_INPUTS});
    return Traced(kSite, {dialog, action, appdata}, [&](Session& host) -> ProError {
        Dialog* found = NamedDialog(host, dialog);
        if (found == nullptr || action == nullptr) return PRO_TK_BAD_INPUTS;
        found->appAction = DialogAction{action, appdata};
        return PRO_TK_NO_ERROR;
    });
}

}  // extern "C"
