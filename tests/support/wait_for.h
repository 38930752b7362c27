// Waits for what another thread or program does.
#pragma once

#include <chrono>
#include <functional>
#include <thread>

// Returns false if the condition does not hold within a minute, which is long even for a busy
// machine.
inline bool waitFor(const std::function<bool()>& condition) {
    using namespace std::chrono;
    const auto end = steady_clock::now() + minutes(1);
    while (!condition()) {
        if (steady_clock::now() > end) return false;
        std::this_thread::sleep_for(milliseconds(5));
    }
    return true;
}
