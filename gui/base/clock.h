// The clock behind timers and double clicks.
#pragma once

#include <cstdint>

namespace VSTGUI {

// Milliseconds of a monotonic clock.
uint64_t millisecondsNow();

// For tests: stop the clock at a time, and let it run again.
void holdClock(uint64_t milliseconds);
void releaseClock();

}  // namespace VSTGUI
