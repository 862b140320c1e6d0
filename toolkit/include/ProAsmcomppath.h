// Component paths: where a component stands in the top assembly.
#pragma once

#include <ProObjects.h>

PRO_BEGIN_C_DECLS

// Fills a path from component feature ids, top assembly first; a size of 0 means the top
// assembly itself. Nothing to free. BAD_INPUTS.
ProError ProAsmcomppathInit(ProSolid p_solid_handle, ProIdTable memb_id_tab, int table_size,
                            ProAsmcomppath* p_handle);

// Gives the model at the end of the path. BAD_INPUTS; E_NOT_FOUND for a path that leads nowhere.
ProError ProAsmcomppathMdlGet(ProAsmcomppath* p_path, ProMdl* p_model);

// Gives the transformation along the path, from the member to the assembly when `bottom_up` is
// true. BAD_INPUTS.
ProError ProAsmcomppathTrfGet(ProAsmcomppath* p_path, ProBoolean bottom_up, ProMatrix transformation);

// Turns and shifts a point; both points may be the same array. BAD_INPUTS.
ProError ProPntTrfEval(ProVector in_point, ProMatrix trf, ProVector out_point);

PRO_END_C_DECLS
