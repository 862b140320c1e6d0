// Family tables and their columns.
#pragma once

#include <ProObjects.h>
#include <ProParameter.h>

PRO_BEGIN_C_DECLS

typedef struct pro_model_item ProFamtable;

// What a column drives. Only the first is made here.
typedef enum pro_famtab_type {
    PRO_FAM_TYPE_UNUSED = PRO_VALUE_UNUSED,
    PRO_FAM_USER_PARAM = 1,
    PRO_FAM_DIMENSION = 2,
    PRO_FAM_FEATURE = 4,
    PRO_FAM_ASMCOMP = 5
} ProFamtabType;

// One column: its type, its name and the model that it belongs to. Layout unconfirmed: leave the members
// alone.
typedef struct profamtabitem {
    ProFamtabType type;
    wchar_t string[PRO_FAMTAB_FIELDNAME_SIZE];
    ProMdl owner;
} ProFamtableItem;

// Fills the handle of a model's family table, which need not exist yet. BAD_INPUTS; GENERAL_ERROR for a
// model that cannot have one.
ProError ProFamtableInit(ProMdl model, ProFamtable* p_famtab);

// Fills the column that stands for a parameter of the generic. BAD_INPUTS; GENERAL_ERROR.
ProError ProParameterToFamtableItem(ProParameter* p_param, ProFamtableItem* r_fam_item);

// Adds a column; every instance starts with the generic's value. E_FOUND when the table has it already;
// BAD_INPUTS; GENERAL_ERROR.
ProError ProFamtableItemAdd(ProFamtable* p_famtab, ProFamtableItem* p_item);

PRO_END_C_DECLS
