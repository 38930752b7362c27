// Shares work between this thread and another.
#pragma once

#include <array>
#include <exception>
#include <functional>
#include <system_error>
#include <thread>

namespace platform {

// Calls `work` in both threads at once and returns when both are done. Where no other thread is to
// be had, this one calls it alone, so each call takes pieces of work as long as there are any.
// Throws what a call throws.
inline void inTwoThreads(const std::function<void()>& work) {
    std::array<std::exception_ptr, 2> faults;
    const auto run = [&](int thread) {
        try {
            work();
        } catch (...) {
            faults[thread] = std::current_exception();
        }
    };
    std::thread other;
    try {
        other = std::thread(run, 1);
    } catch (const std::system_error&) {
        // This one does it all.
    }
    run(0);
    if (other.joinable()) other.join();
    for (const std::exception_ptr& fault : faults) {
        if (fault) std::rethrow_exception(fault);
    }
}

}  // namespace platform
