// The commands of the plug-in.
#pragma once

#include <span>
#include <string_view>

#include <ProUICmd.h>

#include "base/host_callback.h"
#include "host/access_rules.h"

namespace kv {

struct CommandRow {
    const char* name;  // also the key of label and description
    CommandAction action;
    const char* helpKey;
    const char* icon;
    AccessRule available;
    bool designated;  // the user can place it on the ribbon
};

// All commands in menu order.
std::span<const CommandRow> Commands();

// The row of a command; null for a name that has none.
const CommandRow* FindCommand(std::string_view name);

// Adds the plug-in's menu and every command to the host. A command that the host refuses is left out.
void RegisterCommands();

// Registers an action, or finds the one registered under this name before. Errors: those of ProCmdActionAdd
// and ProCmdCmdIdFind.
[[nodiscard]] ProError CommandIdGet(const char* name, CommandAction action, uiCmdPriority priority,
                                    AccessRule available, uiCmdCmdId& id);

// Adds a button for a command at the end of a menu. Label and help are keys of the menu file. Errors: those
// of ProMenubarmenuPushbuttonAdd.
ProError AddMenuButton(const char* menu, const char* button, const char* label, const char* helpKey,
                       uiCmdCmdId id);

}  // namespace kv
