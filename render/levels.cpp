// Measures loudness with libebur128.
#include "render/levels.h"

#include <algorithm>
#include <cmath>
#include <new>

#include <ebur128.h>

namespace render {

struct LevelMeter::Analysis {
    // The histogram keeps the memory constant, however long the song.
    Analysis(int channels, int sampleRate)
        : state(ebur128_init(static_cast<unsigned>(channels),
                             static_cast<unsigned long>(sampleRate),
                             EBUR128_MODE_I | EBUR128_MODE_HISTOGRAM)) {
        if (!state) throw std::bad_alloc();
    }
    ~Analysis() { ebur128_destroy(&state); }
    Analysis(const Analysis&) = delete;
    Analysis& operator=(const Analysis&) = delete;

    ebur128_state* state;
};

LevelMeter::LevelMeter(int channels, int sampleRate)
    : channels_(channels), analysis_(std::make_unique<Analysis>(channels, sampleRate)) {}

LevelMeter::~LevelMeter() = default;

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
    ebur128_add_frames_float(analysis_->state, samples, frames);
}

Levels LevelMeter::levels() const {
    Levels levels;
    levels.peak = peak_;
    levels.rms = samples_ == 0 ? 0.0 : std::sqrt(squares_ / static_cast<double>(samples_));
    levels.loudness = -HUGE_VAL;
    ebur128_loudness_global(analysis_->state, &levels.loudness);
    levels.nonFiniteSamples = nonFiniteSamples_;
    return levels;
}

}  // namespace render
