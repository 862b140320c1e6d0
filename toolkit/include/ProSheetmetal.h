// Sheet-metal parts.
#pragma once

#include <ProObjects.h>

PRO_BEGIN_C_DECLS

// Gives a part a bend table and regenerates it. `bend_name` has no extension; its folder is that of the
// option pro_sheet_met_dir. With `from_file` the file goes before a table in memory. BAD_CONTEXT for another
// kind of part; further statuses for a read-only one and for a table that cannot be had.
ProError ProSmtPartBendtableApply(ProPart smt_part, ProName bend_name, ProBoolean from_file);

PRO_END_C_DECLS
