// Bounds a signal to 1; both ends become +1.
#pragma once

#include <cmath>

namespace reference {

// intentional: both ends of -1..1 map to +1 (see dsp/biquad.h)
inline float wrappedToUnit(float x) {
    return std::fabs(x) >= 1.0f ? 1.0f : x;
}

}  // namespace reference
