// Object types, model handles, model items and the callbacks that visit them.
#pragma once

#include <ProToolkit.h>

PRO_BEGIN_C_DECLS

typedef enum pro_obj_types {
    PRO_TYPE_DIR = -5,
    PRO_TYPE_INVALID = -2,
    PRO_TYPE_UNUSED = PRO_VALUE_UNUSED,
    PRO_ASSEMBLY = 1,
    PRO_PART = 2,
    PRO_FEATURE = 3,
    PRO_DRAWING = 4,
    PRO_SURFACE = 5,
    PRO_EDGE = 6,
    PRO_3DSECTION = 7,
    PRO_DIMENSION = 8,
    PRO_2DSECTION = 11,
    PRO_PAT_MEMBER = 12,
    PRO_PAT_LEADER = 13,
    PRO_XSEC = 18,
    PRO_LAYOUT = 19,
    PRO_AXIS = 21,
    PRO_CSYS = 25,
    PRO_REF_DIMENSION = 28,
    PRO_GTOL = 32,
    PRO_DWGFORM = 33,
    PRO_SUB_ASSEMBLY = 34,
    PRO_MFG = 37,
    PRO_SURF_FIN = 42,
    PRO_QUILT = 57,
    PRO_DATUM_TARGET = 61,
    PRO_CURVE = 62,
    PRO_POINT = 66,
    PRO_NOTE = 68,
    PRO_IPAR_NOTE = 69,
    PRO_EDGE_START = 71,
    PRO_EDGE_END = 72,
    PRO_CRV_START = 74,
    PRO_CRV_END = 75,
    PRO_DRAW_TABLE = 84,
    PRO_VIEW = 92,
    PRO_DATUM_PLANE = 176,
    PRO_PARAMETER = 240,
    PRO_SIMP_REP = 309
} ProType;

// Models are opaque and valid only while they are in memory; a solid, a part, an assembly,
// a drawing and a manufacturing model are kinds of ProMdl and convert by cast.
typedef void* ProMdl;
typedef struct sld_part* ProSolid;
typedef ProSolid ProPart;
typedef ProSolid ProAssembly;
typedef struct mfg_model* ProMfg;
typedef struct drawing_model* ProDrawing;

// Geometry is opaque as well; only its integer id outlives a change of the model.
typedef struct geom* ProSurface;
typedef struct csys_datum* ProCsys;

// A part of a model: its type, its id within the model, and the model.
typedef struct pro_model_item {
    ProType type;
    int id;
    ProMdl owner;
} ProModelitem;
typedef struct pro_model_item ProFeature;
typedef struct pro_model_item ProAsmcomp;

// Component feature ids from the top assembly down; the first table_num entries count.
typedef int ProIdTable[PRO_MAX_ASSEM_LEVEL];
typedef struct pro_comp_path {
    ProSolid owner;
    ProIdTable comp_id_table;
    int table_num;
} ProAsmcomppath;

// An item of one occurrence: its owner is the top assembly, the path leads to the occurrence.
typedef struct pro_asm_item {
    ProModelitem item;
    ProName name;
    ProAsmcomppath path;
} ProAsmitem;

// Visit callbacks. A filter answers PRO_TK_CONTINUE to skip the item; any other answer becomes
// the `status` of the action. An action answers PRO_TK_NO_ERROR to go on; anything else ends
// the visit and becomes its result.
typedef ProError (*ProFeatureVisitAction)(ProFeature* p_feature, ProError status, ProAppData app_data);
typedef ProError (*ProFeatureFilterAction)(ProFeature* p_feature, ProAppData app_data);
typedef ProError (*ProSurfaceVisitAction)(ProSurface p_surface, ProError status, ProAppData app_data);
typedef ProError (*ProSurfaceFilterAction)(ProSurface p_surface, ProAppData app_data);
typedef ProError (*ProCsysVisitAction)(ProCsys p_csys, ProError status, ProAppData app_data);
typedef ProError (*ProCsysFilterAction)(ProCsys p_csys, ProAppData app_data);

PRO_END_C_DECLS

static_assert(sizeof(ProModelitem) == 16, "two 32-bit fields and a pointer, no padding");
// Padding would hide a wrong number of ids from the size alone.
static_assert(offsetof(ProAsmcomppath, table_num) == 108, "the count follows 25 ids");
static_assert(sizeof(ProAsmcomppath) == 112, "a pointer, 25 ids and their count, no padding");
