// The two ways in which a run can fail, each with one sentence for the user.
#pragma once

#include <stdexcept>

namespace host {

// Bad input: a file, a library or a value that cannot be used.
struct Error : std::runtime_error {
    using std::runtime_error::runtime_error;
};

// A command line that means nothing.
struct UsageError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

}  // namespace host
