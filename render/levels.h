// Levels of a render, measured while it runs.
#pragma once

#include <cstddef>
#include <cstdint>
#include <memory>

namespace render {

// Levels are linear, over all channels. 1.0 is full scale.
struct Levels {
    double peak = 0.0;
    double rms = 0.0;
    double loudness = 0.0;         // LUFS by ITU-R BS.1770, -HUGE_VAL for silence
    int64_t nonFiniteSamples = 0;  // infinite or NaN
};

class LevelMeter {
  public:
    LevelMeter(int channels, int sampleRate);
    ~LevelMeter();

    // Measures interleaved frames and replaces what is not a finite number by silence.
    void hear(float* samples, std::size_t frames);
    Levels levels() const;

  private:
    struct Analysis;

    int channels_;
    std::unique_ptr<Analysis> analysis_;
    int64_t samples_ = 0;
    float peak_ = 0.0f;
    double squares_ = 0.0;
    int64_t nonFiniteSamples_ = 0;
};

}  // namespace render
