// Adds up samples.
#include "render/levels.h"

#include <algorithm>
#include <cmath>

namespace render {

void LevelMeter::hear(float* samples, std::size_t frames) {
    const std::size_t count = frames * static_cast<std::size_t>(channels_);
    for (float* sample = samples; sample != samples + count; ++sample) {
        if (!std::isfinite(*sample)) {
            ++nonFiniteSamples_;
            *sample = 0.0f;
        }
        peak_ = std::max(peak_, std::fabs(*sample));
        squares_ += static_cast<double>(*sample) * *sample;
    }
    samples_ += static_cast<int64_t>(count);
    loudness_.hear(samples, frames);
}

Levels LevelMeter::levels() const {
    Levels levels;
    levels.peak = peak_;
    levels.rms = samples_ == 0 ? 0.0 : std::sqrt(squares_ / static_cast<double>(samples_));
    levels.nonFiniteSamples = nonFiniteSamples_;
    levels.loudness = loudness_.lufs();
    return levels;
}

}  // namespace render
