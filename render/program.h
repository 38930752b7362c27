// The program quarzel-render as a function.
#pragma once

#include <atomic>
#include <ostream>

namespace render {

struct Surroundings {
    std::ostream& out;
    std::ostream& err;
    bool errIsTerminal;
    const std::atomic<bool>& interrupted;  // set from outside to stop early
};

// Runs one command line and returns the exit code: 0 done, 1 bad input, 2 wrong usage.
int run(int argc, const char* const* argv, const Surroundings& surroundings);

}  // namespace render
