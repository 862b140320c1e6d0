// Surfaces.
#pragma once

#include <ProGeomitemdata.h>
#include <ProObjects.h>

PRO_BEGIN_C_DECLS

// Gives the surface's data record; free it with ProGeomitemdataFree. BAD_INPUTS.
ProError ProSurfaceDataGet(ProSurface p_surface, ProGeomitemdata** p_data_ptr);

PRO_END_C_DECLS
