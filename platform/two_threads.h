// Shares work between this thread and another.
#pragma once

#include <functional>
#include <system_error>
#include <thread>

namespace platform {

// Calls `work` in both threads at once and returns when both are done. Where no other thread is to
// be had, this one calls it alone, so each call takes pieces of work as long as there are any.
inline void inTwoThreads(const std::function<void()>& work) {
    std::thread helper;
    try {
        helper = std::thread(work);
    } catch (const std::system_error&) {
        // This one does it all.
    }
    work();
    if (helper.joinable()) helper.join();
}

}  // namespace platform
