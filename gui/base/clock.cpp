// The clock behind timers and double clicks.
#include "gui/base/clock.h"

#include <chrono>
#include <optional>

namespace VSTGUI {
namespace {

std::optional<uint64_t> heldAt;

}  // namespace

uint64_t millisecondsNow() {
    if (heldAt) return *heldAt;
    using namespace std::chrono;
    const auto sinceStart = steady_clock::now().time_since_epoch();
    return static_cast<uint64_t>(duration_cast<milliseconds>(sinceStart).count());
}

void holdClock(uint64_t milliseconds) {
    heldAt = milliseconds;
}

void releaseClock() {
    heldAt.reset();
}

}  // namespace VSTGUI
