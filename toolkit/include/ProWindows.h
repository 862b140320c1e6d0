// Windows of the host.
#pragma once

#include <ProObjects.h>

PRO_BEGIN_C_DECLS

// Gives the window of a model in memory: its own, else an empty one, else a new one.
// INVALID_TYPE; BAD_INPUTS; E_DEADLOCK.
ProError ProObjectwindowMdlnameCreate(ProMdlName object_name, ProType object_type, int* p_window_id);

// Makes a window active once the command has returned to the host. BAD_INPUTS; GENERAL_ERROR.
ProError ProWindowActivate(int window);

// Makes a window the current one at once: what draws and exports works in it. The active window
// and its model stay as they are. BAD_INPUTS.
ProError ProWindowCurrentSet(int window_id);

// Gives the model shown in a window. BAD_INPUTS, also for an empty window.
ProError ProWindowMdlGet(int window, ProMdl* r_mdl);

// Closes a window and cuts its tie to the model; the base window is only emptied. The current
// window cannot be deleted: make another one current first. BAD_INPUTS; BAD_CONTEXT; GENERAL_ERROR.
ProError ProWindowDelete(int window_id);

// Closes the current window once the command has returned to the host; the base window is only
// emptied. GENERAL_ERROR; E_DEADLOCK.
ProError ProWindowCurrentClose(void);

// Gives the current window, PRO_VALUE_UNUSED for the message area. BAD_INPUTS; GENERAL_ERROR.
ProError ProWindowCurrentGet(int* p_window_id);

// Draws a window anew and removes highlights; PRO_VALUE_UNUSED means the current one.
ProError ProWindowRepaint(int window_id);

// Draws a window quickly, as for an animation, and keeps highlights; PRO_VALUE_UNUSED means the current one.
ProError ProWindowRefresh(int window_id);

PRO_END_C_DECLS
