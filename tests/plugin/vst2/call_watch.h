// Records calls that an audio thread must not make: heap, locks, what belongs to the whole process,
// and every system call. Linux only.
#pragma once

#include <string>

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

// "malloc 2, system call 257 1", or empty. Mutex locks are counted separately. Of the system calls
// within one Watch, only the first is recorded.
std::string calls();

struct Locks {
    int taken = 0;
    int awaited = 0;  // held by another thread
    int mutexes = 0;  // distinct, counted up to 64
};
Locks locks();

// Returns false if the kernel cannot report system calls.
bool seesSystemCalls();

}  // namespace watch
