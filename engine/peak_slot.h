// Hands the peak of the output from the renderer to whoever shows it.
#pragma once

#include <atomic>
#include <cstdint>
#include <cstring>

namespace engine {

// Magnitudes are the bits of the float. These are in the same order as the numbers, and at or above
// kInfinityBits exactly if the float is not finite.
constexpr std::int32_t kInfinityBits = 0x7F800000;

// One thread adds, any thread takes. A peak may be taken twice if both happen at once.
class PeakSlot {
  public:
    void add(std::int32_t bits) {
        if (bits > bits_.load(std::memory_order_relaxed)) {
            bits_.store(bits, std::memory_order_relaxed);
        }
    }
    // Returns the largest magnitude since the last call.
    float take() {
        const std::int32_t bits = bits_.exchange(0, std::memory_order_relaxed);
        float peak;
        std::memcpy(&peak, &bits, sizeof peak);
        return peak;
    }

  private:
    std::atomic<std::int32_t> bits_{0};
};

}  // namespace engine
