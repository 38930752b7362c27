// Records calls that an audio thread must not make: heap, locks, waits, files, console, loader,
// environment, exceptions, and any other system call. Linux only.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace watch {

// Records the calls of this thread during its lifetime.
class Watch {
  public:
    Watch();
    ~Watch();
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;
};

// The functions below report on all watched threads since the last reset.
void reset();

// "open 2, system call 257 1", or empty. Uncontended mutex locks are counted separately. Of the
// system calls within one Watch, only the first is recorded.
std::string calls();

struct Locks {
    long taken = 0;
    long awaited = 0;  // held by another thread
    int mutexes = 0;   // distinct, counted up to 64
    double averageNanoseconds = 0.0;
    double longestNanoseconds = 0.0;  // including preemption
};
Locks locks();

// The functions that are recorded by name.
std::vector<std::string> names();

// Returns false if the kernel cannot report system calls.
bool seesSystemCalls();

}  // namespace watch
