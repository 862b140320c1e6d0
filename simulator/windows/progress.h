// The user before a progress window of the plug-in, and the clock that brings it up.

#pragma once

#include "simulator/ui/user.h"

namespace sim {

// What the plug-in's clock shows, in milliseconds. In tests it stands still unless the user waits for
// progress; every look at it then takes a while, and the user looks at the screen.
unsigned long long AskClock(ProgressPlay& play);

// Whether the plug-in has a progress window on the screen.
bool IsProgressShown();

}  // namespace sim
