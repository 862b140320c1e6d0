// The data record of a geometry item.
#pragma once

#include <ProObjects.h>
#include <ProSurfacedata.h>

PRO_BEGIN_C_DECLS

typedef struct ProCurves ProCurvedata;
typedef struct ProCsystems ProCsysdata;

// `obj_type` says which member of `data` holds.
typedef struct geom_item_data_struct {
    ProType obj_type;
    union {
        ProCurvedata* p_curve_data;
        ProSurfacedata* p_surface_data;
        ProCsysdata* p_csys_data;
    } data;
} ProGeomitemdata;

// Frees what ProSurfaceDataGet gave out. BAD_INPUTS.
ProError ProGeomitemdataFree(ProGeomitemdata** p_data);

PRO_END_C_DECLS

static_assert(sizeof(ProGeomitemdata) == 16, "a type, padding and a pointer");
