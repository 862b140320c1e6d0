// Windows of the host.
#pragma once

#include <ProObjects.h>

PRO_BEGIN_C_DECLS

// Gives the window of a model in memory: its own, else an empty one, else a new one.
// INVALID_TYPE; BAD_INPUTS; E_DEADLOCK.
ProError ProObjectwindowMdlnameCreate(ProMdlName object_name, ProType object_type, int* p_window_id);

// Makes a window active once the command has returned to the host. BAD_INPUTS; GENERAL_ERROR.
ProError ProWindowActivate(int window);

// Gives the current window, PRO_VALUE_UNUSED for the message area. BAD_INPUTS; GENERAL_ERROR.
ProError ProWindowCurrentGet(int* p_window_id);

// Draws a window anew and removes highlights; PRO_VALUE_UNUSED means the current one.
ProError ProWindowRepaint(int window_id);

PRO_END_C_DECLS
