// Takes the samples of a render.
#pragma once

#include <vector>

namespace render {

class SampleSink {
  public:
    virtual ~SampleSink() = default;

    virtual int channels() const = 0;
    // Appends interleaved finite samples; 1.0 is full scale. Throws host::Error if writing fails.
    virtual void write(const std::vector<float>& samples) = 0;
};

}  // namespace render
