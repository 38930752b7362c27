// Linear congruential random generator, private to its owner so that a render repeats bit for bit.
#pragma once

#include <cstdint>

namespace dsp {

class Random {
  public:
    constexpr explicit Random(std::uint32_t state = 1) : state_(state) {}

    // The next number, 0 .. 32767.
    constexpr int next() {
        state_ = state_ * 214013u + 2531011u;
        return static_cast<int>((state_ >> 16) & 0x7FFF);
    }

    constexpr std::uint32_t state() const { return state_; }

  private:
    std::uint32_t state_;
};

}  // namespace dsp
