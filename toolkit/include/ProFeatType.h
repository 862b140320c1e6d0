// Feature type numbers.
#pragma once

// A component of an assembly.
#define PRO_FEAT_COMPONENT 1000
