// Loudness by ITU-R BS.1770, which needs a library that some builds do without.
#pragma once

#include <cstddef>
#include <memory>
#include <optional>

namespace render {

bool canMeasureLoudness();

class Loudness {
  public:
    Loudness(int channels, int sampleRate);
    ~Loudness();
    Loudness(const Loudness&) = delete;
    Loudness& operator=(const Loudness&) = delete;

    void hear(const float* samples, std::size_t frames);
    // LUFS, -HUGE_VAL for silence. Nothing if it cannot be measured.
    std::optional<double> lufs() const;

  private:
    struct Analysis;
    std::unique_ptr<Analysis> analysis_;
};

}  // namespace render
