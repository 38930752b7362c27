// Constants and tests that keep denormal numbers out of feedback paths.
#pragma once

#include <cstdint>
#include <cstring>

namespace dsp {

// A one-pole subtracts this from its input and adds it to its output. Its state then settles on a
// normal number instead of decaying into denormals.
constexpr float kSmallestNormal = 1.1754944e-38f;

// Fills an empty delay line: inaudible, yet a normal number (bits 0x10FD87B6).
constexpr float kDelayFill = 1e-28f;

// Replaces a denormal by zero.
inline float flushed(float value) {
    std::uint32_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return (bits & 0x7F800000u) == 0 ? 0.0f : value;
}

}  // namespace dsp
