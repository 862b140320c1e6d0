// Popup menus of the graphics window and the model tree.
#pragma once

#include <ProMenu.h>
#include <ProSelection.h>
#include <ProUICmd.h>

PRO_BEGIN_C_DECLS

typedef int ProPopupMenuId;

// Says whether a button can be used for the selected items, a ProArray of the host's: free
// nothing. Holds in addition to the access function of the button's command.
typedef uiCmdAccessState (*ProPopupmenuAccessFunction)(uiCmdCmdId command, ProAppData appdata,
                                                       ProSelection* sel_buffer);

// Called whenever the host has made a popup menu, with nothing but the menu's name; the answer
// is ignored. Registered as PRO_POPUPMENU_CREATE_POST.
typedef ProError (*ProPopupmenuCreatePostAction)(const char* name);

// Gives the id of a popup menu, good for the current context only. E_NOT_FOUND.
ProError ProPopupmenuIdGet(const char* name, ProPopupMenuId* menu_id);

// Adds a button that starts a command, at the end for PRO_VALUE_UNUSED. Label and help are the
// texts themselves; `access_fn` may be NULL. BAD_INPUTS; E_FOUND for a name in use.
ProError ProPopupmenuButtonAdd(ProPopupMenuId menu_id, int position, ProMenuName button_name,
                               ProLine button_label, ProLine button_helptext, uiCmdCmdId cmd_id,
                               ProPopupmenuAccessFunction access_fn, ProAppData appdata);

PRO_END_C_DECLS
