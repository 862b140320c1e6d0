// Layer items: what can be put on a layer, and what can be hidden.
#pragma once

#include <ProObjects.h>

PRO_BEGIN_C_DECLS

// Values are item types.
typedef enum pro_layer_type {
    PRO_LAYER_PART = PRO_PART,
    PRO_LAYER_FEAT = PRO_FEATURE,
    PRO_LAYER_SUB_ASSEMBLY = PRO_SUB_ASSEMBLY,
    PRO_LAYER_QUILT = PRO_QUILT,
    PRO_LAYER_CURVE = PRO_CURVE,
    PRO_LAYER_POINT = PRO_POINT,
    PRO_LAYER_DATUM_PLANE = PRO_DATUM_PLANE
} ProLayerType;

typedef enum pro_layitem_origin { PRO_LAYITEM_FROM_MODEL = 0, PRO_LAYITEM_FROM_PATH = 1 } ProLayitemOrigin;

// An item by its id in a model, or in the model at the end of a path.
typedef struct pro_layer_item {
    ProLayerType type;
    int id;
    struct {
        ProLayitemOrigin origin;
        union {
            ProMdl layitem_model;
            ProAsmcomppath layitem_path;
        } owner;
    } owner;
} ProLayerItem;

// Fills an item; nothing to free. BAD_INPUTS; a further status for an item that does not exist.
ProError ProLayerItemInit(ProLayerType type, int id, ProMdl owner, ProLayerItem* p_item);

// Hides, or shows again. NO_CHANGE when it is so already; BAD_INPUTS; NOT_VALID for an item that cannot be
// hidden; GENERAL_ERROR.
ProError ProModelitemHide(ProLayerItem* item);
ProError ProModelitemUnhide(ProLayerItem* item);

// BAD_INPUTS; NOT_VALID as above.
ProError ProModelitemIsHidden(ProLayerItem* item, ProBoolean* is_hidden);

PRO_END_C_DECLS

static_assert(sizeof(ProLayerItem) == 8 + 8 + 112,
              "two 32-bit fields, an origin and its padding, and a path");
