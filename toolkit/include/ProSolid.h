// Parts and assemblies: visiting their contents, regeneration.
#pragma once

#include <ProObjects.h>

PRO_BEGIN_C_DECLS

// Regeneration flags, to be combined as bits.
#define PRO_REGEN_NO_FLAGS 0

// Creates an empty part or assembly in memory, neither displayed nor current. BAD_INPUTS; E_FOUND;
// LINE_TOO_LONG for a name of more than PRO_NAME_SIZE - 1 characters; GENERAL_ERROR.
ProError ProSolidMdlnameCreate(ProMdlName name, ProType type, ProSolid* p_handle);

// Visits the features in regeneration order, internal ones included; components are features.
// A NULL filter takes all. E_NOT_FOUND when no feature was visited, else the action's answer.
ProError ProSolidFeatVisit(ProSolid p_handle, ProFeatureVisitAction visit_action,
                           ProFeatureFilterAction filter_action, ProAppData app_data);

// Visits the surfaces of a part's solid features; an assembly has none. E_NOT_FOUND when no
// surface was visited, MULTIBODY_UNSUPPORTED for a part of several bodies.
ProError ProSolidSurfaceVisit(ProSolid p_handle, ProSurfaceVisitAction visit_action,
                              ProSurfaceFilterAction filter_action, ProAppData app_data);

// Visits the coordinate systems of a part or an assembly. E_NOT_FOUND when none was visited.
ProError ProSolidCsysVisit(ProSolid p_handle, ProCsysVisitAction visit_action,
                           ProCsysFilterAction filter_action, ProAppData app_data);

// What the box of a solid leaves out.
typedef enum pro_solid_outline_excl_types {
    PRO_OUTL_EXC_NOT_USED = 1,
    PRO_OUTL_EXC_DATUM_PLANE = 2,
    PRO_OUTL_EXC_DATUM_POINT = 3,
    PRO_OUTL_EXC_DATUM_CSYS = 4,
    PRO_OUTL_EXC_DATUM_AXES = 5,
    PRO_OUTL_EXC_FACETS = 6,
    PRO_OUTL_EXC_ALL_CRVS = 7
} ProSolidOutlExclTypes;

// Gives two corners of the box around a part or an assembly, in its length unit, along the axes of the system
// that the matrix leads into; NULL for its own. What is not excluded counts. BAD_INPUTS; GENERAL_ERROR.
ProError ProSolidOutlineCompute(ProSolid p_solid, ProMatrix matrix, ProSolidOutlExclTypes excludes[],
                                int num_excludes, Pro3dPnt r_outline_points[2]);

// Shows a solid in the current window, as its active representation has it. BAD_INPUTS; INVALID_TYPE.
ProError ProSolidDisplay(ProSolid p_solid);

// Regenerates the model. UNATTACHED_FEATS; REGEN_AGAIN; GENERAL_ERROR; BAD_INPUTS.
ProError ProSolidRegenerate(ProSolid p_handle, int flags);

PRO_END_C_DECLS
