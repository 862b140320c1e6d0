// How models and surfaces look.
#pragma once

#include <ProSurface.h>

namespace kv {

using Appearance = ProSurfaceAppearanceProps;

// Sides of a surface: along its normal, and the other one. A model has the first only.
inline constexpr int kOutside = 0;
inline constexpr int kInside = 1;

// Whether a status is the host's word for an item without a look of its own.
bool HasNoAppearance(ProError status);

// How the host draws what has no look of its own. Errors: those of ProSurfaceAppearanceDefaultPropsGet.
[[nodiscard]] ProError DefaultAppearanceGet(Appearance& look);

}  // namespace kv
