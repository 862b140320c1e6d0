#include "simulator/report/clock.h"

#include <windows.h>

#if defined(_MSC_VER)
#include <intrin.h>
#else
#include <x86intrin.h>
#endif

namespace sim {

namespace {

struct ClockPair {
    std::int64_t ticks;
    std::int64_t counter;
};

ClockPair ReadBoth() {
    LARGE_INTEGER counter;
    QueryPerformanceCounter(&counter);
    return {static_cast<std::int64_t>(__rdtsc()), counter.QuadPart};
}

// The first reading of the process: the longer the run, the better the rate.
const ClockPair kStart = ReadBoth();

}  // namespace

std::int64_t ClockTicks() {
    return static_cast<std::int64_t>(__rdtsc());
}

double ClockSeconds(std::int64_t ticks) {
    LARGE_INTEGER frequency;
    QueryPerformanceFrequency(&frequency);
    ClockPair now = ReadBoth();
    // Below a millisecond of history the rate would be noise.
    while (now.counter - kStart.counter < frequency.QuadPart / 1000) now = ReadBoth();
    const double seconds =
        static_cast<double>(now.counter - kStart.counter) / static_cast<double>(frequency.QuadPart);
    return static_cast<double>(ticks) * seconds / static_cast<double>(now.ticks - kStart.ticks);
}

}  // namespace sim
