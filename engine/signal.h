// An oddity that several stages share.
#pragma once

namespace engine {

// Both ends of -1..1 map to +1: kept.
inline float wrappedToUnit(float x) {
    return x >= 1.0f || x <= -1.0f ? 1.0f : x;
}

}  // namespace engine
