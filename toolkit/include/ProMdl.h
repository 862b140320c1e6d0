// Models: identity, retrieval, saving, display.
#pragma once

#include <ProObjects.h>
#include <ProSurface.h>

PRO_BEGIN_C_DECLS

typedef enum ProMdlTypes {
    PRO_MDL_UNUSED = PRO_TYPE_UNUSED,
    PRO_MDL_ASSEMBLY = PRO_ASSEMBLY,
    PRO_MDL_PART = PRO_PART,
    PRO_MDL_DRAWING = PRO_DRAWING,
    PRO_MDL_3DSECTION = PRO_3DSECTION,
    PRO_MDL_2DSECTION = PRO_2DSECTION,
    PRO_MDL_LAYOUT = PRO_LAYOUT,
    PRO_MDL_DWGFORM = PRO_DWGFORM,
    PRO_MDL_MFG = PRO_MFG
} ProMdlType;

// Kinds of model files; those of the host's own models carry the numbers of ProMdlType.
typedef enum ProMdlfileTypes {
    PRO_MDLFILE_UNUSED = PRO_TYPE_UNUSED,
    PRO_MDLFILE_ASSEMBLY = PRO_ASSEMBLY,
    PRO_MDLFILE_PART = PRO_PART,
    PRO_MDLFILE_DRAWING = PRO_DRAWING,
    PRO_MDLFILE_2DSECTION = PRO_2DSECTION,
    PRO_MDLFILE_LAYOUT = PRO_LAYOUT,
    PRO_MDLFILE_DWGFORM = PRO_DWGFORM,
    PRO_MDLFILE_MFG = PRO_MFG
} ProMdlfileType;

typedef enum ProMdlsubtypes {
    PROMDLSTYPE_NONE = 0,
    PROMDLSTYPE_BULK = 1,
    PROMDLSTYPE_PART_SOLID = 2,
    PROMDLSTYPE_PART_COMPOSITE = 3,
    PROMDLSTYPE_PART_SHEETMETAL = 4,
    PROMDLSTYPE_PART_CONCEPT_MODEL = 5,
    PROMDLSTYPE_ASM_DESIGN = 6,
    PROMDLSTYPE_ASM_INTERCHANGE = 7
} ProMdlsubtype;

// Names a model: its name and, as a text, its type, such as PRT.
typedef struct promodel {
    wchar_t name[80];
    wchar_t type[10];
} ProModel;

// Gives the model of the current window. BAD_CONTEXT when there is none.
ProError ProMdlCurrentGet(ProMdl* p_handle);

// Gives the type, PRO_MDL_UNUSED on failure. BAD_INPUTS.
ProError ProMdlTypeGet(ProMdl model, ProMdlType* p_type);

// Gives the subtype, PROMDLSTYPE_NONE on failure. BAD_INPUTS; a further status for models
// that have no subtype.
ProError ProMdlSubtypeGet(ProMdl model, ProMdlsubtype* subtype);

// Gives the name without extension in a buffer of PRO_NAME_SIZE. Superseded by
// ProMdlMdlnameGet, whose names may be longer. BAD_INPUTS.
ProError ProMdlNameGet(ProMdl handle, ProName name);

// Gives the name without extension in a buffer of PRO_MDLNAME_SIZE. BAD_INPUTS.
ProError ProMdlMdlnameGet(ProMdl handle, ProMdlName name);

// Gives the extension of the file the model came from, without dot. BAD_INPUTS; a further
// status when there is none.
ProError ProMdlExtensionGet(ProMdl handle, ProMdlExtension ext);

// Gives the directory the model will be saved to, which need not be where it came from.
// BAD_INPUTS; a further status when it is not known.
ProError ProMdlDirectoryPathGet(ProMdl handle, ProPath dir_path);

// Gives the item that stands for the model itself: its type, and the model as owner.
// BAD_INPUTS; INVALID_PTR.
ProError ProMdlToModelitem(ProMdl mdl, ProModelitem* p_model_item);

// Gives a model of this name and type that is in memory already. BAD_INPUTS; E_NOT_FOUND.
ProError ProMdlnameInit(ProMdlName name, ProMdlfileType type, ProMdl* p_mdl_handle);

// Loads a model into memory without displaying it, or gives the one already there; looks in
// the working directory and on the search path. BAD_INPUTS; E_NOT_FOUND; NO_PERMISSION.
ProError ProMdlnameRetrieve(ProFamilyMdlName name, ProMdlfileType type, ProMdl* p_handle);

// Loads the model at a full path; the type is PRO_MDLFILE_UNUSED when the path carries an
// extension. Fails when the file is missing, unreadable or no model.
ProError ProMdlFiletypeLoad(ProPath full_path, ProMdlfileType type, ProBoolean ask_user_about_reps,
                            ProMdl* p_handle);

// Copies the model under a new name of at most 31 characters, on disk and, when `p_new_handle` is not
// NULL, in memory. Nothing says what becomes of a file that has the name already: look first.
// BAD_INPUTS; NO_PERMISSION; UNSUPPORTED.
ProError ProMdlnameCopy(ProMdl handle, ProMdlName new_name, ProMdl* p_new_handle);

// Writes the model and what it depends on to `backup_dir`. From then on the model's saves go
// to that directory too. BAD_INPUTS; CANT_WRITE; INVALID_DIR; GENERAL_ERROR.
ProError ProMdlnameBackup(ProMdl handle, ProPath backup_dir);

// Shows the model in its own window, or in the current one if it has none; NULL means the
// current window's model. Fails when there is no such model, for one that is not in memory and
// for a type that cannot be displayed.
ProError ProMdlDisplay(ProMdl model);

// The look of one occurrence: the owner of `item` is the top assembly, its path leads to the occurrence. Side
// and errors as for surfaces; NULL properties take the occurrence's own look away.
ProError ProMdlVisibleSideAppearancepropsGet(ProAsmitem* item, int surf_side,
                                             ProSurfaceAppearanceProps* props);
ProError ProMdlVisibleSideAppearancepropsSet(ProAsmitem* item, int surf_side,
                                             ProSurfaceAppearanceProps* props);

// Redraws the model tree of `mdl`. BAD_INPUTS; a further status when no tree is shown.
ProError ProTreetoolRefresh(ProMdl mdl);

// Stores the model and its changed members. BAD_INPUTS; GENERAL_ERROR; NO_PERMISSION; a further
// status when some of them could not be saved.
ProError ProMdlSave(ProMdl handle);

// Tells whether the model may be changed. Without `show_ui` nothing is asked, and a model whose
// conflicts can be overridden counts as modifiable. BAD_INPUTS; GENERAL_ERROR.
ProError ProMdlIsModifiable(ProMdl p_model, ProBoolean show_ui, ProBoolean* can_modify);

// Gives the model in memory another name of at most PRO_NAME_SIZE - 1 characters; on disk it gets
// that name when it is saved next. BAD_INPUTS; CANT_MODIFY; NO_PERMISSION.
ProError ProMdlnameRename(ProMdl handle, ProMdlName new_name);

// Removes the model from memory once the command has returned to the host: do not use the
// handle afterwards. BAD_INPUTS; E_DEADLOCK.
ProError ProMdlErase(ProMdl handle);

// Whether a model in memory was changed since it was last saved. BAD_INPUTS.
ProError ProMdlModificationVerify(ProMdl handle, ProBoolean* p_modified);

// Removes at once every model from memory that no window needs. GENERAL_ERROR; E_DEADLOCK when
// nothing may be erased now.
ProError ProMdlEraseNotDisplayed(void);

PRO_END_C_DECLS

static_assert(PROMDLSTYPE_PART_SHEETMETAL == 4, "the one subtype whose number is relied upon");
static_assert(sizeof(ProModel) == 180, "two texts, no padding");
