// Which MIDI keys are held, readable from any thread.
#pragma once

#include <array>
#include <atomic>
#include <bitset>
#include <cstdint>

namespace engine {

constexpr int kMidiKeys = 128;
using KeySet = std::bitset<kMidiKeys>;

// One thread at a time changes it.
class HeldKeys {
  public:
    void hold(int key) { word(key).fetch_or(bit(key), std::memory_order_relaxed); }
    void release(int key) { word(key).fetch_and(~bit(key), std::memory_order_relaxed); }
    void releaseAll() {
        for (auto& word : words_) word.store(0, std::memory_order_relaxed);
    }
    KeySet get() const {
        const KeySet low = words_[0].load(std::memory_order_relaxed);
        const KeySet high = words_[1].load(std::memory_order_relaxed);
        return low | high << kBits;
    }

  private:
    static constexpr int kBits = 64;
    static std::uint64_t bit(int key) { return std::uint64_t{1} << key % kBits; }
    std::atomic<std::uint64_t>& word(int key) { return words_[key / kBits]; }

    std::array<std::atomic<std::uint64_t>, kMidiKeys / kBits> words_{};
};

}  // namespace engine
