// Zeroed memory for delay lines. Pages that nobody has touched occupy no memory.
#pragma once

#include <cstdlib>
#include <memory>
#include <new>

namespace dsp {

// Construct on a control thread.
class ZeroedSamples {
  public:
    explicit ZeroedSamples(int size)
        : size_(size), samples_(static_cast<float*>(std::calloc(size, sizeof(float)))) {
        if (!samples_) throw std::bad_alloc();
    }

    int size() const { return size_; }
    float* data() { return samples_.get(); }
    float& operator[](int i) { return samples_[i]; }

  private:
    struct Free {
        void operator()(float* samples) const { std::free(samples); }
    };
    int size_;
    std::unique_ptr<float[], Free> samples_;
};

}  // namespace dsp
