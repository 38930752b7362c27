// An oddity that several stages share.
#pragma once

#include <cmath>

namespace engine {

// Both ends of -1..1 map to +1: kept.
inline float wrappedToUnit(float x) {
    return std::fabs(x) >= 1.0f ? 1.0f : x;
}

}  // namespace engine
