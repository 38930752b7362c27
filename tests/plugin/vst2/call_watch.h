// Sees the calls of a thread that have no place on an audio thread: heap, locks, waits, files,
// console, loader, environment, exceptions, and whatever else enters the system. Linux only.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace watch {

// The calls of this thread are noted while one of these lives.
class Watch {
  public:
    Watch();
    ~Watch();
    Watch(const Watch&) = delete;
    Watch& operator=(const Watch&) = delete;
};

// What follows is of all watched threads since the last reset.
void reset();

// "open 2, system call 257 1", empty without any. Plain locks of a mutex are counted apart; of the
// system calls within one Watch the first is noted.
std::string calls();

struct Locks {
    long taken = 0;
    long awaited = 0;  // found in another thread's hands
    int mutexes = 0;   // different ones, counted up to 64
    double averageNanoseconds = 0.0;
    double longestNanoseconds = 0.0;  // with what the scheduler took
};
Locks locks();

// The functions that are noted by name.
std::vector<std::string> names();

// False where the system cannot tell of system calls.
bool seesSystemCalls();

}  // namespace watch
