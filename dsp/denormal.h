// Constants and tests that keep denormal numbers out of feedback paths.
#pragma once

#include <cstdint>
#include <cstring>

namespace dsp {

// Subtracted before and added after a one-pole, so that its state never decays into denormals.
constexpr float kSmallestNormal = 1.1754944e-38f;

// Content of an empty delay line: inaudible, yet a normal number (bits 0x10FD87B6).
constexpr float kDelayFill = 1e-28f;

// Zero for a value whose exponent bits are all zero (zero or denormal), else the value itself.
inline float flushed(float value) {
    std::uint32_t bits;
    std::memcpy(&bits, &value, sizeof bits);
    return (bits & 0x7F800000u) == 0 ? 0.0f : value;
}

}  // namespace dsp
