// Input that cannot be used, with one sentence for the user.
#pragma once

#include <stdexcept>

namespace platform {

struct InputError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

}  // namespace platform
