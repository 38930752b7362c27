// Shared by the block tests: hostile values and measurements.
#pragma once

#include <cmath>
#include <limits>
#include <vector>

#include "dsp/reverb_model.h"

namespace dsp {

constexpr double kTwoPi = 6.283185307179586;

constexpr float kHostile[] = {std::numeric_limits<float>::quiet_NaN(),
                              std::numeric_limits<float>::infinity(),
                              -std::numeric_limits<float>::infinity()};

// One frame of the reverb in place.
inline void process(ReverbModel& model, float& left, float& right) {
    ReverbModel::Run run;
    OnePole lowPass;
    PeakFollower follower;
    float lowPassed = 0.0f;
    double followed = 0.0;
    float rows[2][kMostLanes] = {{left}, {right}};
    model.render(run, rows[0], rows[1], 1, rows[0], rows[1]);
    left = rows[0][0];
    right = rows[1][0];
    model.feed(run, {lowPass, &lowPassed, follower, &followed});
}

// Gain of `tick` for a sine of `hz`, measured after half a second.
template <typename Tick>
double gainAt(double hz, double sampleRate, Tick&& tick) {
    const int frames = static_cast<int>(sampleRate);
    double in = 0.0;
    double out = 0.0;
    for (int i = 0; i < frames; ++i) {
        const float x = static_cast<float>(std::sin(kTwoPi * hz * i / sampleRate));
        const float y = tick(x);
        if (i < frames / 2) continue;
        in += x * x;
        out += y * y;
    }
    return std::sqrt(out / in);
}

// Amplitude of the partial with that many cycles in a signal that repeats, by Goertzel's
// recurrence.
inline double partial(const std::vector<double>& period, std::size_t cycles) {
    const double size = static_cast<double>(period.size());
    const double c = 2.0 * std::cos(kTwoPi * static_cast<double>(cycles) / size);
    double last = 0.0;
    double before = 0.0;
    for (const double x : period) {
        const double next = x + c * last - before;
        before = last;
        last = next;
    }
    return std::sqrt(last * last + before * before - c * last * before) * 2.0 / size;
}

}  // namespace dsp
