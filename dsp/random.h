// Linear congruential random generator, private to its owner so that a render repeats bit for bit.
#pragma once

#include <cstdint>

namespace dsp {

class Random {
  public:
    constexpr explicit Random(std::uint32_t state = 1) : state_(state) {}

    // The next number, 0 .. 32767.
    constexpr int next() {
        state_ = state_ * kFactor + kOffset;
        return static_cast<int>((state_ >> 16) & 0x7FFF);
    }

    // Draws so many numbers unseen, in a few steps: the powers of the affine map are squared.
    constexpr void skip(std::uint32_t count) {
        std::uint32_t factor = kFactor;
        std::uint32_t offset = kOffset;
        for (; count != 0; count >>= 1) {
            if (count & 1) state_ = state_ * factor + offset;
            offset += factor * offset;
            factor *= factor;
        }
    }

    constexpr std::uint32_t state() const { return state_; }

  private:
    static constexpr std::uint32_t kFactor = 214013u;
    static constexpr std::uint32_t kOffset = 2531011u;

    std::uint32_t state_;
};

}  // namespace dsp
