// Shared by the block tests: hostile values and a gain measurement.
#pragma once

#include <cmath>
#include <limits>

namespace dsp {

constexpr float kHostile[] = {std::numeric_limits<float>::quiet_NaN(),
                              std::numeric_limits<float>::infinity(),
                              -std::numeric_limits<float>::infinity()};

// Gain of `tick` for a sine of `hz`, measured after half a second.
template <typename Tick>
double gainAt(double hz, double sampleRate, Tick&& tick) {
    const int frames = static_cast<int>(sampleRate);
    double in = 0.0;
    double out = 0.0;
    for (int i = 0; i < frames; ++i) {
        const float x = static_cast<float>(std::sin(2.0 * 3.141592653589793 * hz * i / sampleRate));
        const float y = tick(x);
        if (i < frames / 2) continue;
        in += x * x;
        out += y * y;
    }
    return std::sqrt(out / in);
}

}  // namespace dsp
