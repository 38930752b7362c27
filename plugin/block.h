// Notes and sound of a block, as all formats hand them over.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>

namespace plugin {

using Message = std::array<std::uint8_t, 3>;

// Of a block that is not rendered: changes are made at once, notes wait for the next one.
constexpr int kNoFrames = 0;

// A frame outside the block is limited to it: nothing gets lost.
constexpr int frameIn(std::int64_t offset, int frames) {
    return static_cast<int>(std::clamp<std::int64_t>(offset, 0, frames));
}

// 0..1 as MIDI counts it.
inline std::uint8_t dataByte(double unit) {
    return std::isnan(unit) ? 0
                            : static_cast<std::uint8_t>(std::clamp(unit, 0.0, 1.0) * 127.0 + 0.5);
}

constexpr bool isKey(int key) {
    return key >= 0 && key <= 127;
}

// For keys only.
inline Message noteOn(int key, double velocity) {
    // Soft is not off.
    return {0x90, static_cast<std::uint8_t>(key), std::max<std::uint8_t>(dataByte(velocity), 1)};
}
inline Message noteOff(int key) {
    return {0x80, static_cast<std::uint8_t>(key), 0};
}

inline bool isSilent(const float* samples, int count) {
    return std::all_of(samples, samples + count, [](float x) { return x == 0.0f; });
}

// Frames that the longest release and a hall after it may take.
inline std::uint32_t tailFrames(double sampleRate) {
    constexpr double kTailSeconds = 30.0;
    const double rate = std::isfinite(sampleRate) ? std::clamp(sampleRate, 0.0, 1e8) : 0.0;
    return static_cast<std::uint32_t>(std::min(kTailSeconds * rate, 2147483646.0));
}

}  // namespace plugin
