// Freeing strings, files and directories, options, paths of the application.
#pragma once

#include <ProToolkit.h>
#include <ProWstring.h>

PRO_BEGIN_C_DECLS

// Frees a plain list of `ct` strings that a toolkit function gave out; not for a ProArray.
// GENERAL_ERROR.
ProError ProStringarrayFree(char** str_arr, int ct);

// The same for wide strings. GENERAL_ERROR.
ProError ProWstringarrayFree(wchar_t** wstr_arr, int ct);

// Frees one string that a toolkit function gave out. GENERAL_ERROR.
ProError ProStringFree(char* str);

// Gives the working directory in a buffer of PRO_PATH_SIZE; it ends with a separator.
// BAD_INPUTS.
ProError ProDirectoryCurrentGet(ProPath path);

// Moves the working directory, by an absolute or relative path. INVALID_DIR; CANT_ACCESS;
// INVALID_NAME.
ProError ProDirectoryChange(ProPath path);

// Lets the user choose a directory. Label, shortcuts and default path may be NULL; the label
// holds at most 31 characters. USER_ABORT.
ProError ProDirectoryChoose(ProName dialog_label, ProPath* shortcut_path_arr, ProName* shortcut_name_arr,
                            ProPath default_path, ProPath r_selected_path);

// Lets the user choose a file to open. `filter_string` is a comma-separated list of masks;
// everything before `r_selected_file` may be NULL. USER_ABORT.
ProError ProFileMdlnameOpen(ProName dialog_label, ProLine filter_string, ProPath* shortcut_path_arr,
                            ProName* shortcut_name_arr, ProPath default_path,
                            ProMdlFileName pre_sel_file_name, ProPath r_selected_file);

// Gives the directory that contains the application's "text" directory. BAD_INPUTS.
ProError ProToolkitApplTextPathGet(ProPath text_path);

// Gives every value of a configuration option as a ProArray; free it with ProArrayFree.
// E_NOT_FOUND for an option that is not set; BAD_INPUTS.
ProError ProConfigoptArrayGet(ProName option, ProPath** value_array);

PRO_END_C_DECLS
