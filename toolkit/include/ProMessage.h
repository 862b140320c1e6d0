// The message area: texts from message files, prompts.
#pragma once

#include <ProToolkit.h>

PRO_BEGIN_C_DECLS

// Shows the message of a key. The variable arguments are pointers to the values. E_NOT_FOUND for
// a missing file; MSG_NOT_FOUND; MSG_NO_TRANS; MSG_FMT_ERROR; MSG_TOO_LONG.
ProError ProMessageDisplay(ProFileName file_name, ProCharLine message_name, ...);

// Gives the message in a buffer of PRO_LINE_SIZE instead of showing it; a longer one is cut and
// answered with MSG_TOO_LONG. Else as ProMessageDisplay.
ProError ProMessageToBuffer(ProLine translated_msg, ProFileName file_name, ProCharLine message_name, ...);

// Reads a text of at most `max_buffer_length` characters (127 or less) into a buffer one longer;
// show the prompt first. MSG_USER_QUIT for Esc; GENERAL_ERROR when the user takes the default.
ProError ProMessageStringRead(int max_buffer_length, wchar_t* buffer);

// Reads a real number; show the prompt first. Without a range (NULL) any number is good; what is none, or is
// out of range, is asked for again. MSG_USER_QUIT for Esc; GENERAL_ERROR for Enter without an entry.
ProError ProMessageDoubleRead(double range[2], double* answer);

PRO_END_C_DECLS
