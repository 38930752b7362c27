// The program quarzel as a function.
#pragma once

#include <atomic>
#include <ostream>

namespace app {

struct Surroundings {
    std::ostream& out;
    std::ostream& err;                     // not std::cerr, which is silenced
    const std::atomic<bool>& interrupted;  // set from outside to end the run
};

// Runs one command line and returns the exit code: 0 done, 1 bad input, 2 wrong usage.
int run(int argc, const char* const* argv, const Surroundings& surroundings);

}  // namespace app
