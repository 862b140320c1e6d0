// Surfaces.
#pragma once

#include <ProGeomitemdata.h>
#include <ProObjects.h>

PRO_BEGIN_C_DECLS

// Gives the surface's data record; free it with ProGeomitemdataFree. BAD_INPUTS.
ProError ProSurfaceDataGet(ProSurface p_surface, ProGeomitemdata** p_data_ptr);

// Gives the surface's id in its model. BAD_INPUTS.
ProError ProSurfaceIdGet(ProSurface surface, int* p_id);

// How a model or surface looks; numbers from 0 to 1, transparency 0 is opaque.
typedef struct pro_surf_appearance_props {
    double ambient;
    double diffuse;
    double highlite;
    double shininess;
    double transparency;
    ProVector color_rgb;
    ProVector highlight_color;
    double reflection;
    ProPath name;
    ProPath label;
    ProPath description;
    ProPath keywords;
} ProSurfaceAppearanceProps;

typedef enum pro_default_appearance_type { PRO_DEF_APPEARANCE_SOLID = 0 } ProDefaultAppearanceType;

// The look of a part, component, quilt or surface, on the side along its normal (0) or on the other (1).
// NOT_EXIST for an item without one of its own; BAD_INPUTS.
ProError ProSurfaceSideAppearancepropsGet(ProModelitem* item, int surface_side,
                                          ProSurfaceAppearanceProps* appearance_properties);

// NULL properties take the item's own look away. The window is not drawn anew. BAD_INPUTS; CANT_MODIFY.
ProError ProSurfaceSideAppearancepropsSet(ProModelitem* item, int surface_side,
                                          ProSurfaceAppearanceProps* appearance_properties);

// How what has no look of its own is drawn. BAD_INPUTS.
ProError ProSurfaceAppearanceDefaultPropsGet(ProDefaultAppearanceType appearance_type,
                                             ProSurfaceAppearanceProps* props);

PRO_END_C_DECLS

static_assert(sizeof(ProSurfaceAppearanceProps) == 96 + 4 * sizeof(ProPath), "twelve numbers and four texts");
