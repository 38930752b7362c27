// Bounds a signal the way the spring stage does.
#pragma once

#include <cmath>

namespace engine {

// x inside -1..1, else +1. The negative end also maps to +1; intentional (see engine.h).
inline float wrappedToUnit(float x) {
    return std::fabs(x) >= 1.0f ? 1.0f : x;
}

}  // namespace engine
