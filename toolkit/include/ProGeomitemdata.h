// The data record of a geometry item.
#pragma once

#include <ProObjects.h>
#include <ProSurfacedata.h>

PRO_BEGIN_C_DECLS

typedef struct ProCurves ProCurvedata;

// Axes of length 1, and the origin, in the coordinates of the model that has the system.
typedef struct ProCsystems {
    ProVector x_vector;
    ProVector y_vector;
    ProVector z_vector;
    Pro3dPnt origin;
} ProCsysdata;

// `obj_type` says which member of `data` holds.
typedef struct geom_item_data_struct {
    ProType obj_type;
    union {
        ProCurvedata* p_curve_data;
        ProSurfacedata* p_surface_data;
        ProCsysdata* p_csys_data;
    } data;
} ProGeomitemdata;

// Gives the data record of an item; free it with ProGeomitemdataFree. BAD_INPUTS.
ProError ProGeomitemdataGet(struct pro_model_item* p_geom_item, ProGeomitemdata** p_data);

// Frees what ProSurfaceDataGet or ProGeomitemdataGet gave out. BAD_INPUTS.
ProError ProGeomitemdataFree(ProGeomitemdata** p_data);

PRO_END_C_DECLS

static_assert(sizeof(ProGeomitemdata) == 16, "a type, padding and a pointer");
