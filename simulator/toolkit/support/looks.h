// Looks of models and surfaces as the host's functions take and give them.

#pragma once

#include <optional>

#include <ProSurface.h>

#include "simulator/session/session.h"

namespace sim {

// The texts of the record, names of the host's appearances, stay empty.
void FillAppearance(const Look& look, ProSurfaceAppearanceProps& properties);

// Puts a look of an item of `owner` in place; null takes it away. CANT_MODIFY for a read-only owner; a number
// that is no share is a violation and BAD_INPUTS.
ProError SetLook(Session& host, SimModel& owner, std::optional<Look>& place,
                 const ProSurfaceAppearanceProps* properties);

}  // namespace sim
