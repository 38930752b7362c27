// Linear congruential generator. Each owner has its own, so that a render repeats bit for bit.
#pragma once

#include <cstdint>

namespace dsp {

// state = state x 214013 + 2531011 (mod 2^32); a draw is bits 16..30
class Random {
  public:
    constexpr explicit Random(std::uint32_t state = 1) : state_(state) {}

    // 0..32767.
    constexpr int next() {
        state_ = state_ * kFactor + kOffset;
        return static_cast<int>((state_ >> 16) & 0x7FFF);
    }

    // Skips `count` draws in O(log count) by squaring the affine map.
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
