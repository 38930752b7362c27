// The two ways a run can fail, each with one sentence for the user, and the exit codes for them.
#pragma once

#include <functional>
#include <ostream>
#include <stdexcept>

#include "platform/input_error.h"

namespace host {

// Bad input: a file, a library or a value that cannot be used.
using Error = platform::InputError;

// A command line that makes no sense.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// Runs the action and returns the exit code: 0 done, 1 bad input, 2 wrong usage. Errors are printed
// to err after the program's name.
int exitCodeOf(const char* program, std::ostream& err, const std::function<void()>& action);

}  // namespace host
