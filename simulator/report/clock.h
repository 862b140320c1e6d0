// A cheap clock for profiles: processor ticks, turned into seconds against the system's counter.

#pragma once

#include <cstdint>

namespace sim {

// Processor ticks since some fixed moment. Costs a few nanoseconds, so that timing every host call stays
// affordable.
std::int64_t ClockTicks();

// Seconds that `ticks` ticks last; the rate is measured against the system's performance counter.
double ClockSeconds(std::int64_t ticks);

}  // namespace sim
