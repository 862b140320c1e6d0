// The data record of a surface.
#pragma once

#include <ProObjects.h>

PRO_BEGIN_C_DECLS

typedef enum ProSurfaceOrients {
    PRO_SURF_ORIENT_IN = -1,
    PRO_SURF_ORIENT_NONE = 0,
    PRO_SURF_ORIENT_OUT = 1
} ProSurfaceOrient;

// Kinds of surfaces; unconfirmed numbers.
typedef enum ProSrftypes { PRO_SRF_PLANE = 34, PRO_SRF_CYL = 36 } ProSrftype;

typedef struct ProPlanedataRecord {
    ProVector e1;
    ProVector e2;
    ProVector e3;
    Pro3dPnt origin;
} ProPlanedata;

typedef struct ProCylinderdataRecord {
    ProVector e1;
    ProVector e2;
    ProVector e3;
    Pro3dPnt origin;
    double radius;
} ProCylinderdata;

typedef union ProSurfaceshapes {
    ProPlanedata plane;
    ProCylinderdata cylinder;
} ProSurfaceshapedata;

typedef struct ProContours ProContourdata;

// The host's own layout is not known: a build for it takes the vendor's header. Members are
// used by name only, never by offset or size.
typedef struct surface_data_record {
    int type;  // a ProSrftype
    ProUvParam uv_min;
    ProUvParam uv_max;
    // The box around the surface, in the model's coordinates and length unit.
    Pro3dPnt xyz_min;
    Pro3dPnt xyz_max;
    ProSurfaceOrient orient;
    ProContourdata* contour_arr;
    ProSurfaceshapedata srf_shape;
    int id;
} ProSurfacedata;

PRO_END_C_DECLS
