// The menu bar.
#pragma once

#include <ProToolkit.h>
#include <ProUICmd.h>

PRO_BEGIN_C_DECLS

typedef char ProMenuItemName[PRO_NAME_SIZE];
typedef char ProMenuItemLabel[PRO_LINE_SIZE];
typedef char ProMenuItemIcon[PRO_LINE_SIZE];
typedef char ProMenuLineHelp[PRO_LINE_SIZE];
typedef char ProMenuDescription[PRO_LINE_SIZE];

// Adds a menu beside `neighbor`, which is NULL for the first one only. The label is a key of
// the message file. MSG_NOT_FOUND; E_FOUND for a name in use; GENERAL_ERROR.
ProError ProMenubarMenuAdd(ProMenuItemName menu_name, ProMenuItemLabel untranslated_menu_label,
                           ProMenuItemName neighbor, ProBoolean add_after_neighbor, ProFileName filename);

// Adds a button that starts a command; `neighbor` is NULL for a menu's first button. Label and
// help are keys of the message file. MSG_NOT_FOUND; E_FOUND; GENERAL_ERROR.
ProError ProMenubarmenuPushbuttonAdd(ProMenuItemName parent_menu, ProMenuItemName push_button_name,
                                     ProMenuItemLabel push_button_label, ProMenuLineHelp one_line_help,
                                     ProMenuItemName neighbor, ProBoolean add_after_neighbor,
                                     uiCmdCmdId action_id, ProFileName filename);

PRO_END_C_DECLS
