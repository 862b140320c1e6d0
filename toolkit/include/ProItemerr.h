// What was wrong with the items of a call.
#pragma once

#include <ProToolkit.h>

PRO_BEGIN_C_DECLS

typedef enum pro_erritem_type { PRO_ERRITEM_NONE = -1, PRO_ERRITEM_FEATELEM = 1 } ProErritemType;

typedef struct pro_item_error {
    int err_item_id;
    ProErritemType err_item_type;
    ProError error;
} ProItemerror;

// The list is the host's.
typedef struct pro_error_list {
    ProItemerror* error_list;
    int error_number;
} ProErrorlist;

PRO_END_C_DECLS
