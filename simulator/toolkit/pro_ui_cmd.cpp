#include <ProUICmd.h>

#include "simulator/layout/icon_file.h"
#include "simulator/report/utf8.h"
#include "simulator/toolkit/support/ui_call.h"

using namespace sim;

namespace {

constexpr unsigned kSmallIcon = 16;
constexpr unsigned kLargeIcon = 32;

bool IsKnownPriority(uiCmdPriority priority) {
    return priority == uiCmdPrioDefault || priority == uiProeImmediate || priority == uiProeAsynch ||
           priority == uiProe2ndImmediate;
}

// What is wrong with the icon in one of its sizes; empty: nothing.
std::string FoundIconFault(Session& host, const std::string& icon, unsigned side) {
    const IconFolder* folder = host.texts.FindIcon(icon);
    if (folder == nullptr) return "there is no icon file \"" + icon + "\"";
    const std::string fault = folder->Fault(icon, side);
    return fault.empty() ? "" : "the icon file \"" + icon + "\" " + fault;
}

Command* NamedCommand(Session& host, uiCmdCmdId id) {
    Command* command = host.screen.CommandFromId(id);
    if (command == nullptr) host.report.Violation("the command identifier is none of the host's");
    return command;
}

}  // namespace

extern "C" {

ProError ProCmdActionAdd(char* action_name, uiCmdCmdActFn action_cb, uiCmdPriority priority,
                         uiCmdAccessFn access_func, ProBoolean allow_in_non_active_window,
                         ProBoolean allow_in_accessory_window, uiCmdCmdId* action_id) {
    static const CallSite kSite("ProCmdActionAdd", {PRO_TK_E_FOUND});
    return Traced(kSite, {action_name, priority, Out(action_id)}, [&](Session& host) -> ProError {
        if (const std::string fault = NameFault(action_name, sizeof(ProCmdItemName)); !fault.empty())
            return Refuse(host, PRO_TK_GENERAL_ERROR, "the command name " + Named(action_name) + " " + fault);
        if (action_cb == nullptr || action_id == nullptr)
            return Refuse(host, PRO_TK_GENERAL_ERROR, "an argument is null");
        if (!IsKnownPriority(priority))
            return Refuse(host, PRO_TK_GENERAL_ERROR, "there is no priority " + std::to_string(priority));
        Command* command = host.screen.AddCommand(action_name);
        if (command == nullptr) return PRO_TK_E_FOUND;  // the identifier stays as it was
        command->action = action_cb;
        command->priority = priority;
        command->access = access_func;
        command->inNonActiveWindow = allow_in_non_active_window != PRO_B_FALSE;
        command->inAccessoryWindow = allow_in_accessory_window != PRO_B_FALSE;
        *action_id = command->Id();
        return PRO_TK_NO_ERROR;
    });
}

ProError ProCmdCmdIdFind(char* cmd_name, uiCmdCmdId* cmd_id) {
    static const CallSite kSite("ProCmdCmdIdFind", {PRO_TK_E_NOT_FOUND});
    return Traced(kSite, {cmd_name, Out(cmd_id)}, [&](Session& host) -> ProError {
        if (const std::string fault = NameFault(cmd_name, sizeof(ProCmdItemName)); !fault.empty())
            return Refuse(host, PRO_TK_E_NOT_FOUND, "the command name " + Named(cmd_name) + " " + fault);
        Command* command = host.screen.FindCommand(cmd_name);
        if (command == nullptr) return PRO_TK_E_NOT_FOUND;
        if (cmd_id != nullptr) *cmd_id = command->Id();
        return PRO_TK_NO_ERROR;
    });
}

ProError ProCmdIconSet(uiCmdCmdId cmd_id, ProCmdItemIcon cmd_icon) {
    static const CallSite kSite("ProCmdIconSet");
    return Traced(kSite, {cmd_id, cmd_icon}, [&](Session& host) -> ProError {
        Command* command = NamedCommand(host, cmd_id);
        if (command == nullptr) return PRO_TK_GENERAL_ERROR;
        if (const std::string fault = NameFault(cmd_icon, sizeof(ProCmdItemIcon)); !fault.empty())
            return Refuse(host, PRO_TK_GENERAL_ERROR, "the icon name " + Named(cmd_icon) + " " + fault);
        const std::string icon = cmd_icon;
        if (icon.find_first_of("/\\:") != std::string::npos)
            return Refuse(host, PRO_TK_GENERAL_ERROR, "the icon name " + Named(cmd_icon) + " has a path");
        std::string fault = FoundIconFault(host, icon, kSmallIcon);
        if (fault.empty()) fault = FoundIconFault(host, LargeIconName(icon), kLargeIcon);
        if (!fault.empty()) return Refuse(host, PRO_TK_GENERAL_ERROR, fault);
        command->icon = icon;
        return PRO_TK_NO_ERROR;
    });
}

ProError ProCmdDesignate(uiCmdCmdId cmd_id, ProCmdItemLabel button_label, ProCmdLineHelp one_line_help,
                         ProCmdDescription description, ProFileName msg_file) {
    static const CallSite kSite("ProCmdDesignate",
                                {PRO_TK_BAD_INPUTS, PRO_TK_E_NOT_FOUND, PRO_TK_MSG_NOT_FOUND});
    return Traced(kSite, {cmd_id, button_label, one_line_help, description, msg_file},
                  [&](Session& host) -> ProError {
                      Command* command = NamedCommand(host, cmd_id);
                      if (command == nullptr) return PRO_TK_BAD_INPUTS;
                      for (const char* key : {button_label, one_line_help, description}) {
                          const ProError status = CheckKey(host, msg_file, key, PRO_TK_E_NOT_FOUND);
                          if (status != PRO_TK_NO_ERROR) return status;
                      }
                      command->designated = true;
                      command->labelKey = button_label;
                      command->helpKey = one_line_help;
                      command->descriptionKey = description;
                      command->messageFile = msg_file;
                      return PRO_TK_NO_ERROR;
                  });
}

}  // extern "C"
