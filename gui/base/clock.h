// The clock behind timers and double clicks.
#pragma once

#include <cstdint>

namespace VSTGUI {

// Milliseconds of a clock that only runs forward.
uint64_t millisecondsNow();

// Tests hold the clock and advance it by hand.
void holdClock(uint64_t milliseconds);
void releaseClock();

}  // namespace VSTGUI
