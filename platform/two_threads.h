// Shares work between this thread and another.
#pragma once

#include <functional>
#include <future>
#include <system_error>

namespace platform {

// Calls `work` in both threads at once and returns when both are done. Where no other thread is to
// be had, this one calls it alone, so each call takes pieces of work as long as there are any.
// Throws what a call throws.
inline void inTwoThreads(const std::function<void()>& work) {
    std::future<void> other;  // its destructor waits
    try {
        other = std::async(std::launch::async, work);
    } catch (const std::system_error&) {
        // This one does it all.
    }
    work();
    if (other.valid()) other.get();
}

}  // namespace platform
