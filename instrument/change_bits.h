// Records which of up to 64 things changed since the last take().
#pragma once

#include <atomic>
#include <cstdint>

namespace instrument {

// Any thread may mark. A mark made during take() shows up in that take or in the next one.
class ChangeBits {
  public:
    void mark(std::uint64_t bits) { bits_.fetch_or(bits); }
    std::uint64_t take() { return any() ? bits_.exchange(0) : 0; }
    bool any() const { return bits_.load() != 0; }

  private:
    std::atomic<std::uint64_t> bits_{0};
};

}  // namespace instrument
