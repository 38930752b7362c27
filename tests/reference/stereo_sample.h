// What the literal stages pass to one another.
#pragma once

#include "engine/signal.h"

namespace reference {

struct StereoSample {
    float left;
    float right;
};

}  // namespace reference
