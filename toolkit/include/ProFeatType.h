// Feature type numbers.
#pragma once

// A component of an assembly.
#define PRO_FEAT_COMPONENT 1000
// A merge of one part into another.
#define PRO_FEAT_GEN_MERGE 1238
