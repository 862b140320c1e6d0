// Where a component stands in the top assembly.
#pragma once

#include <ProAsmcomppath.h>
#include <ProMdl.h>

namespace kv {

// The path from `top` to the first placement of `model` that a walk meets; the empty path for `top` itself.
//
// Errors  those of ModelWalk; PRO_TK_E_NOT_FOUND when the model is not below `top`
[[nodiscard]] ProError FirstPathGet(ProMdl top, ProMdl model, ProAsmcomppath& path);

}  // namespace kv
