// What the literal stages pass to one another.
#pragma once

#include "engine/wrapped_to_unit.h"

namespace reference {

struct StereoSample {
    float left;
    float right;
};

}  // namespace reference
