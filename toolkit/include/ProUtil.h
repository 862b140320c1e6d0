// Freeing strings, files and directories, options, paths of the application, export of drawings and models.
#pragma once

#include <ProObjects.h>
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

typedef enum ProFileListOpts {
    PRO_FILE_LIST_ALL = 0,
    // The newest version of each file.
    PRO_FILE_LIST_LATEST = 1
} ProFileListOpt;

// Lists files and sub-directories as full paths; NULL means the working directory. `filter` holds
// masks separated by commas, each below PRO_NAME_SIZE; sub-directories come in any case. Both
// arrays must be there before, of elements of the size of a ProPath; the caller frees both, found
// entries are added at their ends. BAD_INPUTS; INVALID_DIR.
ProError ProFilesList(ProPath directory_path, ProLine filter, ProFileListOpt listing_option,
                      ProPath** p_file_name_array, ProPath** p_subdir_name_array);

// Splits a path into directory with a separator at the end, name, extension without dot, and
// version, -1 without one; every output may be NULL. BAD_INPUTS for a name above 80 characters;
// INVALID_NAME.
ProError ProFileMdlnameParse(ProPath file_name_w_path, ProPath r_path, ProMdlName r_file_name,
                             ProMdlExtension r_extension, int* r_version);

// Lets the user choose a directory. Label, shortcuts and default path may be NULL; the label
// holds at most 31 characters. USER_ABORT.
ProError ProDirectoryChoose(ProName dialog_label, ProPath* shortcut_path_arr, ProName* shortcut_name_arr,
                            ProPath default_path, ProPath r_selected_path);

// Lets the user choose a file to open. `filter_string` is a comma-separated list of masks;
// everything before `r_selected_file` may be NULL. USER_ABORT.
ProError ProFileMdlnameOpen(ProName dialog_label, ProLine filter_string, ProPath* shortcut_path_arr,
                            ProName* shortcut_name_arr, ProPath default_path,
                            ProMdlFileName pre_sel_file_name, ProPath r_selected_file);

// Lets the user choose a file to save to; the same arguments. The label holds at most 31
// characters. USER_ABORT.
ProError ProFileMdlnameSave(ProName dialog_label, ProLine filter_string, ProPath* shortcut_path_arr,
                            ProName* shortcut_name_arr, ProPath default_path,
                            ProMdlFileName pre_sel_file_name, ProPath r_selected_file);

// Gives the directory that contains the application's "text" directory. BAD_INPUTS.
ProError ProToolkitApplTextPathGet(ProPath text_path);

// Gives every value of a configuration option as a ProArray; free it with ProArrayFree.
// E_NOT_FOUND for an option that is not set; BAD_INPUTS.
ProError ProConfigoptArrayGet(ProName option, ProPath** value_array);

// Gives the value of an option, cut off at the buffer's size. E_NOT_FOUND for an option that is not
// set; BAD_INPUTS.
ProError ProConfigoptionGet(ProName option, ProPath option_value);

// Sets an option; one that may have several values gets one more. E_NOT_FOUND for an option that
// the host does not have; BAD_INPUTS; GENERAL_ERROR.
ProError ProConfigoptSet(ProName option, ProPath option_value);

// ---- Export

// Kinds of output files.
typedef enum ProImportExportFiles {
    PRO_DXF_FILE = 9,
    PRO_IGES_3D_FILE = 21,
    PRO_STEP_FILE = 22,
    PRO_DWG_FILE = 34
} ProImportExportFile;

typedef struct pro_2dexport_data* Pro2dExportdata;

// Which sheets an export holds, and in which space. The default is the current sheet alone.
typedef enum Pro2dExportSheetOptions {
    PRO2DEXPORT_CURRENT_TO_MODEL_SPACE = 0,
    PRO2DEXPORT_CURRENT_TO_PAPER_SPACE = 1,
    PRO2DEXPORT_ALL = 2,
    PRO2DEXPORT_SELECTED = 3
} Pro2dExportSheetOption;

// Gives a set of export options with the defaults; free it with Pro2dExportdataFree. BAD_INPUTS.
ProError Pro2dExportdataAlloc(Pro2dExportdata* export_data);

// Takes the set itself. BAD_INPUTS.
ProError Pro2dExportdataFree(Pro2dExportdata export_data);

// Says which sheets are exported. BAD_INPUTS.
ProError Pro2dExportdataSheetoptionSet(Pro2dExportdata export_data, Pro2dExportSheetOption sheet_option);

// Names the sheet, counted from 1, that goes to model space: for PRO2DEXPORT_SELECTED only, as is
// the next one. BAD_INPUTS.
ProError Pro2dExportdataModelspacesheetSet(Pro2dExportdata export_data, int model_space_sheet);

// Names the sheets that go to paper space; the ProArray stays the caller's. A sheet named in
// neither call is not exported. BAD_INPUTS.
ProError Pro2dExportdataSheetsSet(Pro2dExportdata export_data, int* sheets);

// Writes a drawing to the file of that absolute path; without data the current sheet alone. BAD_INPUTS;
// INVALID_TYPE for an unknown file type; INVALID_ITEM for a model that is no drawing; CANT_WRITE; NO_LICENSE;
// UNSUPPORTED; GENERAL_ERROR.
ProError Pro2dExport(ProImportExportFile file_type, ProPath filename, ProMdl model, Pro2dExportdata data);

// Writes a model to a file of that name, extension included, in the working directory. The last four
// are NULL for STEP and IGES. BAD_INPUTS; INVALID_TYPE; CANT_WRITE; GENERAL_ERROR.
ProError ProOutputFileMdlnameWrite(ProMdl model, ProMdlFileName name, ProImportExportFile file_type,
                                   ProAppData arg1, ProAppData arg2, ProAppData arg3, ProAppData arg4);

PRO_END_C_DECLS

static_assert(PRO2DEXPORT_SELECTED == 3, "the sheet options count from 0");
