// Geometry items.
#pragma once

#include <ProObjects.h>

PRO_BEGIN_C_DECLS

// A surface, an edge, a coordinate system and the like as a model item.
typedef struct pro_model_item ProGeomitem;

// Gives the item of a coordinate system of `solid`. BAD_INPUTS.
ProError ProCsysToGeomitem(ProSolid solid, ProCsys csys_handle, ProGeomitem* r_geom_item);

PRO_END_C_DECLS
