// How setters treat values that are not finite: the field keeps its value.
#pragma once

#include <algorithm>
#include <cmath>

namespace dsp {

// Stores `value` limited to [low, high]; a non-finite value is ignored.
inline void assignLimited(float& field, float value, float low, float high) {
    if (std::isfinite(value)) field = std::clamp(value, low, high);
}

// Stores `value` unless it is not finite.
inline void assignFinite(float& field, float value) {
    if (std::isfinite(value)) field = value;
}

// Whether the rate can be divided by: finite and above zero.
inline bool isUsableRate(double sampleRate) {
    return std::isfinite(sampleRate) && sampleRate > 0.0;
}

}  // namespace dsp
