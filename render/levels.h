// Levels of a render, measured while it runs.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>

#include "render/loudness.h"

namespace render {

// Levels are linear, over all channels. 1.0 is full scale.
struct Levels {
    double peak = 0.0;
    double rms = 0.0;
    int64_t nonFiniteSamples = 0;    // infinite or NaN
    std::optional<double> loudness;  // LUFS, -HUGE_VAL for silence
};

class LevelMeter {
  public:
    LevelMeter(int channels, int sampleRate)
        : channels_(channels), loudness_(channels, sampleRate) {}

    // Measures interleaved frames and replaces what is not a finite number by silence.
    void hear(float* samples, std::size_t frames);
    Levels levels() const;

  private:
    int channels_;
    Loudness loudness_;
    int64_t samples_ = 0;
    float peak_ = 0.0f;
    double squares_ = 0.0;
    int64_t nonFiniteSamples_ = 0;
};

}  // namespace render
