// What the stages of the chain pass to one another.
#pragma once

namespace engine {

struct StereoSample {
    float left;
    float right;
};

// Both ends of -1..1 map to +1: kept.
inline float wrappedToUnit(float x) {
    return x >= 1.0f || x <= -1.0f ? 1.0f : x;
}

}  // namespace engine
